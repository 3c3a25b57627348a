#include "lib/LoadingBar.h"

#include <utility>

namespace {

// The sum of the steps may be rounded to just below 100.
constexpr double full = 100 - 1e-6;

} // namespace

LoadingBar::LoadingBar(platform::Dispatcher& queue, Pace steps, Look shownBy)
    : dispatcher(queue),
      pace(steps),
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
    dispatcher.after(pace.step, life.guarded([this] { advance(); }));
}

void LoadingBar::advance()
{
    percent =
        look.measured().value_or(percent + 100 * std::chrono::duration<double>(pace.step) / pace.longest);
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
