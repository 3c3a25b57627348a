#pragma once

#include "lib/LoadingBar.h"
#include "platform/MediaPlayer.h"

#include <QString>

/// Where the picture is seen, with what is said over it. Main thread only.
class PlaybackScreen {
public:
    virtual ~PlaybackScreen() = default;
    /// Of the picture's place, in points.
    virtual double height() const = 0;
    /// Says what happens to the file; empty: nothing.
    virtual void say(const QString& text) = 0;
    /// Shows the player's picture or, where there is none, the background.
    virtual void showPictureOf(const platform::MediaPlayer& player) = 0;
    /// Says where a seek leads whose picture takes its time.
    virtual void showSeeking(platform::MediaTime target) = 0;
    virtual void hideSeeking() = 0;
    /// How long a file may still take, on screen from its start to its end.
    virtual LoadingBar& loading() = 0;
};
