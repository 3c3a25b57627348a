// The frame on screen as something to keep: saved as a picture file, or printed.

#include "app/ZVKAppDelegate.h"

#include "app/window/MainWindowOutlets.h"
#include "common/Log.h"
#include "common/PrivateFolder.h"
#include "lib/Alerts.h"
#include "lib/TKImageButton.h"
#include "platform/Texts.h"
#include "platform/qt/NewFile.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

/// A frame as a picture: the file that it went through, and what that held.
struct CapturedFrame {
    std::string path;
    std::string contents;
};

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

/// Nothing when the frame could not be written, whatever an earlier one has left there.
std::optional<CapturedFrame> frameWrittenTo(platform::MediaPlayer& player, const std::string& path)
{
    auto contents = player.saveVideoSnapshotAt(path, 0, 0) ? contentsOf(path) : std::nullopt;
    if (!contents)
        return {};
    return CapturedFrame{path, std::move(*contents)};
}

void openInViewer(platform::Platform& desktop, QWidget& window, const std::string& path)
{
    std::string command = "open %@ > /dev/null &";
    command.replace(command.find("%@"), 2, path);
    if (desktop.scripts.system(command) != 0)
        tell(desktop, window, "capture.saved");
}

/// The panel after a refused choice: where the user was, if that is a folder, with a name that is free.
platform::SavePanel nextPanel(platform::SavePanel panel, const std::string& refused)
{
    const std::filesystem::path free = platform::freePath(refused);
    std::error_code error;
    if (std::filesystem::is_directory(free.parent_path(), error)) {
        panel.folder = free.parent_path().native();
        panel.name = free.filename().native();
    }
    return panel;
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
    auto frame = writtenFrame();
    if (!frame) {
        tell(desktop, *window, "capture.failed");
        return;
    }
    // The film goes on, and another window of the program may write its frame: what is saved are these bytes.
    saveFrame(std::make_shared<CapturedFrame>(std::move(*frame)),
        {platform::localized("panel.save_frame").toStdString(), "zavik_capture.png", {}});
}

std::optional<CapturedFrame> ZVKAppDelegate::writtenFrame()
{
    auto frame = frameWrittenTo(*player1, desktop.frameFile);
    if (frame || !player1->hasVideoOut())
        return frame;
    // Somebody else's file, link or folder has that name. A file that is this user's alone stays there, too,
    // as the viewer may still show it.
    std::string why;
    if (privateFrameFolder.empty())
        privateFrameFolder = makePrivateFolder(why);
    if (privateFrameFolder.empty()) {
        logFormat("no private folder for the picture: %s", why.c_str());
        return {};
    }
    return frameWrittenTo(*player1, privateFrameFolder + "/zavik_capture.jpg");
}

/// Asks where to, and again after a choice that was refused: the frame is not lost by it.
void ZVKAppDelegate::saveFrame(
    const std::shared_ptr<const CapturedFrame>& frame, const platform::SavePanel& panel)
{
    auto outcome = std::make_shared<platform::NewFile>();
    auto next = std::make_shared<platform::SavePanel>(panel);
    auto done = guarded([this, frame, outcome, next] {
        if (*outcome == platform::NewFile::written) {
            openInViewer(desktop, *window, frame->path);
            return;
        }
        const char* why = *outcome == platform::NewFile::exists ? "capture.exists" : "capture.failed";
        showAlertSheet(desktop.alerts, *window, "ZAVIK", platform::localized(why).toStdString(),
            guarded([this, frame, next] { saveFrame(frame, *next); }));
    });
    desktop.panels.chooseSaveFile(*window, panel,
        [&dispatcher = desktop.dispatcher, frame, outcome, next, done](
            const std::optional<std::string>& path) {
            if (!path)
                return;
            dispatcher.inBackground([&dispatcher, frame, outcome, next, done, path] {
                *outcome = platform::writeNewFile(*path, frame->contents);
                if (*outcome != platform::NewFile::written)
                    *next = nextPanel(std::move(*next), *path);
                dispatcher.onMain(done);
            });
        });
}

/// The buttons of what cannot be done now are grey and say why.
void ZVKAppDelegate::updateFrameButtons()
{
    const bool hasPicture = (reportsPlaying() || isPaused()) && player1->hasVideoOut();
    const std::pair possible(hasPicture && reportsPlaying(), hasPicture);
    // Reported with every time report, most of them without news.
    if (std::exchange(possibleWithFrame, possible) == possible)
        return;
    const auto set = [this](TKImageButton& button, const char* textKey, bool isPossible, const char* whyNot) {
        const QString reason = isPossible ? QString() : platform::localized(whyNot);
        button.setEnabled(isPossible);
        describe(button, textKey);
        button.setAccessibleDescription(reason);
        if (!isPossible)
            button.setToolTip(button.toolTip() + u'\n' + reason);
    };
    set(*outlets->captureButton, "tip.capture", possible.first, "tip.capture_needs_playing");
    set(*outlets->printButton, "tip.print", possible.second, "tip.print_needs_picture");
}

void ZVKAppDelegate::print()
{
    if (!player1->media())
        return;
    auto frame = writtenFrame();
    if (!frame) {
        tell(desktop, *window, "print.failed");
        return;
    }
    desktop.printing.showPanel(*window, loadPrintInfo(),
        [this, life = std::weak_ptr(alive), picture = std::move(frame->contents)](int returnCode) {
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
