#pragma once

#include "common/Life.h"
#include "platform/Dispatcher.h"

#include <chrono>
#include <functional>

/// The course of a bar for work of unknown length: it fills within 15 seconds and goes when it is full, or
/// with the first step after `stop`. It draws nothing itself. Main thread only.
class LoadingBar {
public:
    struct Look {
        /// 0 to 100; called at the start, at every step, and with 0 at the end.
        std::function<void(double percent)> fill;
        /// `isInTime`: it was stopped before it was full.
        std::function<void(bool isInTime)> ended;
        /// After the first `fill`.
        std::function<void()> begun = [] {};
    };

    LoadingBar(platform::Dispatcher& dispatcher, std::chrono::milliseconds step, Look look);

    /// Begins at 0, also while it runs.
    void start();
    void stop() { isStopped = true; }
    /// From the start to the end.
    bool isRunning() const { return running; }
    /// Started, and neither stopped nor full.
    bool isAwaited() const { return !isStopped; }

private:
    void scheduleStep();
    void advance();

    platform::Dispatcher& dispatcher;
    std::chrono::milliseconds step;
    Look look;
    double percent = 0;
    bool running = false;
    bool isStopped = true;
    Life life;
};
