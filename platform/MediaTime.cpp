#include "platform/MediaPlayer.h"

#include <cstdio>
#include <utility>

namespace platform {

MediaTime MediaTime::timeWithInt(int64_t milliseconds)
{
    MediaTime time;
    time.milliseconds = milliseconds;
    return time;
}

std::string MediaTime::stringValue() const
{
    if (!milliseconds)
        return "--:--";
    const bool negative = *milliseconds < 0;
    const auto magnitude =
        negative ? 0 - static_cast<uint64_t>(*milliseconds) : static_cast<uint64_t>(*milliseconds);
    const uint64_t seconds = magnitude / 1000;
    const uint64_t hours = seconds / 3600;
    const auto minute = static_cast<unsigned>(seconds / 60 % 60);
    const auto second = static_cast<unsigned>(seconds % 60);

    char text[32];
    std::snprintf(text, sizeof text, "%02u:%02u", minute, second);
    return (negative ? "-" : "") + (hours > 0 ? std::to_string(hours) + ":" : "") + text;
}

std::shared_ptr<Media> Media::mediaWithPath(std::string path)
{
    auto media = std::make_shared<Media>();
    media->location = std::move(path);
    return media;
}

} // namespace platform
