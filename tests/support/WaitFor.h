#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>

#include <chrono>
#include <functional>

/// Runs the event loop until the condition holds; false when it doesn't within a generous time.
inline bool waitFor(const std::function<bool()>& condition)
{
    const QDeadlineTimer deadline(std::chrono::seconds(30));
    QTimer look; // not all that happens is an event
    look.start(10);
    while (!condition() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return condition();
}
