#pragma once

#include "platform/Alerts.h"
#include "platform/Dispatcher.h"
#include "platform/MediaPlayer.h"
#include "platform/Panels.h"
#include "platform/Screen.h"
#include "platform/UserDefaults.h"

#include <functional>
#include <memory>

namespace platform {

class VideoView;

/// What a desktop offers the controllers. Lives longer than they do.
struct Platform {
    Dispatcher& dispatcher;
    Panels& panels;
    Alerts& alerts;
    UserDefaults& defaults;
    Screens& screens;
    std::function<std::unique_ptr<MediaPlayer>(VideoView&)> makePlayer;
};

} // namespace platform
