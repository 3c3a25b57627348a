#pragma once

#include "common/Life.h"
#include "platform/Dispatcher.h"

#include <chrono>
#include <functional>
#include <optional>

/// The course of a bar for work of unknown length: it fills within a time and goes when it is full, or with
/// the first step after `stop`. It draws nothing itself. Main thread only.
class LoadingBar {
public:
    struct Look {
        /// 0 to 100; called at the start, at every step, and with 0 at the end.
        std::function<void(double percent)> fill;
        /// `isInTime`: it was stopped before it was full.
        std::function<void(bool isInTime)> ended;
        /// After the first `fill`.
        std::function<void()> begun = [] {};
        /// Asked at every step: how far the work is, 0 to 100, where that is known after all; then the bar
        /// stands there.
        std::function<std::optional<double>()> measured = [] { return std::nullopt; };
    };
    struct Pace {
        std::chrono::milliseconds step;
        std::chrono::seconds longest{15}; // from empty to full
    };

    LoadingBar(platform::Dispatcher& dispatcher, Pace pace, Look look);

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
    Pace pace;
    Look look;
    double percent = 0;
    bool running = false;
    bool isStopped = true;
    Life life;
};
