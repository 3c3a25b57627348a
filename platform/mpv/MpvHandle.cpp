#include "platform/mpv/MpvHandle.h"

#include <clocale>
#include <filesystem>
#include <mpv/client.h>
#include <system_error>
#include <vector>

namespace platform {

namespace {

struct Option {
    const char* name;
    const char* value;
};

/// What cameras record, by the names of its decoders; nothing else is ever decoded. "-" ends a list.
constexpr const char* pictureDecoders = "h264,hevc,mpeg4,mjpeg,-";
constexpr const char* soundDecoders = "pcm_s16le,pcm_s24le,pcm_s32le,pcm_u8,pcm_alaw,pcm_mulaw,adpcm_ima_wav,"
                                      "adpcm_ms,aac,mp2float,mp3float,ac3,-";
static_assert(largestPicture.width * largestPicture.height == 35389440);

constexpr Option options[] = {
    // No configuration, scripts or other input from outside the program.
    {"config", "no"},
    {"load-scripts", "no"},
    {"load-auto-profiles", "no"},
    {"load-osd-console", "no"},
    {"load-stats-overlay", "no"},
    {"osc", "no"},
    {"ytdl", "no"},
    {"terminal", "no"},
    {"input-default-bindings", "no"},
    {"input-builtin-bindings", "no"},
    {"input-media-keys", "no"},
    {"input-vo-keyboard", "no"},
    {"resume-playback", "no"},
    {"save-position-on-quit", "no"},

    // The one file, and only as an AVI file: a list of files or addresses named ".avi" must not be followed.
    {"demuxer", "lavf"},
    {"demuxer-lavf-format", "avi"},
    {"demuxer-lavf-o", "protocol_whitelist=file,format_whitelist=avi,max_streams=32"},
    // Probing would decode with whatever decoder the file asks for, before any of the bounds below holds. An
    // AVI file's headers are enough.
    {"demuxer-lavf-probe-info", "no"},
    {"vd", pictureDecoders},
    {"ad", soundDecoders},
    {"vd-lavc-o", "max_pixels=35389440"},
    {"load-unsafe-playlists", "no"},
    {"access-references", "no"},
    {"autoload-files", "no"},
    {"audio-file-auto", "no"},
    {"sub-auto", "no"},
    {"sid", "no"},
    {"cover-art-auto", "no"},
    {"audio-display", "no"},
    {"demuxer-max-bytes", "32MiB"},
    {"demuxer-max-back-bytes", "0"},

    // Playing.
    {"idle", "yes"},
    {"keep-open", "yes"},
    {"hr-seek", "yes"},
    {"hwdec", "no"},
    {"gpu-hwdec-interop", "no"},
    {"volume-max", "200"},
    {"audio-pitch-correction", "yes"},
    {"audio-fallback-to-null", "yes"},

    // Drawing: frames are handed over when they are due, so that drawing never blocks the main thread.
    {"vo", "libmpv"},
    {"video-timing-offset", "0"},
    {"stop-screensaver", "no"},
    {"osd-level", "0"},
    {"sws-fast", "yes"},
    {"sws-scaler", "bilinear"},
    {"zimg-scaler", "bilinear"},
    // Handing slices to other threads costs more than it saves at the sizes of a window.
    {"zimg-threads", "1"},
};

/// ALSA writes complaints to standard error on a machine without a sound card, so it is asked only where
/// there is one. Without any device a null output keeps the time.
const char* soundOutputs()
{
    std::error_code error;
    for (const auto& device : std::filesystem::directory_iterator("/dev/snd", error)) {
        const auto name = device.path().filename().string();
        if (name.starts_with("pcm") && name.ends_with('p'))
            return "pulse,alsa,null";
    }
    return "pulse,null";
}

} // namespace

void MpvHandleDeleter::operator()(mpv_handle* mpv) const
{
    mpv_terminate_destroy(mpv);
}

MpvHandle makeMpvHandle()
{
    std::setlocale(LC_NUMERIC, "C");
    MpvHandle mpv(mpv_create());
    if (!mpv)
        return nullptr;
    for (const auto& option : options)
        mpv_set_option_string(mpv.get(), option.name, option.value);
    mpv_set_option_string(mpv.get(), "ao", soundOutputs());
    if (mpv_initialize(mpv.get()) < 0)
        return nullptr;
    return mpv;
}

bool sendMpvCommand(mpv_handle* mpv, uint64_t replyId, std::initializer_list<const char*> words)
{
    std::vector<const char*> arguments(words);
    arguments.push_back(nullptr);
    return mpv_command_async(mpv, replyId, arguments.data()) >= 0;
}

void setMpvFlag(mpv_handle* mpv, const char* property, bool value)
{
    int flag = value ? 1 : 0;
    mpv_set_property_async(mpv, 0, property, MPV_FORMAT_FLAG, &flag);
}

void setMpvNumber(mpv_handle* mpv, const char* property, double value)
{
    mpv_set_property_async(mpv, 0, property, MPV_FORMAT_DOUBLE, &value);
}

} // namespace platform
