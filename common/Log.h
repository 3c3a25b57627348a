#pragma once

#include <functional>
#include <string>
#include <string_view>

/// The program's log: free-form lines, no levels. Callable from any thread. What a name could do to a
/// terminal is made visible (`visibleText`), so that a line stays a line. Lines go to standard error unless
/// another sink is set.
using LogSink = std::function<void(std::string_view line)>;

/// Replaces the sink; an empty one silences the log. Returns the sink that was set before
/// (the standard-error one at first).
LogSink setLogSink(LogSink sink);

void logLine(std::string_view line);

/// Like printf; the text may be of any length.
[[gnu::format(printf, 1, 2)]] void logFormat(const char* format, ...);

/// printf into a string. The programs keep LC_NUMERIC at "C", so numbers are printed with a point.
[[gnu::format(printf, 1, 2)]] std::string formatted(const char* format, ...);
