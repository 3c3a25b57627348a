#pragma once

#include "platform/MediaPlayer.h"

#include <cstddef>
#include <memory>

namespace platform {

class VideoView;

/// What one file may add to the program's memory: enough for the largest pictures, with all that a decoder
/// keeps of them.
constexpr size_t memoryForOneFile = size_t{1536} << 20;

/// A player on libmpv that draws into the view. Player and view may be destroyed in any order. One player per
/// view. A file that takes more memory than allowed is given up. Sets LC_NUMERIC to "C".
std::unique_ptr<MediaPlayer> makeMpvPlayer(VideoView& view, size_t memoryBound = memoryForOneFile);

} // namespace platform
