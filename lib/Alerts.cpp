#include "lib/Alerts.h"

#include <utility>

void showAlertSheet(platform::Alerts& alerts, QWidget& window, const std::string& title,
    const std::string& message, std::function<void()> dismissed)
{
    alerts.alertSheet(window, title, message, std::move(dismissed));
}

void showAlert(
    platform::Alerts& alerts, QWidget& window, const std::string& title, const std::string& message)
{
    showAlertSheet(alerts, window, title, message, {});
}
