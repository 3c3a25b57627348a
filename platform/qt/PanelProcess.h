#pragma once

#include "platform/qt/FilePanel.h"

#include <QObject>

#include <chrono>

class QDialog;
class QProcess;
class QTimer;

namespace platform {

class Alerts;

/// One file panel in a process of its own, so that a card that hangs holds up the panel and not the program.
/// While it is open the window that asks takes no input. When a panel stops responding the user is told and
/// can close it. Deletes itself after the answer. Main thread only.
class PanelProcess final : public QObject {
public:
    /// `executable` with "--file-panel" is one that calls runFilePanel.
    PanelProcess(QWidget& owner, Alerts& sheets, QString executable,
        std::chrono::milliseconds longestSilence = std::chrono::seconds(5));
    ~PanelProcess() override;

    /// Once. The answer is dropped when the window goes away first.
    void show(PanelRequest request, Panels::Answer answer);

private:
    bool read();
    void ended();
    void tellSilence();
    void end(const std::optional<std::string>& path);

    QWidget& window;
    Alerts& alerts;
    QString program;
    /// Blocks the window's input as a modal panel would; never on screen.
    QDialog* blocker;
    /// Nobody waits for one that was killed while its card hangs: it deletes itself.
    QProcess* process;
    QTimer* silence;
    std::chrono::milliseconds patience;
    Panels::Answer answer;
    std::function<void()> takeWordAway;
    QByteArray said;
};

} // namespace platform
