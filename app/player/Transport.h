#pragma once

#include <cstdint>
#include <functional>

class PlaybackSession;

/// What the transport controls do: play and pause, seeks and jumps, speed, volume. Main thread only.
class Transport {
public:
    /// `volumeChanged` is called after every assignment; `playerMoved` when the player's position has changed
    /// before its next report.
    struct Told {
        std::function<void()> volumeChanged;
        std::function<void()> playerMoved;
    };

    Transport(PlaybackSession& session, Told told);

    /// `selectedRow` of the list, -1 for none; `shownPosition` is where the slider stands.
    void clickPlayButton(int64_t selectedRow, double shownPosition);
    /// The user has moved the slider there.
    void videoPositionSliderMoved(double target);
    void jumpForward();
    void jumpBackward();
    /// One picture on (1) or back (-1).
    void stepFrame(int direction);
    /// To the ends of the file.
    void goToStart();
    void goToEnd();
    // The buttons know two rates: 1 and 2.
    void increaseSpeed();
    void decreaseSpeed();
    /// The next faster (1) or slower (-1) of 0.25, 0.5, 1, 2, 4, 8.
    void stepRate(int direction);

    uint64_t volume() const { return loudness; }
    void setVolume(uint64_t value);
    void volumeUp();
    void volumeDown();
    /// The player takes the volume, and is not mute.
    void applyVolume();

private:
    bool canJump() const;
    void setRate(double rate);

    PlaybackSession& session;
    Told told;
    uint64_t loudness = 0;
};
