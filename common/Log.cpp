#include "common/Log.h"

#include "common/Text.h"

#include <cstdarg>
#include <cstdio>
#include <mutex>
#include <utility>

namespace {

std::mutex sinkMutex;
LogSink currentSink;

std::string formattedFrom(const char* format, va_list arguments)
{
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (length < 0)
        return {};
    std::string text(static_cast<size_t>(length), '\0');
    std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    return text;
}

} // namespace

LogSink setLogSink(LogSink sink)
{
    const std::lock_guard lock(sinkMutex);
    return std::exchange(currentSink, std::move(sink));
}

void logToStandardError()
{
    setLogSink([](std::string_view line) {
        std::fprintf(stderr, "%.*s\n", static_cast<int>(line.size()), line.data());
    });
}

void logLine(std::string_view line)
{
    const std::lock_guard lock(sinkMutex);
    if (currentSink)
        currentSink(visibleText(line));
}

void logFormat(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    const std::string line = formattedFrom(format, arguments);
    va_end(arguments);
    logLine(line);
}

std::string formatted(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    std::string text = formattedFrom(format, arguments);
    va_end(arguments);
    return text;
}
