#pragma once

#include "platform/Alerts.h"
#include "platform/Panels.h"
#include "platform/ShownFolders.h"

#include <QPointer>

class QFileDialog;

namespace platform {

class Dispatcher;
class UserDefaults;

/// Panels on QFileDialog; the toolkit's own, which speaks the program's language.
class QtPanels final : public Panels {
public:
    QtPanels(Dispatcher& queues, UserDefaults& userDefaults)
        : dispatcher(queues),
          defaults(userDefaults)
    {
    }

    /// How the camera's card is found, the path of its root. Called in the background; it may take its time.
    void setCardFinder(std::function<std::optional<std::string>()> finder) { findCard = std::move(finder); }

    void chooseFolder(QWidget& window, const std::string& title, Answer answer) override;
    void chooseFile(QWidget& window, const OpenPanel& panel, Answer answer) override;
    void chooseSaveFile(QWidget& window, const SavePanel& panel, Answer answer) override;

private:
    void connectAnswer(QFileDialog& dialog, Answer answer);
    void openWhereThingsAre(QFileDialog& dialog);
    void start(QFileDialog& dialog, const std::optional<std::string>& folder);

    Dispatcher& dispatcher;
    UserDefaults& defaults;
    std::function<std::optional<std::string>()> findCard = [] { return std::nullopt; };
    ShownFolders folders;
    /// Not on screen yet.
    QPointer<QFileDialog> waiting;
};

/// Alerts on QMessageBox.
class QtAlerts final : public Alerts {
public:
    void alertSheet(QWidget& window, const std::string& title, const std::string& message,
        std::function<void()> dismissed) override;
    std::function<void()> ask(QWidget& window, const std::string& title, const std::string& message,
        const std::vector<std::string>& buttons, std::function<void(size_t)> answered) override;
};

} // namespace platform
