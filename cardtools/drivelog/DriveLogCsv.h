#pragma once

#include "cardtools/drivelog/DriveLog.h"

#include <functional>

/// Receives the next whole lines of a CSV file, and the number of records written so far. False ends the
/// writing.
using CsvSink = std::function<bool(std::string_view lines, int64_t records)>;

/// Builds the lines of a drive log's CSV: fields separated by ",", lines ended by "\n", UTF-8, no quotes and
/// no byte-order mark. Lines are handed on in pieces, so memory stays constant.
class DriveLogCsv {
public:
    DriveLogCsv(const DriveLogFormat& format, CsvSink sink);

    /// The header line, first.
    bool writeTitles(std::span<const std::string> titles);
    bool writeRecord(const std::byte* record);
    /// Hands on what is left. All of them: false when the sink refused.
    bool finish();

private:
    bool passOn(size_t threshold);

    const DriveLogFormat& format;
    CsvSink sink;
    std::string lines;
    int64_t rows = 0;
};

/// A whole log, its header line included. False when the sink refused a piece.
bool writeDriveLogCsv(const DriveLog& log, std::span<const std::string> titles, CsvSink sink);
