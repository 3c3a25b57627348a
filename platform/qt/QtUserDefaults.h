#pragma once

#include "platform/UserDefaults.h"

#include <QSettings>

namespace platform {

/// User defaults in the desktop's usual place for settings of the application "zavik".
class QtUserDefaults final : public UserDefaults {
public:
    std::vector<std::string> stringList(const std::string& key) const override;
    void setStringList(const std::string& key, const std::vector<std::string>& values) override;
    std::optional<bool> boolean(const std::string& key) const override;

private:
    QSettings settings{QSettings::UserScope, QStringLiteral("zavik"), QStringLiteral("zavik")};
};

} // namespace platform
