#pragma once

#include "common/Log.h"

#include <string>
#include <utility>
#include <vector>

/// Collects the log's lines for as long as it lives.
class CollectedLog {
public:
    CollectedLog()
        : before(setLogSink([this](std::string_view line) { lines.emplace_back(line); }))
    {
    }
    ~CollectedLog() { setLogSink(std::move(before)); }
    CollectedLog(const CollectedLog&) = delete;
    CollectedLog& operator=(const CollectedLog&) = delete;

    std::vector<std::string> lines;

private:
    LogSink before;
};
