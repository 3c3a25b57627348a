#pragma once

#include "platform/Alerts.h"

/// An alert sheet on the window: `title` as message text, `message` as informative text, one "OK" button.
/// `dismissed` runs when the user has closed it. Every message box of the application goes through these two.
void showAlertSheet(platform::Alerts& alerts, QWidget& window, const std::string& title,
    const std::string& message, std::function<void()> dismissed);

void showAlert(
    platform::Alerts& alerts, QWidget& window, const std::string& title, const std::string& message);
