#pragma once

#include "platform/Dispatcher.h"

#include <QObject>

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
    void after(std::chrono::milliseconds delay, Work work) override;
    [[nodiscard]] std::unique_ptr<Timer> every(std::chrono::milliseconds interval, Work work) override;

private:
    class Hub;
    std::shared_ptr<Hub> hub;
    std::unique_ptr<QThreadPool> pool;
};

} // namespace platform
