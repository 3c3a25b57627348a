#include "platform/Texts.h"

#include <QCoreApplication>
#include <QFile>
#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace platform {

namespace {

QHash<QString, QString> readTable(const std::string& language)
{
    QFile file(QStringLiteral(":/texts/InfoPlist.%1.json").arg(QString::fromStdString(language)));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QHash<QString, QString> table;
    const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
    for (auto entry = object.begin(); entry != object.end(); ++entry)
        table.insert(entry.key(), entry.value().toString());
    return table;
}

struct Table {
    std::string language;
    QHash<QString, QString> texts;
};

Table& table()
{
    static Table current{"en", readTable("en")};
    return current;
}

/// The texts of the toolkit's own panels, where its translations are installed.
void translateToolkit(const std::string& language)
{
    static QTranslator translator;
    QCoreApplication::removeTranslator(&translator);
    if (translator.load(QStringLiteral("qtbase_") + QString::fromStdString(language),
            QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&translator);
}

std::string systemLanguage()
{
    const QStringList languages = QLocale::system().uiLanguages();
    return !languages.isEmpty() && languages.first().startsWith(QLatin1String("ko")) ? "ko" : "en";
}

} // namespace

std::string resolvedLanguage(const std::string& language)
{
    return language == "auto" ? systemLanguage() : language == "ko" ? "ko" : "en";
}

void setTextLanguage(const std::string& language)
{
    const std::string chosen = resolvedLanguage(language);
    if (chosen == table().language)
        return;
    table() = {chosen, readTable(chosen)};
    translateToolkit(chosen);
}

std::string textLanguage()
{
    return table().language;
}

QString localized(std::string_view key)
{
    return table().texts.value(QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())));
}

} // namespace platform
