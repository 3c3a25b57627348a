#pragma once

#include "lib/LoadingBar.h"
#include "platform/MediaPlayer.h"

#include <QString>

/// The picture's place in the window and the texts over it. Main thread only.
class PlaybackScreen {
public:
    virtual ~PlaybackScreen() = default;
    /// Of the picture's place, in points.
    virtual double height() const = 0;
    /// Shows a text about the file; empty: none.
    virtual void say(const QString& text) = 0;
    /// Shows the player's picture or, where there is none, the background.
    virtual void showPictureOf(const platform::MediaPlayer& player) = 0;
    /// Shows the target of a slow seek.
    virtual void showSeeking(platform::MediaTime target) = 0;
    virtual void hideSeeking() = 0;
    /// The bar that is shown while a file is prepared.
    virtual LoadingBar& loading() = 0;
};
