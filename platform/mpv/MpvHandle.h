#pragma once

#include "platform/MediaPlayer.h"

#include <cstdint>
#include <initializer_list>
#include <memory>

struct mpv_handle;

namespace platform {

struct MpvHandleDeleter {
    void operator()(mpv_handle* mpv) const;
};
using MpvHandle = std::unique_ptr<mpv_handle, MpvHandleDeleter>;

/// No decoder makes a picture of more pixels than this.
constexpr VideoSize largestPicture{8192, 4320};

/// A running mpv core that plays local AVI files into a render context and does nothing else: no
/// configuration files, scripts, playlists, neighbouring files or network, and only the few decoders of what
/// cameras record. Sets LC_NUMERIC to "C". Null when mpv can't be started.
MpvHandle makeMpvHandle();

/// Queue a command or a property change in the core and return at once. The main thread draws the pictures
/// that the core waits for, so it must never wait for the core.
/// False when mpv refuses the command right away; otherwise a reply event with the id follows.
bool sendMpvCommand(mpv_handle* mpv, uint64_t replyId, std::initializer_list<const char*> words);
void setMpvFlag(mpv_handle* mpv, const char* property, bool value);
void setMpvNumber(mpv_handle* mpv, const char* property, double value);

} // namespace platform
