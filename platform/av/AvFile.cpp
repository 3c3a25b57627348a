#include "platform/av/AvFile.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/opt.h>
#include <libswscale/swscale.h>
}

namespace platform {

namespace {

/// What a picture may read: the index of the longest recording and a large key frame.
constexpr int64_t largestReading = 64 << 20;
constexpr int inputBuffer = 64 * 1024;
constexpr int mostStreams = 32;
constexpr int64_t mostPixels = 35389440;
/// Packets that are looked at for a key frame.
constexpr int mostPackets = 1000;
constexpr int mostKeyFrames = 3;

struct Decoder {
    AVCodecID id;
    const char* name;
};
constexpr std::array decoders = {Decoder{AV_CODEC_ID_H264, "h264"}, Decoder{AV_CODEC_ID_MJPEG, "mjpeg"},
    Decoder{AV_CODEC_ID_MPEG4, "mpeg4"}};

const AVCodec* decoderOf(const AVStream& stream)
{
    const auto known = std::find_if(decoders.begin(), decoders.end(),
        [&](const Decoder& decoder) { return decoder.id == stream.codecpar->codec_id; });
    const bool isVideo = stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO;
    return isVideo && known != decoders.end() ? avcodec_find_decoder_by_name(known->name) : nullptr;
}

} // namespace

void AvFile::releaseInput(AVIOContext** input)
{
    av_freep(&(*input)->buffer);
    avio_context_free(input);
}

void AvFile::releaseFormat(AVFormatContext** format)
{
    avformat_close_input(format);
}

void AvFile::releaseDecoder(AVCodecContext** decoder)
{
    avcodec_free_context(decoder);
}

void AvFile::releasePacket(AVPacket** packet)
{
    av_packet_free(packet);
}

void AvFile::releaseFrame(AVFrame** frame)
{
    av_frame_free(frame);
}

void AvFile::releaseScaler(SwsContext** scaler)
{
    sws_freeContext(*scaler);
}

AvFile::AvFile(ReadAt bytes, uint64_t fileSize)
    : read(std::move(bytes)),
      size(fileSize),
      packet(av_packet_alloc()),
      frame(av_frame_alloc())
{
}

AvFile::~AvFile() = default;

std::unique_ptr<AvFile> AvFile::open(ReadAt read, uint64_t size)
{
    std::unique_ptr<AvFile> file(new AvFile(std::move(read), size));
    if (!file->packet || !file->frame || !file->openFormat() || !file->openDecoder())
        return nullptr;
    return file;
}

int AvFile::readBytes(void* opaque, uint8_t* into, int count)
{
    auto& self = *static_cast<AvFile*>(opaque);
    if (self.bytesLeft <= 0)
        return AVERROR_EXIT;
    const int64_t got =
        self.read(self.offset, reinterpret_cast<char*>(into), static_cast<size_t>(std::max(count, 0)));
    if (got <= 0)
        return got == 0 ? AVERROR_EOF : AVERROR(EIO);
    self.bytesLeft -= got;
    self.offset += static_cast<uint64_t>(got);
    return static_cast<int>(got);
}

int64_t AvFile::seekBytes(void* opaque, int64_t place, int whence)
{
    auto& self = *static_cast<AvFile*>(opaque);
    const auto end = static_cast<int64_t>(self.size);
    switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
        return end;
    case SEEK_CUR:
        place += static_cast<int64_t>(self.offset);
        break;
    case SEEK_END:
        place += end;
        break;
    default:
        break;
    }
    if (place < 0)
        return AVERROR(EINVAL);
    self.offset = static_cast<uint64_t>(place);
    return place;
}

bool AvFile::openFormat()
{
    bytesLeft = largestReading;
    auto* buffer = static_cast<unsigned char*>(av_malloc(inputBuffer));
    if (!buffer)
        return false;
    input.reset(avio_alloc_context(buffer, inputBuffer, 0, this, readBytes, nullptr, seekBytes));
    AVFormatContext* context = input ? avformat_alloc_context() : nullptr;
    if (!context)
        return false;
    context->pb = input.get();
    context->max_streams = mostStreams;
    context->flags |= AVFMT_FLAG_CUSTOM_IO;
    // Frees the context itself when it fails.
    if (avformat_open_input(&context, nullptr, av_find_input_format("avi"), nullptr) < 0)
        return false;
    format.reset(context);
    return true;
}

