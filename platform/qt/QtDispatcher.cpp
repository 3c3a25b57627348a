#include "platform/qt/QtDispatcher.h"

#include "common/Log.h"

#include <QCoreApplication>
#include <QThreadPool>
#include <QTimer>

#include <exception>
#include <limits>
#include <mutex>
#include <utility>

namespace platform {

namespace {

class QtTimer final : public Timer {
public:
    QtTimer(std::chrono::milliseconds interval, Dispatcher::Work work)
    {
        QObject::connect(&timer, &QTimer::timeout, &timer, [run = std::move(work)] {
            // The work may destroy this timer and with it this closure.
            const auto copy = run;
            copy();
        });
        timer.start(interval);
    }

private:
    QTimer timer;
};

} // namespace

/// Posts work to the main thread for background jobs; closed when the dispatcher ends.
class QtDispatcher::Hub {
public:
    explicit Hub(QObject& receiver)
        : target(&receiver)
    {
    }

    void post(Work work)
    {
        const std::lock_guard lock(mutex);
        if (target)
            QMetaObject::invokeMethod(target, std::move(work), Qt::QueuedConnection);
    }

    void close()
    {
        const std::lock_guard lock(mutex);
        target = nullptr;
    }

private:
    std::mutex mutex;
    QObject* target;
};

QtDispatcher::QtDispatcher()
    : hub(std::make_shared<Hub>(*this)),
      pool(std::make_unique<QThreadPool>())
{
    // A job that hangs on a failing card keeps its thread; later jobs get another one.
    pool->setMaxThreadCount(std::numeric_limits<int>::max());
}

QtDispatcher::~QtDispatcher()
{
    hub->close();
}

bool QtDispatcher::finish()
{
    hub->close();
    pool->clear();
    constexpr int patienceMs = 1000;
    return pool->waitForDone(patienceMs);
}

void QtDispatcher::onMain(Work work)
{
    hub->post(std::move(work));
}

void QtDispatcher::inBackground(Work work)
{
    pool->start([run = std::move(work), main = hub, told = failed] {
        try {
            run();
        } catch (const std::exception& error) {
            logFormat("background job failed: %s", error.what());
            if (told)
                main->post(told);
        }
    });
}

void QtDispatcher::after(std::chrono::milliseconds delay, Work work)
{
    QTimer::singleShot(delay, this, std::move(work));
}

std::unique_ptr<Timer> QtDispatcher::every(std::chrono::milliseconds interval, Work work)
{
    return std::make_unique<QtTimer>(interval, std::move(work));
}

} // namespace platform
