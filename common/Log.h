#pragma once

#include <functional>
#include <string>
#include <string_view>

/// The program's log: free-form lines, no levels. Callable from any thread. Control characters are made
/// visible (`visibleText`), so that a line stays a line. Silent until the program sets a sink: what is logged
/// is also returned, so that a command line program needs no log.
using LogSink = std::function<void(std::string_view line)>;

/// Replaces the sink; an empty one silences the log. Returns the sink that was set before.
LogSink setLogSink(LogSink sink);

/// Lines go to standard error from now on.
void logToStandardError();

void logLine(std::string_view line);

/// Like printf; the text may be of any length.
[[gnu::format(printf, 1, 2)]] void logFormat(const char* format, ...);

/// printf into a string. The programs keep LC_NUMERIC at "C", so numbers are printed with a point.
[[gnu::format(printf, 1, 2)]] std::string formatted(const char* format, ...);
