#pragma once

#include "common/Life.h"
#include "platform/Panels.h"
#include "platform/Platform.h"

#include <memory>
#include <optional>
#include <string>

struct CapturedFrame;
class QWidget;

/// Saves the frame on screen as a picture file, which the system's viewer then shows, or prints it. Uses the
/// frame at the time of the call, not the one at the panel's answer. Failures are told on a sheet. Main
/// thread only.
class FrameCapture {
public:
    /// Panels and sheets are the window's.
    FrameCapture(platform::Platform& desktop, QWidget& window);

    /// Nothing happens unless the player plays.
    void captureVideo(platform::MediaPlayer& player);
    /// Nothing happens without a file.
    void print(platform::MediaPlayer& player);

private:
    std::optional<CapturedFrame> writtenFrame(platform::MediaPlayer& player);
    void saveFrame(const std::shared_ptr<const CapturedFrame>& frame, const platform::SavePanel& panel);
    platform::PrintInfo& loadPrintInfo();
    void printPanelDidEnd(int returnCode, const std::string& picture);
    void printPicture(
        const std::string& printer, const std::string& picture, const platform::PrintSession::Types& types);

    platform::Platform& desktop;
    QWidget& window;
    /// Made on first use and kept, so that the choices of one print stay for the next.
    std::unique_ptr<platform::PrintInfo> printInfo;
    /// Made when the usual file cannot be written.
    std::string privateFrameFolder;
    Life life;
};
