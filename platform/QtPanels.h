#pragma once

#include "platform/Alerts.h"
#include "platform/Panels.h"

namespace platform {

/// Panels on QFileDialog.
class QtPanels final : public Panels {
public:
    void chooseFolder(QWidget& window, const std::string& title, Answer answer) override;
    void chooseFile(QWidget& window, const OpenPanel& panel, Answer answer) override;
    void chooseSaveFile(QWidget& window, const SavePanel& panel, Answer answer) override;
};

/// Alerts on QMessageBox.
class QtAlerts final : public Alerts {
public:
    void alertSheet(QWidget& window, const std::string& title, const std::string& message,
        std::function<void()> dismissed) override;
};

} // namespace platform
