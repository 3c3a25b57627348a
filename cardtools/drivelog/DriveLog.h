#pragma once

#include "cardtools/drivelog/DriveLogReader.h"
#include "common/FilePlace.h"

#include <functional>
#include <memory>
#include <string>

/// Called while a log is read: how many of how many records were read.
using DriveLogProgress = std::function<void(int64_t done, int64_t all)>;

/// A drive log in memory: the whole records that were really read, exactly as they are in the file.
class DriveLog {
public:
    explicit DriveLog(const DriveLogFormat& format)
        : kind(&format)
    {
    }

    const DriveLogFormat& format() const { return *kind; }
    int64_t count() const { return records; }
    /// What the header says; more than `count()` when the file is cut or the device failed.
    uint32_t announced() const { return headerCount; }
    DriveLogEnd end() const { return ending; }
    /// Why the file could not be opened.
    FileError openError() const { return notOpened; }

    /// The cell's text; empty for a column or row that is not there.
    std::string stringForColumnIndex(int64_t column, int64_t row) const;
    /// The cell as a window shows it: empty for an impossible value, as in a damaged record.
    std::string shownText(int64_t column, int64_t row) const;
    /// The bytes of a row that is there.
    const std::byte* recordAt(int64_t row) const
    {
        return bytes.get() + static_cast<size_t>(row) * kind->recordSize;
    }
    /// The row's position; 0, 0 for a row that is not there and for an impossible position.
    DrivePlace placeAt(int64_t row) const;

    friend DriveLog readDriveLog(ByteSource& source, const DriveLogFormat& format, std::stop_token stop,
        const DriveLogProgress& progress);
    friend DriveLog readDriveLog(const FilePlace& place, const DriveLogFormat& format, std::stop_token stop,
        const DriveLogProgress& progress);

private:
    void readRecords(DriveLogReader& reader, const DriveLogProgress& progress);
    bool hasRow(int64_t row) const { return row >= 0 && row < records; }

    const DriveLogFormat* kind;
    std::unique_ptr<std::byte[]> bytes;
    int64_t records = 0;
    uint32_t headerCount = 0;
    DriveLogEnd ending = DriveLogEnd::whole;
    FileError notOpened;
};

/// Reads a whole log. Memory is taken for the records that are there, whatever the header says. The log is
/// empty when its `end()` is not usable.
DriveLog readDriveLog(ByteSource& source, const DriveLogFormat& format, std::stop_token stop = {},
    const DriveLogProgress& progress = {});
DriveLog readDriveLog(const FilePlace& place, const DriveLogFormat& format, std::stop_token stop = {},
    const DriveLogProgress& progress = {});
