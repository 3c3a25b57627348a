#pragma once

#include "lib/LoadingBar.h"
#include "platform/MediaPlayer.h"

#include <QString>

/// The picture's place in the window and the texts over it. Main thread only.
class PlaybackScreen {
public:
    virtual ~PlaybackScreen() = default;
    /// How high, in points, a picture of that size is shown there.
    virtual double heightOf(platform::VideoSize picture) const = 0;
    /// Shows a text about the file; empty: none.
    virtual void say(const QString& text) = 0;
    /// Shows the player's picture or, where there is none, the background.
    virtual void showPictureOf(const platform::MediaPlayer& player) = 0;
    /// Shows the target of a slow seek.
    virtual void showSeeking(platform::MediaTime target) = 0;
    virtual void hideSeeking() = 0;
    /// Shows a remark over the picture for a moment, in place of the one before; empty: none.
    virtual void remark(const QString& text) = 0;
    /// Shows the time of the one picture that is looked at, to the millisecond.
    virtual void showFrameTime(platform::MediaTime time) = 0;
    virtual void hideFrameTime() = 0;
    /// The bar that is shown while a file is prepared.
    virtual LoadingBar& loading() = 0;
};
