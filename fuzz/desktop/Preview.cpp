#include "fuzz/Require.h"
#include "platform/av/AvFile.h"

extern "C" {
#include <libavutil/log.h>
}

/// A recording, of which small pictures are shown.
void fuzz(std::string_view bytes)
{
    av_log_set_level(AV_LOG_QUIET);
    const auto read = [bytes](uint64_t offset, char* into, size_t count) -> int64_t {
        const auto part = bytes.substr(std::min<size_t>(offset, bytes.size()), count);
        std::copy(part.begin(), part.end(), into);
        return static_cast<int64_t>(part.size());
    };
    const auto file = platform::AvFile::open(read, bytes.size());
    if (!file)
        return;
    for (const auto& [seconds, width] : {std::pair(0.0, 160), {0.4, 9}, {1e9, 31}, {-1.0, 160}}) {
        const auto picture = file->pictureAt(seconds, width);
        if (!picture)
            continue;
        require(picture->width == width && picture->height > 0 && picture->height <= 4 * width);
        require(picture->pixels.size() == size_t(picture->width) * picture->height * 3);
        require(picture->seconds >= 0);
    }
}
