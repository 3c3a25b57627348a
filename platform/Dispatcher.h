#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <utility>

namespace platform {

/// A repeating timer; destroying it stops it. Owned and destroyed on the main thread.
class Timer {
public:
    virtual ~Timer() = default;
};

/// Where work runs. The main thread does all window work; long jobs go to the background. Work that has not
/// run when the dispatcher is destroyed is dropped, so nothing may wait for it.
class Dispatcher {
public:
    using Work = std::function<void()>;

    virtual ~Dispatcher() = default;

    /// Runs the work on the main thread in the order of posting, never inside this call.
    /// Callable from any thread.
    virtual void onMain(Work work) = 0;

    /// Runs the work on a background thread of default priority, at once: work that hangs holds up no other.
    /// An exception that leaves the work is logged and ends only that work: catch it there where somebody
    /// waits for a result. Callable from any thread.
    virtual void inBackground(Work work) = 0;

    /// The same for work that returns a value: `publish` takes it on the main thread.
    template <typename Fetch, typename Publish> void inBackgroundThen(Fetch fetch, Publish publish)
    {
        inBackground([this, fetch = std::move(fetch), publish = std::move(publish)]() mutable {
            onMain([publish = std::move(publish), value = fetch()]() mutable { publish(std::move(value)); });
        });
    }

    /// Runs the work once on the main thread after the delay. Main thread only.
    virtual void after(std::chrono::milliseconds delay, Work work) = 0;

    /// Runs the work on the main thread every interval until the timer is destroyed. Main thread only.
    [[nodiscard]] virtual std::unique_ptr<Timer> every(std::chrono::milliseconds interval, Work work) = 0;
};

} // namespace platform
