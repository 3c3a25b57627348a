#include "app/frame/FrameCapture.h"

#include "common/FilePlace.h"
#include "common/Log.h"
#include "common/PrivateFolder.h"
#include "lib/Alerts.h"
#include "platform/Texts.h"
#include "platform/qt/NewFile.h"

#include <algorithm>
#include <filesystem>
#include <utility>

/// A captured frame: its file's path and contents.
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
    auto contents = wholeFile(path);
    return contents && !contents->empty() ? std::move(contents) : std::nullopt;
}

/// Nothing when the frame could not be written, also when the file of an earlier one is still there.
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

/// The panel after a refused choice: in the same folder, with a free name.
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

FrameCapture::FrameCapture(platform::Platform& layer, QWidget& owner)
    : desktop(layer),
      window(owner)
{
}

void FrameCapture::captureVideo(platform::MediaPlayer& player)
{
    if (!player.isPlaying())
        return;
    auto frame = writtenFrame(player);
    if (!frame) {
        tell(desktop, window, "capture.failed");
        return;
    }
    // Saves these bytes: meanwhile another instance of the program may write its frame to the same file.
    saveFrame(std::make_shared<CapturedFrame>(std::move(*frame)),
        {platform::localized("panel.save_frame").toStdString(), "zavik_capture.png", {}});
}

std::optional<CapturedFrame> FrameCapture::writtenFrame(platform::MediaPlayer& player)
{
    auto frame = frameWrittenTo(player, desktop.frameFile);
    if (frame || !player.hasVideoOut())
        return frame;
    // Another user's file, a link or a folder has that name. The private file is not deleted, as the viewer
    // may still show it.
    std::string why;
    if (privateFrameFolder.empty())
        privateFrameFolder = makePrivateFolder(why);
    if (privateFrameFolder.empty()) {
        logFormat("no private folder for the picture: %s", why.c_str());
        return {};
    }
    return frameWrittenTo(player, privateFrameFolder + "/zavik_capture.jpg");
}

/// Asks where to save, and again after a refused choice, so that the frame is not lost.
void FrameCapture::saveFrame(
    const std::shared_ptr<const CapturedFrame>& frame, const platform::SavePanel& panel)
{
    auto outcome = std::make_shared<platform::NewFile>();
    auto next = std::make_shared<platform::SavePanel>(panel);
    std::function<void()> done = life.guarded([this, frame, outcome, next] {
        if (*outcome == platform::NewFile::written) {
            openInViewer(desktop, window, frame->path);
            return;
        }
        const char* why = *outcome == platform::NewFile::exists ? "capture.exists" : "capture.failed";
        showAlertSheet(desktop.alerts, window, "ZAVIK", platform::localized(why).toStdString(),
            life.guarded([this, frame, next] { saveFrame(frame, *next); }));
    });
    desktop.panels.chooseSaveFile(window, panel,
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

void FrameCapture::print(platform::MediaPlayer& player)
{
    if (!player.media())
        return;
    auto frame = writtenFrame(player);
    if (!frame) {
        tell(desktop, window, "print.failed");
        return;
    }
    desktop.printing.showPanel(
        window, loadPrintInfo(), life.guarded([this, picture = std::move(frame->contents)](int returnCode) {
            printPanelDidEnd(returnCode, picture);
        }));
}

platform::PrintInfo& FrameCapture::loadPrintInfo()
{
    if (!printInfo)
        printInfo = desktop.printing.makePrintInfo();
    return *printInfo;
}

void FrameCapture::printPanelDidEnd(int returnCode, const std::string& picture)
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
        tell(desktop, window, destination ? "print.only_printer" : "print.failed");
        return;
    }
    const Session::Printer printer = session.currentPrinter(info);
    if (printer.status != 0) {
        logFormat("Got an error from PMSessionGetCurrentPrinter (%d)", printer.status);
        tell(desktop, window, "print.no_printer");
        return;
    }
    session.mimeTypes(
        printer.name, info, life.guarded([this, name = printer.name, picture](const Session::Types& types) {
            printPicture(name, picture, types);
        }));
}

void FrameCapture::printPicture(
    const std::string& printer, const std::string& picture, const Session::Types& types)
{
    if (!acceptsPictures(desktop, window, types))
        return;
    desktop.printing.printFile(printer, loadPrintInfo(), pictureType, picture,
        life.guarded([this](int status) { framePrinted(desktop, window, status); }));
}
