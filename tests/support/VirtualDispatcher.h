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

/// A dispatcher whose queues and clock move only when the test moves them, on the test's thread, which is the
/// main thread. Posting is allowed from any thread; the run and advance operations are the test's only.
class VirtualDispatcher : public platform::Dispatcher {
public:
    using Milliseconds = std::chrono::milliseconds;

    void onMain(Work work) override;
    void inBackground(Work work) override;
    void after(Milliseconds delay, Work work) override;
    [[nodiscard]] std::unique_ptr<platform::Timer> every(Milliseconds interval, Work work) override;

    /// Each runs what is posted and what that posts, and returns how many pieces of work ran; `runMain` also
    /// what is due at the present moment. The clock stands still.
    size_t runMain();
    bool runOneBackground() { return runNext(backgroundQueue); }
    /// The background work that waits never ends: it never runs. Returns how many pieces that were.
    size_t hangBackground();
    size_t runBackground();
    size_t runAll();

    /// Moves the clock: delayed work and timers run in the order of their time, each at its own moment, and
    /// the main work that they post right after each. Background work stays where it is.
    void advance(Milliseconds duration);

    /// Time since the dispatcher was made.
    Milliseconds now() const { return clock; }

private:
    struct Alarm {
        Work work;
        Milliseconds interval{0}; // 0: fires once
        bool stopped = false;
    };
    class VirtualTimer;
    using Moment = std::pair<Milliseconds, uint64_t>; // due time, order of setting

    void set(Milliseconds delay, std::shared_ptr<Alarm> alarm);
    bool runNext(std::deque<Work>& queue);
    bool fireNextDue(Milliseconds until);

    mutable std::mutex mutex; // guards the two queues
    std::deque<Work> mainQueue;
    std::deque<Work> backgroundQueue;

    Milliseconds clock{0};
    uint64_t settings = 0;
    std::map<Moment, std::shared_ptr<Alarm>> alarms;
};
