#include "lib/LoadingBar.h"

#include <utility>

namespace {

constexpr std::chrono::duration<double> longest(15);
// Thirty thirtieths need not be a whole.
constexpr double full = 100 - 1e-6;

} // namespace

LoadingBar::LoadingBar(platform::Dispatcher& queue, std::chrono::milliseconds stepLength, Look shownBy)
    : dispatcher(queue),
      step(stepLength),
      look(std::move(shownBy))
{
}

void LoadingBar::start()
{
    isStopped = false;
    percent = 0;
    look.fill(0);
    look.begun();
    if (!std::exchange(running, true))
        scheduleStep();
}

void LoadingBar::scheduleStep()
{
    dispatcher.after(step, life.guarded([this] { advance(); }));
}

void LoadingBar::advance()
{
    percent += 100 * (step / longest);
    look.fill(percent);
    if (percent < full && !isStopped) {
        scheduleStep();
        return;
    }
    const bool isInTime = std::exchange(isStopped, true);
    running = false;
    look.fill(0);
    look.ended(isInTime);
}
