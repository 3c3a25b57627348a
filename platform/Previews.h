#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace platform {

/// A small picture: red, green and blue, a byte each, rows from the top without gaps.
struct PreviewPicture {
    int width = 0;
    int height = 0;
    std::vector<uint8_t> pixels;
    /// The moment in the file that it shows.
    double seconds = 0;
};

/// Small pictures of recordings. One thread at a time, never the main one: it reads the card.
class Previews {
public:
    virtual ~Previews() = default;

    /// The key frame at the moment or the nearest one before it, scaled to the width (8 to 1920 pixels) in
    /// its own shape. Nothing when the file can't be opened or holds no picture that cameras record, when it
    /// takes more than two seconds, or soon after a stop is requested. The last file stays open.
    virtual std::optional<PreviewPicture> pictureAt(
        const std::string& path, double seconds, int width, std::stop_token stop) = 0;
    /// Closes the file; the card can be unmounted.
    virtual void close() = 0;
};

} // namespace platform
