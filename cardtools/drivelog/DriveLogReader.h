#pragma once

#include "cardtools/drivelog/DriveLogFormat.h"
#include "common/ByteSource.h"

#include <optional>
#include <stop_token>

/// How the reading of a drive log went.
enum class DriveLogEnd {
    whole, // all records that the header announces
    cut, // the file ends early: fewer records than announced
    deviceFailed, // the device failed on the way; the records before that are good
    stopped, // asked to stop on the way
    // From here on nothing of the log can be used.
    notThere,
    cannotOpen,
    refused, // a link, or no plain file
    headerFailed, // the device failed before it gave a header
    noHeader, // shorter than a header
    impossibleCount, // more records than a file on the card can hold
    noMemory,
};

constexpr bool isUsable(DriveLogEnd end)
{
    return end < DriveLogEnd::notThere;
}

/// Reads a log from its beginning: the header when it is made, then pieces of whole records.
class DriveLogReader {
public:
    DriveLogReader(ByteSource& source, const DriveLogFormat& format, std::stop_token stop = {});

    /// The number of records that the header announces; nothing when the log cannot be used (see `end()`).
    std::optional<uint32_t> announced() const { return count; }
    /// An upper limit of the records that are there, by the file's size.
    uint64_t recordsAtMost() const;

    /// Fills the span with the next records and returns how many; bytes after them may be overwritten.
    /// Fewer than fit only for `end()`.
    size_t read(std::span<std::byte> into);

    /// Why a read gave fewer records than fit.
    DriveLogEnd end() const { return ending; }

private:
    void readHeader();
    size_t readBytes(std::span<std::byte> into);

    ByteSource& source;
    const DriveLogFormat& format;
    std::stop_token stop;
    std::optional<uint32_t> count;
    uint64_t remaining = 0;
    DriveLogEnd ending = DriveLogEnd::whole;
};
