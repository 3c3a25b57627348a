#pragma once

#include "platform/Previews.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

struct AVCodecContext;
struct AVFormatContext;
struct AVFrame;
struct AVIOContext;
struct AVPacket;
struct SwsContext;

namespace platform {

/// Reads at an offset of a file; fewer bytes than asked are allowed, 0 is the end, negative a failure.
using ReadAt = std::function<int64_t(uint64_t offset, char* into, size_t count)>;

/// An AVI file that is open for single pictures. It holds a stranger's bytes: only the formats of cameras,
/// and bounded sizes.
class AvFile {
public:
    /// Null when there is no picture to be had.
    static std::unique_ptr<AvFile> open(ReadAt read, uint64_t size);
    ~AvFile();
    AvFile(const AvFile&) = delete;
    AvFile& operator=(const AvFile&) = delete;

    /// The key frame at the moment or the nearest before it, scaled to the width in its own shape.
    std::optional<PreviewPicture> pictureAt(double seconds, int width);

private:
    AvFile(ReadAt read, uint64_t size);

    static int readBytes(void* self, uint8_t* into, int count);
    static int64_t seekBytes(void* self, int64_t offset, int whence);
    bool openFormat();
    bool openDecoder();
    bool decodeKeyFrame();
    bool decode();
    std::optional<PreviewPicture> scaled(int width);

    template <typename Type, void (*release)(Type**)> struct Release {
        void operator()(Type* object) const { release(&object); }
    };
    static void releaseFormat(AVFormatContext** format);
    static void releaseDecoder(AVCodecContext** decoder);
    static void releasePacket(AVPacket** packet);
    static void releaseFrame(AVFrame** frame);
    static void releaseInput(AVIOContext** input);
    static void releaseScaler(SwsContext** scaler);

    const ReadAt read;
    const uint64_t size;
    uint64_t offset = 0;
    int64_t bytesLeft = 0; ///< that this picture may still read
    int stream = -1;
    double keyFrameSeconds = 0;
    // In the order in which they are made.
    std::unique_ptr<AVIOContext, Release<AVIOContext, releaseInput>> input;
    std::unique_ptr<AVFormatContext, Release<AVFormatContext, releaseFormat>> format;
    std::unique_ptr<AVCodecContext, Release<AVCodecContext, releaseDecoder>> decoder;
    std::unique_ptr<AVPacket, Release<AVPacket, releasePacket>> packet;
    std::unique_ptr<AVFrame, Release<AVFrame, releaseFrame>> frame;
    std::unique_ptr<SwsContext, Release<SwsContext, releaseScaler>> scaler;
};

} // namespace platform
