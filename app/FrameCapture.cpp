// The frame on screen as something to keep: saved as a picture file, or printed.

#include "app/ZVKAppDelegate.h"

#include "common/Alerts.h"
#include "common/Log.h"
#include "platform/NewFile.h"
#include "platform/Texts.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace {

using Session = platform::PrintSession;

constexpr int printPressed = 1;
constexpr const char* pictureType = "image/jpeg";

void tell(platform::Platform& desktop, QWidget& window, const char* textKey)
{
    showAlert(desktop.alerts, window, "ZAVIK", platform::localized(textKey).toStdString());
}

/// Nothing when the file cannot be read or is empty.
std::optional<std::string> contentsOf(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string contents{std::istreambuf_iterator<char>(file), {}};
    if (file.bad() || contents.empty())
        return {};
    return contents;
}

/// The frame's bytes; nothing when it could not be written, whatever an earlier one has left there.
std::optional<std::string> writtenFrame(platform::MediaPlayer& player, const std::string& path)
{
    return player.saveVideoSnapshotAt(path, 0, 0) ? contentsOf(path) : std::nullopt;
}

void openInViewer(platform::Platform& desktop, QWidget& window)
{
    std::string command = "open %@ > /dev/null &";
    command.replace(command.find("%@"), 2, desktop.frameFile);
    if (desktop.scripts.system(command) != 0)
        tell(desktop, window, "capture.saved");
}

void frameCopied(platform::Platform& desktop, QWidget& window, platform::NewFile outcome)
{
    switch (outcome) {
    case platform::NewFile::written:
        openInViewer(desktop, window);
        break;
    case platform::NewFile::exists:
        tell(desktop, window, "capture.exists");
        break;
    case platform::NewFile::failed:
        tell(desktop, window, "capture.failed");
        break;
    }
}

bool acceptsPictures(platform::Platform& desktop, QWidget& window, const Session::Types& types)
{
    if (!types) {
        tell(desktop, window, "print.failed");
        return false;
    }
    if (std::ranges::find(*types, pictureType) == types->end()) {
        logFormat("MIME type %s isn't supported by the printer", pictureType);
        tell(desktop, window, "print.not_accepted");
        return false;
    }
    return true;
}

void framePrinted(platform::Platform& desktop, QWidget& window, int status)
{
    if (status == 0)
        return;
    logFormat("PMPrinterPrintWithFile returned error %d", status);
    tell(desktop, window, "print.failed");
}

} // namespace

void ZVKAppDelegate::captureVideo()
{
    if (!player1->isPlaying())
        return;
    const auto frame = writtenFrame(*player1, desktop.frameFile);
    if (!frame) {
        tell(desktop, *window, "capture.failed");
        return;
    }
    const platform::SavePanel panel{"Save Settings", "zavik_capture.png", {}};
    auto outcome = std::make_shared<platform::NewFile>();
    auto copied = guarded([this, outcome] { frameCopied(desktop, *window, *outcome); });
    // The film goes on, and another window of the program may write its frame: what is saved are these bytes.
    desktop.panels.chooseSaveFile(*window, panel,
        [&dispatcher = desktop.dispatcher, frame, outcome, copied](std::optional<std::string> path) {
            if (!path)
                return;
            dispatcher.inBackground([&dispatcher, frame, outcome, copied, path] {
                *outcome = platform::writeNewFile(*path, *frame);
                dispatcher.onMain(copied);
            });
        });
}

void ZVKAppDelegate::print()
{
    if (!player1->media())
        return;
    auto frame = writtenFrame(*player1, desktop.frameFile);
    if (!frame) {
        tell(desktop, *window, "print.failed");
        return;
    }
    desktop.printing.showPanel(*window, loadPrintInfo(),
        [this, life = std::weak_ptr(alive), picture = std::move(*frame)](int returnCode) {
            if (!life.expired())
                printPanelDidEnd(returnCode, picture);
        });
}

platform::PrintInfo& ZVKAppDelegate::loadPrintInfo()
{
    if (!printInfo)
        printInfo = desktop.printing.makePrintInfo();
    return *printInfo;
}

void ZVKAppDelegate::printPanelDidEnd(int returnCode, const std::string& picture)
{
    if (returnCode != printPressed)
        return;
    Session& session = desktop.printing;
    platform::PrintInfo& info = loadPrintInfo();
    session.setValue(info, "fit-to-page", "true");
    const auto destination = session.destinationType(info);
    if (destination != Session::Destination::printer) {
        logLine("Either got an error from PMSessionGetDestinationType or the print destination wasn't "
                "kPMDestinationPrinter");
        tell(desktop, *window, destination ? "print.only_printer" : "print.failed");
        return;
    }
    const Session::Printer printer = session.currentPrinter(info);
    if (printer.status != 0) {
        logFormat("Got an error from PMSessionGetCurrentPrinter (%d)", printer.status);
        tell(desktop, *window, "print.no_printer");
        return;
    }
    session.mimeTypes(printer.name, info,
        [this, life = std::weak_ptr(alive), name = printer.name, picture](const Session::Types& types) {
            if (life.expired() || !acceptsPictures(desktop, *window, types))
                return;
            desktop.printing.printFile(name, loadPrintInfo(), pictureType, picture, [this, life](int status) {
                if (!life.expired())
                    framePrinted(desktop, *window, status);
            });
        });
}
