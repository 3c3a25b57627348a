#pragma once

#include "common/Life.h"
#include "platform/Dispatcher.h"
#include "platform/MediaPlayer.h"

#include <functional>
#include <optional>

/// The user's latest seek: what follows it later, which position is shown until the player is there, and what
/// is said while its picture takes its time. A new one takes the place of whatever is left of the one before.
/// Main thread only.
class Seek {
public:
    struct Told {
        /// Half a second after its begin the picture is still awaited; this is where the seek leads.
        std::function<void(platform::MediaTime target)> slow;
        /// Nothing is to be said about a seek any more.
        std::function<void()> shown;
        /// It is over: the position is the player's own again.
        std::function<void()> settled;
    };

    Seek(platform::Dispatcher& dispatcher, platform::MediaPlayer& player, Told told);

    /// The user goes elsewhere, or another file begins: what is left of an earlier seek is void.
    void begin();
    /// The player goes: nothing follows.
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

    /// The player tells its time. True when the seek was over by that.
    bool playerReported();

private:
    bool settle();

    platform::Dispatcher& dispatcher;
    platform::MediaPlayer& player;
    Told told;
    std::optional<double> movingPosition;
    /// Its least settling time has passed, its picture is still awaited.
    bool settlingTimeIsOver = false;
    Life life;
};
