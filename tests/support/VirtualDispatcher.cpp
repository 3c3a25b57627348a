#include "tests/support/VirtualDispatcher.h"

#include <algorithm>

class VirtualDispatcher::VirtualTimer : public platform::Timer {
public:
    explicit VirtualTimer(std::shared_ptr<Alarm> running)
        : alarm(std::move(running))
    {
    }
    ~VirtualTimer() override { alarm->stopped = true; }

private:
    std::shared_ptr<Alarm> alarm;
};

void VirtualDispatcher::onMain(Work work)
{
    const std::lock_guard lock(mutex);
    mainQueue.push_back(std::move(work));
}

void VirtualDispatcher::inBackground(Work work)
{
    const std::lock_guard lock(mutex);
    backgroundQueue.push_back(std::move(work));
}

void VirtualDispatcher::after(Milliseconds delay, Work work)
{
    set(delay, std::make_shared<Alarm>(Alarm{std::move(work)}));
}

std::unique_ptr<platform::Timer> VirtualDispatcher::every(Milliseconds interval, Work work)
{
    // A timer without an interval would hold the clock for ever.
    interval = std::max(interval, Milliseconds(1));
    const auto alarm = std::make_shared<Alarm>(Alarm{std::move(work), interval});
    set(interval, alarm);
    return std::make_unique<VirtualTimer>(alarm);
}

void VirtualDispatcher::set(Milliseconds delay, std::shared_ptr<Alarm> alarm)
{
    alarms.emplace(Moment(clock + std::max(delay, Milliseconds(0)), settings++), std::move(alarm));
}

bool VirtualDispatcher::runNext(std::deque<Work>& queue)
{
    std::unique_lock lock(mutex);
    if (queue.empty())
        return false;
    const Work work = std::move(queue.front());
    queue.pop_front();
    lock.unlock();
    work();
    return true;
}

bool VirtualDispatcher::fireNextDue(Milliseconds until)
{
    while (!alarms.empty() && alarms.begin()->first.first <= until) {
        const auto next = alarms.extract(alarms.begin());
        const auto alarm = next.mapped();
        if (alarm->stopped)
            continue;
        clock = std::max(clock, next.key().first);
        if (alarm->interval.count() > 0)
            set(alarm->interval, alarm);
        alarm->work();
        return true;
    }
    return false;
}

size_t VirtualDispatcher::runMain()
{
    size_t count = 0;
    while (runNext(mainQueue) || fireNextDue(clock))
        ++count;
    return count;
}

size_t VirtualDispatcher::hangBackground()
{
    const std::lock_guard lock(mutex);
    return std::exchange(backgroundQueue, {}).size();
}

size_t VirtualDispatcher::runBackground()
{
    size_t count = 0;
    while (runOneBackground())
        ++count;
    return count;
}

size_t VirtualDispatcher::runAll()
{
    size_t count = 0;
    while (const size_t ran = runMain() + runBackground())
        count += ran;
    return count;
}

void VirtualDispatcher::advance(Milliseconds duration)
{
    const Milliseconds end = clock + duration;
    do {
        runMain();
    } while (fireNextDue(end));
    clock = end;
}
