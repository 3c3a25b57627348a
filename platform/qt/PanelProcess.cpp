#include "platform/qt/PanelProcess.h"

#include "common/Log.h"
#include "platform/Alerts.h"
#include "platform/Texts.h"

#include <QDialog>
#include <QProcess>
#include <QTimer>

#include <utility>

namespace platform {

PanelProcess::PanelProcess(
    QWidget& owner, Alerts& sheets, QString executable, std::chrono::milliseconds patience)
    : QObject(&owner),
      window(owner),
      alerts(sheets),
      program(std::move(executable)),
      blocker(new QDialog(&owner)),
      process(new QProcess),
      silence(new QTimer(this))
{
    blocker->setAttribute(Qt::WA_DontShowOnScreen);
    blocker->setWindowModality(Qt::WindowModal);
    silence->setInterval(patience);
    silence->setSingleShot(true);
    connect(silence, &QTimer::timeout, this, &PanelProcess::tellSilence);
    process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // Where this process was started may be on the card, which has to be let go of when it is unmounted.
    process->setWorkingDirectory(QStringLiteral("/"));
    connect(process, &QProcess::readyReadStandardOutput, this, &PanelProcess::read);
    connect(process, &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
        ended(status == QProcess::NormalExit && code == 0);
    });
    connect(process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            ended(false);
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
    silence->start();
    process->start(program, {QStringLiteral("--file-panel")});
    const QByteArray bytes = request.bytes();
    const auto length = static_cast<quint64>(bytes.size());
    process->write(reinterpret_cast<const char*>(&length), sizeof length);
    process->write(bytes);
}

void PanelProcess::read()
{
    said += process->readAllStandardOutput();
    silence->start();
    if (takeWordAway)
        std::exchange(takeWordAway, nullptr)();
}

void PanelProcess::ended(bool isWell)
{
    read();
    const qsizetype path = said.indexOf('\n');
    const bool hasFailed = !isWell && path < 0;
    if (hasFailed) {
        logLine("no file panel: " + process->errorString().toStdString());
        alerts.alertSheet(window, "ZAVIK", localized("panel.failed").toStdString(), {});
    }
    end(path < 0 ? std::nullopt : std::optional(said.mid(path + 1).toStdString()));
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
                silence->start();
        });
}

void PanelProcess::end(const std::optional<std::string>& path)
{
    silence->stop();
    delete std::exchange(blocker, nullptr);
    window.activateWindow();
    deleteLater();
    if (answer)
        std::exchange(answer, nullptr)(path);
}

} // namespace platform
