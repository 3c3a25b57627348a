#pragma once

#include "platform/Alerts.h"
#include "platform/DiskArbitration.h"
#include "platform/Dispatcher.h"
#include "platform/MediaPlayer.h"
#include "platform/Panels.h"
#include "platform/PrintSession.h"
#include "platform/Screen.h"
#include "platform/ScriptRunner.h"
#include "platform/UserDefaults.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

class QWidget;

namespace platform {

class Previews;
class VideoView;
class WebView;

/// What a desktop offers the controllers. Lives longer than they do.
struct Platform {
    Dispatcher& dispatcher;
    Panels& panels;
    Alerts& alerts;
    UserDefaults& defaults;
    Screens& screens;
    PrintSession& printing;
    ScriptRunner& scripts;
    DiskArbitration& disks;
    std::function<std::unique_ptr<MediaPlayer>(VideoView&)> makePlayer;
    /// The view is a child of the parent; it must not outlive the platform.
    std::function<std::unique_ptr<WebView>(QWidget& parent)> makeWebView = {};
    /// The file that a captured or printed frame goes through.
    std::string frameFile = "/tmp/zavik_capture.jpg";
    /// How many bytes have arrived on a device of this name, without "/dev/", since the system knows it;
    /// nothing when the system does not tell. Never waits for the device. Any thread.
    std::function<std::optional<uint64_t>(const std::string& deviceName)> writtenBytes = {};
    std::function<std::unique_ptr<Previews>()> makePreviews = {};
};

} // namespace platform
