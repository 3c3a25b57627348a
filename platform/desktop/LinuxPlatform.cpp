#include "platform/desktop/LinuxPlatform.h"

#include "platform/av/AvPreviews.h"
#include "platform/cups/CupsPrintSession.h"
#include "platform/disks/FolderCard.h"
#include "platform/disks/QtScriptRunner.h"
#include "platform/disks/WrittenBytes.h"
#include "platform/mpv/MpvPlayer.h"
#include "platform/mpv/VideoView.h"
#include "platform/qt/PanelProcess.h"
#include "platform/qt/QtDispatcher.h"
#include "platform/qt/QtPanels.h"
#include "platform/qt/QtScreens.h"
#include "platform/qt/QtUserDefaults.h"
#include "platform/udisks/UDisks2DiskArbitration.h"
#include "platform/web/QtWebView.h"
#include "platform/web/WebEngine.h"

#include <QCoreApplication>
#include <QFile>

#include <clocale>
#include <filesystem>
#include <system_error>

static void initialiseResources()
{
    Q_INIT_RESOURCE(zavik);
    Q_INIT_RESOURCE(map);
}

namespace fs = std::filesystem;

namespace platform {

namespace {

std::unique_ptr<DiskArbitration> volumes(const std::optional<std::string>& cardFolder)
{
    auto mounted = std::make_unique<UDisks2DiskArbitration>();
    if (!cardFolder)
        return mounted;
    return std::make_unique<FolderCard>(*cardFolder, std::move(mounted));
}

/// This program to be started again: what runs, also when it has been replaced or removed meanwhile.
QString ownProgram()
{
    const QString running = QStringLiteral("/proc/self/exe");
    const QString installed = QCoreApplication::applicationFilePath();
    std::error_code missing;
    const bool isSame =
        fs::equivalent(QFile::encodeName(installed).toStdString(), running.toStdString(), missing);
    return isSame ? installed : running;
}

} // namespace

struct LinuxPlatform::Parts {
    explicit Parts(const std::optional<std::string>& cardFolder)
        : disks(volumes(cardFolder)),
          pieces{dispatcher, panels, alerts, defaults, screens, printing, scripts, *disks,
              [](VideoView& view) { return makeMpvPlayer(view); },
              [engine = std::make_shared<WebEngine>()](
                  QWidget& parent) { return std::make_unique<QtWebView>(parent, engine); }}
    {
        pieces.makePreviews = makeAvPreviews;
        pieces.writtenBytes = [](const std::string& deviceName) { return writtenBytes(deviceName); };
    }

    QtDispatcher dispatcher;
    QtUserDefaults defaults;
    QtAlerts alerts;
    QtPanels panels{
        dispatcher, defaults, [this](QWidget& window, const PanelRequest& request, Panels::Answer answer) {
            auto* const panel = new PanelProcess(window, alerts, ownProgram());
            panel->show(request, std::move(answer));
        }};
    QtScreens screens{defaults};
    CupsPrintSession printing{dispatcher};
    QtScriptRunner scripts;
    std::unique_ptr<DiskArbitration> disks;
    Platform pieces;
};

LinuxPlatform::LinuxPlatform(const std::optional<std::string>& cardFolder)
    : parts(std::make_unique<Parts>(cardFolder))
{
}

LinuxPlatform::~LinuxPlatform()
{
    // The web engine must end before the application object does.
    parts->pieces.makeWebView = {};
    // A job that hangs in a read may use any of the rest; the end of the process takes it all.
    if (!parts->dispatcher.finish())
        (void)parts.release();
}

void LinuxPlatform::setCardFinder(CardFinder finder)
{
    parts->panels.setCardFinder([&disks = *parts->disks, find = std::move(finder)] { return find(disks); });
}

void LinuxPlatform::tellFailures(std::function<void()> told)
{
    parts->dispatcher.setFailureHandler(std::move(told));
}

Platform& LinuxPlatform::platform()
{
    return parts->pieces;
}

void initialiseLayer()
{
    initialiseResources();
    // The application object takes the user's locale; numbers stay with a point.
    std::setlocale(LC_NUMERIC, "C");
}

} // namespace platform
