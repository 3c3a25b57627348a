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

#include <functional>
#include <memory>
#include <string>

class QWidget;

namespace platform {

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
};

} // namespace platform
