#include "app/player/Seek.h"

#include <utility>

namespace {

constexpr double patienceSeconds = 0.5;

} // namespace

Seek::Seek(platform::Dispatcher& queue, platform::MediaPlayer& sought, Told listener)
    : dispatcher(queue),
      player(sought),
      told(std::move(listener))
{
}

void Seek::begin()
{
    life.renew();
    movingPosition.reset();
    settlingTimeIsOver = false;
    told.shown();
    after(patienceSeconds, [this] {
        if (player.media() && player.isSeeking())
            told.slow(player.time());
    });
}

void Seek::after(double seconds, std::function<void()> work)
{
    const auto delay = std::chrono::milliseconds(int64_t(seconds * 1000));
    dispatcher.after(delay, life.guarded(std::move(work)));
}

void Seek::settleAfter(double seconds)
{
    if (!player.media())
        return;
    after(seconds, [this] {
        settlingTimeIsOver = true;
        settle();
    });
}

bool Seek::settle()
{
    if (!settlingTimeIsOver || player.isSeeking())
        return false;
    settlingTimeIsOver = false;
    movingPosition.reset();
    told.settled();
    return true;
}

bool Seek::playerReported()
{
    if (!player.isSeeking())
        told.shown();
    return settle();
}