/// What the headers say is enough: probing would decode with whatever decoder the file asks for.
bool AvFile::openDecoder()
{
    const AVCodec* codec = nullptr;
    for (unsigned i = 0; i < format->nb_streams; ++i) {
        if (!codec && (codec = decoderOf(*format->streams[i])))
            stream = static_cast<int>(i);
        else
            format->streams[i]->discard = AVDISCARD_ALL;
    }
    decoder.reset(codec ? avcodec_alloc_context3(codec) : nullptr);
    if (!decoder || avcodec_parameters_to_context(decoder.get(), format->streams[stream]->codecpar) < 0)
        return false;
    decoder->thread_count = 1;
    decoder->skip_frame = AVDISCARD_NONKEY;
    decoder->skip_loop_filter = AVDISCARD_ALL;
    decoder->max_pixels = mostPixels;
    return avcodec_open2(decoder.get(), codec, nullptr) >= 0;
}

std::optional<PreviewPicture> AvFile::pictureAt(double seconds, int width)
{
    constexpr double longest = 24 * 60 * 60;
    constexpr int narrowest = 8, widest = 1920;
    bytesLeft = largestReading;
    const double moment = std::isnan(seconds) ? 0 : std::clamp(seconds, 0.0, longest);
    const AVRational base = format->streams[stream]->time_base;
    const int64_t place = base.num > 0 ? std::llround(moment / av_q2d(base)) : 0;
    if (av_seek_frame(format.get(), stream, place, AVSEEK_FLAG_BACKWARD) < 0)
        return std::nullopt;
    avcodec_flush_buffers(decoder.get());
    if (!decodeKeyFrame())
        return std::nullopt;
    return scaled(std::clamp(width, narrowest, widest));
}

bool AvFile::decodeKeyFrame()
{
    int keyFrames = 0;
    for (int i = 0; i < mostPackets && keyFrames < mostKeyFrames; ++i) {
        if (av_read_frame(format.get(), packet.get()) < 0)
            return false;
        const bool isKey = packet->stream_index == stream && (packet->flags & AV_PKT_FLAG_KEY) != 0;
        const bool isDecoded = isKey && decode();
        keyFrames += isKey ? 1 : 0;
        const int64_t stamp = packet->pts != AV_NOPTS_VALUE ? packet->pts : packet->dts;
        const double base = av_q2d(format->streams[stream]->time_base);
        keyFrameSeconds = stamp != AV_NOPTS_VALUE ? std::max(0.0, double(stamp) * base) : 0;
        av_packet_unref(packet.get());
        if (isDecoded)
            return true;
    }
    return false;
}

/// The end is sent behind the packet, so that the picture comes out at once.
bool AvFile::decode()
{
    const bool isTaken = avcodec_send_packet(decoder.get(), packet.get()) >= 0
        && avcodec_send_packet(decoder.get(), nullptr) >= 0;
    if (isTaken && avcodec_receive_frame(decoder.get(), frame.get()) >= 0)
        return true;
    avcodec_flush_buffers(decoder.get());
    return false;
}

std::optional<PreviewPicture> AvFile::scaled(int width)
{
    constexpr int tallest = 4; // times the width
    const int from = frame->width, high = frame->height;
    if (from <= 0 || high <= 0)
        return std::nullopt;
    const auto height = static_cast<int>(
        std::clamp<int64_t>(std::llround(double(width) * high / from), 2, int64_t(tallest) * width));
    scaler.reset(sws_getCachedContext(scaler.release(), from, high, static_cast<AVPixelFormat>(frame->format),
        width, height, AV_PIX_FMT_RGB24, SWS_AREA, nullptr, nullptr, nullptr));
    if (!scaler)
        return std::nullopt;
    // Rows that end where the scaler's vectors do.
    const int stride = (width * 3 + 63) / 64 * 64;
    std::vector<uint8_t> rows(static_cast<size_t>(stride) * height + 64);
    uint8_t* const planes[] = {rows.data(), nullptr, nullptr, nullptr};
    const int strides[] = {stride, 0, 0, 0};
    if (sws_scale(scaler.get(), frame->data, frame->linesize, 0, high, planes, strides) <= 0)
        return std::nullopt;
    PreviewPicture picture{width, height, std::vector<uint8_t>(static_cast<size_t>(width) * 3 * height), 0};
    for (int y = 0; y < height; ++y)
        std::copy_n(
            rows.data() + ptrdiff_t(y) * stride, width * 3, picture.pixels.data() + ptrdiff_t(y) * width * 3);
    picture.seconds = keyFrameSeconds;
    av_frame_unref(frame.get());
    return picture;
}

} // namespace platform
