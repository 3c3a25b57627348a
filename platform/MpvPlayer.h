#pragma once

#include "platform/MediaPlayer.h"

#include <memory>

namespace platform {

class VideoView;

/// A player on libmpv that draws into the view. Either of the two may be destroyed first. One player a view.
/// Sets LC_NUMERIC to "C".
std::unique_ptr<MediaPlayer> makeMpvPlayer(VideoView& view);

} // namespace platform
