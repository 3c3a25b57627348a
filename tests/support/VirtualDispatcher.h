#pragma once

#include "platform/Dispatcher.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <utility>

/// A dispatcher whose queues and clock move only when the test moves them. The test's thread is the
/// main thread; it also runs the background work, when the test says so.
/// Posting is allowed from any thread and from inside work; the run and advance operations are called by the
/// test only, never from inside work.
class VirtualDispatcher : public platform::Dispatcher {
public:
    using Milliseconds = std::chrono::milliseconds;

    void onMain(Work work) override;
    void inBackground(Work work) override;
    void after(Milliseconds delay, Work work) override;
    [[nodiscard]] std::unique_ptr<platform::Timer> every(Milliseconds interval, Work work) override;

    /// Runs the posted main work and what is due at the present moment, until nothing is left,
    /// what that work posts included. Returns how many pieces of work ran.
    size_t runMain();

    /// Runs the oldest piece of background work; false when there is none.
    bool runOneBackground();
    /// Runs background work until none is left. Returns how many pieces ran.
    size_t runBackground();

    /// Runs main and background work in turns until both are done. The clock stands still.
    size_t runAll();

    /// Moves the clock. Delayed work and timers run in the order of their time (at the same time, in the
    /// order in which they were set), each at its own moment, and the main work that they post right after
    /// each. Background work stays where it is.
    void advance(Milliseconds duration);

    /// Time since the dispatcher was made.
    Milliseconds now() const { return clock; }

    size_t pendingMain() const;
    size_t pendingBackground() const;
    /// Delayed work and timers that are still to fire.
    size_t pendingTimers() const;

private:
    struct Alarm {
        Work work;
        Milliseconds interval{0}; // 0: fires once
        bool stopped = false;
    };
    class VirtualTimer;
    using Moment = std::pair<Milliseconds, uint64_t>; // due time, order of setting

    void set(Milliseconds delay, std::shared_ptr<Alarm> alarm);
    bool runNextMain();
    bool fireNextDue(Milliseconds until);

    mutable std::mutex mutex; // guards the two queues
    std::deque<Work> mainQueue;
    std::deque<Work> backgroundQueue;

    Milliseconds clock{0};
    uint64_t settings = 0;
    std::map<Moment, std::shared_ptr<Alarm>> alarms;
};
