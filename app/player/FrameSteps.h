#pragma once

#include "platform/MediaPlayer.h"

class PlaybackScreen;

/// The user looks at single pictures: steps from one to the next, and the time of the one on screen. Main
/// thread only.
class FrameSteps {
public:
    FrameSteps(platform::MediaPlayer& player, PlaybackScreen& screen);

    /// One picture on (1) or back (-1); pauses. A held key goes no further than the player follows.
    void step(int direction);
    /// The file plays on, another place or another file is shown.
    void end();
    bool areMade() const { return isActive; }

    /// Called with each time report of the player.
    void playerReported();

private:
    platform::MediaPlayer& player;
    PlaybackScreen& screen;
    bool isActive = false;
    int pending = 0; // steps that the player was told of, negative: back
};
