#include "platform/qt/PanelProcess.h"

#include "common/Log.h"
#include "platform/Alerts.h"
#include "platform/Texts.h"

#include <QDialog>
#include <QProcess>
#include <QTimer>

#include <linux/close_range.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <utility>

namespace platform {

PanelProcess::PanelProcess(
    QWidget& owner, Alerts& sheets, QString executable, std::chrono::milliseconds longestSilence)
    : QObject(&owner),
      window(owner),
      alerts(sheets),
      program(std::move(executable)),
      blocker(new QDialog(&owner)),
      process(new QProcess),
      silence(new QTimer(this)),
      patience(longestSilence)
{
    blocker->setAttribute(Qt::WA_DontShowOnScreen);
    silence->setSingleShot(true);
    connect(silence, &QTimer::timeout, this, &PanelProcess::tellSilence);
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // Where this process was started may be on the card, which has to be let go of when it is unmounted.
    process->setWorkingDirectory(QStringLiteral("/"));
    // Files of the card that are open are not inherited, nor the web engine's connections. A panel that hangs
    // is killed with this process, however that ends.
    process->setChildProcessModifier([] {
        (void)close_range(3, ~0U, CLOSE_RANGE_CLOEXEC);
        (void)prctl(PR_SET_PDEATHSIG, SIGKILL);
    });
    // Quitting closes modal windows first; where it is refused then, the panel must not stay without one.
    connect(blocker, &QDialog::finished, this, [this] { end(std::nullopt); });
    connect(process, &QProcess::readyReadStandardOutput, this, &PanelProcess::read);
    connect(process, &QProcess::finished, this, &PanelProcess::ended);
    connect(process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            ended();
    });
}

PanelProcess::~PanelProcess()
{
    disconnect(process, nullptr, this, nullptr);
    delete blocker;
    if (process->state() == QProcess::NotRunning) {
        process->deleteLater();
        return;
    }
    connect(process, &QProcess::finished, process, &QObject::deleteLater);
    process->kill();
}

void PanelProcess::show(PanelRequest request, Panels::Answer reply)
{
    answer = std::move(reply);
    request.language = textLanguage();
    request.window = window.window()->winId();
    request.place = window.window()->frameGeometry();
    blocker->open();
    silence->start(patience * 3); // its first sign comes when it has been loaded
    process->start(program, {QStringLiteral("--file-panel")});
    const QByteArray bytes = request.bytes();
    const auto length = static_cast<quint64>(bytes.size());
    process->write(reinterpret_cast<const char*>(&length), sizeof length);
    process->write(bytes);
}

/// Whether the answer has come; then this may be gone.
bool PanelProcess::read()
{
    said += process->readAllStandardOutput();
    silence->start(patience);
    if (takeWordAway)
        std::exchange(takeWordAway, nullptr)();
    // The answer is used at once: the process may hang while it ends.
    const qsizetype from = said.indexOf('\0') + 1;
    const qsizetype to = from > 0 ? said.indexOf('\0', from) : -1;
    if (to < 0)
        return false;
    end(to > from ? std::optional(said.mid(from, to - from).toStdString()) : std::nullopt);
    return true;
}

void PanelProcess::ended()
{
    if (read())
        return;
    logLine("the file panel failed: " + process->errorString().toStdString() + ", exit code "
        + std::to_string(process->exitCode()));
    alerts.alertSheet(window, "ZAVIK", localized("panel.failed").toStdString(), {});
    end(std::nullopt);
}

void PanelProcess::tellSilence()
{
    takeWordAway = alerts.ask(window, "ZAVIK", localized("panel.hangs").toStdString(),
        {localized("panel.close").toStdString(), localized("panel.wait").toStdString()},
        [this](size_t button) {
            takeWordAway = nullptr;
            if (button == 0)
                end(std::nullopt);
            else
                silence->start(patience);
        });
}

void PanelProcess::end(const std::optional<std::string>& path)
{
    silence->stop();
    disconnect(process, nullptr, this, nullptr);
    blocker->disconnect(this);
    blocker->hide();
    window.activateWindow();
    deleteLater();
    if (answer)
        std::exchange(answer, nullptr)(path);
}

} // namespace platform
