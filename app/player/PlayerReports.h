#pragma once

#include "platform/MediaPlayer.h"

/// The player plays its file, or shows its last picture.
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

/// A picture of this file is on screen; never true for a file that has only sound.
inline bool hasPicture(const platform::MediaPlayer& player)
{
    return (reportsPlaying(player) || isPaused(player)) && player.hasVideoOut();
}

/// The fraction of its length from which a file counts as played to its end.
constexpr double endPosition = 0.998;
