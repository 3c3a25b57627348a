#include "platform/mpv/TimeLimit.h"

#include <unistd.h>

namespace platform {

TimeLimit::TimeLimit(std::chrono::milliseconds limit)
    : watch([this, limit] {
          std::unique_lock lock(mutex);
          if (!done.wait_for(lock, limit, [this] { return isDone; }))
              _exit(0);
      })
{
}

TimeLimit::~TimeLimit()
{
    {
        const std::lock_guard lock(mutex);
        isDone = true;
    }
    done.notify_one();
    watch.join();
}

} // namespace platform
