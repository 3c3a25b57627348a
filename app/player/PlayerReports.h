#pragma once

#include "platform/MediaPlayer.h"

/// The player plays its file, were it only its last picture.
inline bool reportsPlaying(const platform::MediaPlayer& player)
{
    return player.media() && player.isPlaying();
}

/// The player plays its file and there is something left of it.
inline bool isPlaying(const platform::MediaPlayer& player)
{
    return reportsPlaying(player) && player.remainingTime().stringValue() != "00:00";
}

/// The player rests: paused, or at the end of its file.
inline bool isPaused(const platform::MediaPlayer& player)
{
    return player.state() == platform::PlayerState::paused;
}

inline bool hasAudio(const platform::MediaPlayer& player)
{
    return player.media() && !player.audioTrackIndexes().empty();
}

/// A picture is on screen. A file that has only sound has none, least of all the last one of another file.
inline bool hasPicture(const platform::MediaPlayer& player)
{
    return (reportsPlaying(player) || isPaused(player)) && player.hasVideoOut();
}

/// From here on a file counts as played to its end, as a fraction of its length.
constexpr double endPosition = 0.998;
