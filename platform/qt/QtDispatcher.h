#pragma once

#include "platform/Dispatcher.h"

#include <QObject>

#include <utility>

class QThreadPool;

namespace platform {

/// The main thread's event loop and a pool of background threads.
/// Created and destroyed on the main thread.
class QtDispatcher final : public QObject, public Dispatcher {
public:
    QtDispatcher();
    /// Waits for running jobs as long as they take; `finish` first.
    ~QtDispatcher() override;

    /// Drops everything that has not run yet and gives running jobs a second. False when one still runs: a
    /// read that hangs on a pulled card must not keep the program from quitting, so leave this object to it
    /// then.
    [[nodiscard]] bool finish();

    void onMain(Work work) override;
    void inBackground(Work work) override;
    /// Called on the main thread when an exception has ended a background job, most likely for lack of
    /// memory. Jobs that were begun before are not covered.
    void setFailureHandler(Work told) { failed = std::move(told); }
    void after(std::chrono::milliseconds delay, Work work) override;
    [[nodiscard]] std::unique_ptr<Timer> every(std::chrono::milliseconds interval, Work work) override;

private:
    class Hub;
    std::shared_ptr<Hub> hub;
    std::unique_ptr<QThreadPool> pool;
    Work failed;
};

} // namespace platform
