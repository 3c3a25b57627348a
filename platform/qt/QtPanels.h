#pragma once

#include "common/Life.h"
#include "platform/Alerts.h"
#include "platform/Panels.h"
#include "platform/qt/FilePanel.h"

#include <QPointer>

#include <functional>
#include <optional>
#include <string>

namespace platform {

class Dispatcher;
class UserDefaults;

/// Panels on QFileDialog; the toolkit's own, which speaks the program's language.
class QtPanels final : public Panels {
public:
    /// Puts a panel on screen. Its request's folder is the one to start in, its documents without one.
    using Show = std::function<void(QWidget& window, const PanelRequest& request, Answer answer)>;

    QtPanels(Dispatcher& queues, UserDefaults& userDefaults, Show show)
        : dispatcher(queues),
          defaults(userDefaults),
          showPanel(std::move(show))
    {
    }

    /// How the camera's card is found, the path of its root. Called in the background; it may take its time.
    void setCardFinder(std::function<std::optional<std::string>()> finder) { findCard = std::move(finder); }

    void chooseFolder(QWidget& window, const std::string& title, Answer answer) override;
    void chooseFile(QWidget& window, const OpenPanel& panel, Answer answer) override;
    void chooseSaveFile(QWidget& window, const SavePanel& panel, Answer answer) override;

private:
    /// Asked for and not on screen yet.
    struct Waiting {
        QPointer<QWidget> window;
        PanelRequest request;
        Answer answer;
    };
    void openWhereThingsAre(QWidget& window, PanelRequest request, Answer answer);
    void show(QWidget& window, const PanelRequest& request, Answer answer);

    Dispatcher& dispatcher;
    UserDefaults& defaults;
    Show showPanel;
    std::function<std::optional<std::string>()> findCard = [] { return std::nullopt; };
    std::optional<Waiting> waiting;
    Life lookingAround; // for the panel that waits
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
