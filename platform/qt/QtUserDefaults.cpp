#include "platform/qt/QtUserDefaults.h"

#include <QStringList>

namespace platform {

std::vector<std::string> QtUserDefaults::stringList(const std::string& key) const
{
    std::vector<std::string> values;
    for (const QString& value : settings.value(QString::fromStdString(key)).toStringList())
        values.push_back(value.toStdString());
    return values;
}

void QtUserDefaults::setStringList(const std::string& key, const std::vector<std::string>& values)
{
    QStringList list;
    for (const std::string& value : values)
        list.append(QString::fromStdString(value));
    settings.setValue(QString::fromStdString(key), list);
}

std::optional<bool> QtUserDefaults::boolean(const std::string& key) const
{
    const QVariant value = settings.value(QString::fromStdString(key));
    if (!value.isValid())
        return std::nullopt;
    return value.toBool();
}

} // namespace platform
