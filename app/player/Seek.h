#pragma once

#include "common/Life.h"
#include "platform/Dispatcher.h"
#include "platform/MediaPlayer.h"

#include <functional>
#include <optional>

/// The user's latest seek: its delayed work, the position shown until the player is there, and the text while
/// its picture is slow. A new seek replaces the one before. Main thread only.
class Seek {
public:
    struct Told {
        /// Half a second after the start the picture is not there yet; with the seek's target.
        std::function<void(platform::MediaTime target)> slow;
        /// The text about a seek is to be removed.
        std::function<void()> shown;
        /// The seek is over: the position is the player's own again.
        std::function<void()> settled;
    };

    Seek(platform::Dispatcher& dispatcher, platform::MediaPlayer& player, Told told);

    /// The user seeks, or another file starts: an earlier seek is void.
    void begin();
    /// The player ends: everything is void.
    void end() { life.renew(); }
    /// Runs the work after the delay unless another seek has begun meanwhile.
    void after(double seconds, std::function<void()> work);
    /// The seek is over once this time has passed and its picture is there.
    void settleAfter(double seconds);

    /// A jump: this position is shown until it is over.
    void moveTo(double position) { movingPosition = position; }
    const std::optional<double>& target() const { return movingPosition; }
    /// A jump within the settling time of another is ignored; after that it goes on from where that one
    /// leads, however long its picture takes.
    bool takesJump() const { return !movingPosition || settlingTimeIsOver; }

    /// Called with each time report of the player. True when the seek is over by it.
    bool playerReported();

private:
    bool settle();

    platform::Dispatcher& dispatcher;
    platform::MediaPlayer& player;
    Told told;
    std::optional<double> movingPosition;
    /// The settling time has passed, the picture is not there yet.
    bool settlingTimeIsOver = false;
    Life life;
};
