#pragma once

#include "common/Log.h"

#include <string>
#include <string_view>

namespace cli {

/// Keeps the last line of the log that begins with a text, while it lives.
class LogCapture {
public:
    explicit LogCapture(std::string_view beginning = {})
        : before(setLogSink([this, beginning](std::string_view line) {
              if (line.starts_with(beginning))
                  text = line.substr(beginning.size());
          }))
    {
    }
    ~LogCapture() { setLogSink(std::move(before)); }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    std::string text; ///< without the beginning; empty when there was none

private:
    LogSink before;
};

} // namespace cli
