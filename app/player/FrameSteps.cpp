#include "app/player/FrameSteps.h"

#include "app/player/PlaybackScreen.h"

#include <cstdlib>

namespace {

constexpr int mostPending = 5;

} // namespace

FrameSteps::FrameSteps(platform::MediaPlayer& stepped, PlaybackScreen& seenOn)
    : player(stepped),
      screen(seenOn)
{
}

void FrameSteps::step(int direction)
{
    // At the first and the last picture steps end without a report: those the other way are none of theirs.
    if (pending * direction < 0)
        pending = 0;
    if (std::abs(pending + direction) > mostPending)
        return;
    isActive = true;
    pending += direction;
    player.stepFrame(direction);
    screen.showFrameTime(player.time());
}

void FrameSteps::end()
{
    if (!isActive)
        return;
    isActive = false;
    pending = 0;
    screen.hideFrameTime();
}

void FrameSteps::playerReported()
{
    if (!isActive)
        return;
    if (player.isPlaying()) {
        end();
        return;
    }
    pending += pending > 0 ? -1 : pending < 0 ? 1 : 0;
    screen.showFrameTime(player.time());
}
