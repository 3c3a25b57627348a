#include "platform/LinuxPlatform.h"

#include "platform/FolderCard.h"
#include "platform/MpvPlayer.h"
#include "platform/QtWebView.h"
#include "platform/UDisks2DiskArbitration.h"
#include "platform/VideoView.h"
#include "platform/WebEngine.h"

#include <clocale>

static void initialiseResources()
{
    Q_INIT_RESOURCE(zavik);
    Q_INIT_RESOURCE(map);
}

namespace platform {

namespace {

std::unique_ptr<DiskArbitration> volumes(const std::optional<std::string>& cardFolder)
{
    auto mounted = std::make_unique<UDisks2DiskArbitration>();
    if (!cardFolder)
        return mounted;
    return std::make_unique<FolderCard>(*cardFolder, std::move(mounted));
}

} // namespace

LinuxPlatform::LinuxPlatform(const std::optional<std::string>& cardFolder)
    : disks(volumes(cardFolder)),
      pieces{*dispatcher, panels, alerts, defaults, screens, printing, scripts, *disks,
          [](VideoView& view) { return makeMpvPlayer(view); },
          [engine = std::make_shared<WebEngine>()](
              QWidget& parent) { return std::make_unique<QtWebView>(parent, engine); }}
{
}

LinuxPlatform::~LinuxPlatform()
{
    // A job that hangs in a read keeps what it works with; the end of the process takes them all.
    if (!dispatcher->finish()) {
        (void)dispatcher.release();
        (void)disks.release();
    }
}

void initialiseLayer()
{
    initialiseResources();
    // The application object takes the user's locale; numbers stay with a point.
    std::setlocale(LC_NUMERIC, "C");
}

} // namespace platform
