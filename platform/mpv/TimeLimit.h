#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace platform {

/// Ends the whole process, successfully and at once, if it is not destroyed in time. For a teardown that
/// waits for a library whose read of a failing card may never return.
class TimeLimit {
public:
    explicit TimeLimit(std::chrono::milliseconds limit);
    ~TimeLimit();
    TimeLimit(const TimeLimit&) = delete;
    TimeLimit& operator=(const TimeLimit&) = delete;

private:
    std::mutex mutex;
    std::condition_variable done;
    bool isDone = false;
    std::thread watch;
};

} // namespace platform
