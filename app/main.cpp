#include "app/CommandLine.h"
#include "app/ZVKAppDelegate.h"
#include "cardtools/volumes/Volumes.h"
#include "common/Log.h"
#include "lib/PMProgressIndicatorController.h"
#include "lib/Style.h"
#include "platform/Images.h"
#include "platform/desktop/LinuxPlatform.h"
#include "platform/qt/FilePanel.h"

#include <QApplication>

#include <chrono>
#include <cstdio>
#include <span>

int main(int argc, char* argv[])
{
    logToStandardError();
    const std::span<const char* const> arguments(argv, static_cast<size_t>(argc));
    const CommandLine command = CommandLine::parsed(arguments.subspan(argc > 0 ? 1 : 0), ZAVIK_LANGUAGE);
    if (command.exitCode) {
        std::fputs(command.message.c_str(), *command.exitCode == 0 ? stdout : stderr);
        return *command.exitCode;
    }

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zavik"));
    QApplication::setApplicationVersion(QStringLiteral(ZAVIK_VERSION));
    // The desktop knows the windows by their entry in its menu.
    QApplication::setDesktopFileName(QStringLiteral("org.zavik.zavik"));
    platform::initialiseLayer();
    style::apply(application);
    QApplication::setWindowIcon(platform::imageNamed(QStringLiteral("zavik")).icon());
    if (command.isFilePanel)
        platform::runFilePanel();

    platform::LinuxPlatform layer(command.card);
    layer.setCardFinder([](platform::DiskArbitration& disks) {
        const auto card = preferredUSBDisk(disks);
        return card ? std::optional(card->mountedURL) : std::nullopt;
    });
    PMProgressIndicatorController::sharedInstance().setDispatcher(&layer.platform().dispatcher, [] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
    });
    ZVKAppDelegate controller(layer.platform(), command.language);
    layer.tellFailures([&controller] { controller.tellFailedJob(); });
    controller.awakeFromNib();
    controller.applicationDidFinishLaunching();
    if (command.folder)
        controller.openMediaDirectory(*command.folder);
    if (command.opensCard)
        controller.openCard();
    if (command.opensSettings)
        controller.showSettingPanel();
    const int code = QApplication::exec();
    controller.applicationWillTerminate();
    PMProgressIndicatorController::sharedInstance().setDispatcher(nullptr, {});
    return code;
}
