#include "cardtools/drivelog/DriveLog.h"

#include "common/FileByteSource.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <system_error>
#include <utility>

std::string DriveLog::stringForColumnIndex(int64_t column, int64_t row) const
{
    std::string text;
    if (hasRow(row) && column >= 0 && static_cast<size_t>(column) < kind->columns.size())
        kind->columns[static_cast<size_t>(column)].append(text, recordAt(row), row);
    return text;
}

std::string DriveLog::shownText(int64_t column, int64_t row) const
{
    const bool isThere = hasRow(row) && column >= 0 && static_cast<size_t>(column) < kind->columns.size();
    const auto isPossible = isThere ? kind->columns[static_cast<size_t>(column)].isPossible : nullptr;
    return isPossible && !isPossible(recordAt(row)) ? std::string() : stringForColumnIndex(column, row);
}

DrivePlace DriveLog::placeAt(int64_t row) const
{
    const DrivePlace place = hasRow(row) ? kind->placeOf(recordAt(row)) : DrivePlace();
    return place.latitude <= 90 && place.longitude <= 180 ? place : DrivePlace();
}

void DriveLog::readRecords(DriveLogReader& reader, const DriveLogProgress& progress)
{
    constexpr size_t pieceSize = size_t{1} << 20;
    const auto most = static_cast<int64_t>(reader.recordsAtMost());
    bytes.reset(new (std::nothrow) std::byte[static_cast<size_t>(most) * kind->recordSize]);
    if (!bytes) {
        ending = DriveLogEnd::noMemory;
        return;
    }
    while (records < most && reader.end() == DriveLogEnd::whole) {
        const auto rest = static_cast<size_t>(most - records) * kind->recordSize;
        std::byte* const next = bytes.get() + static_cast<size_t>(records) * kind->recordSize;
        records += static_cast<int64_t>(reader.read({next, std::min(rest, pieceSize)}));
        if (progress)
            progress(records, most);
    }
    ending = reader.end();
    if (ending == DriveLogEnd::whole && records < int64_t{headerCount})
        ending = DriveLogEnd::cut;
}

DriveLog readDriveLog(
    ByteSource& source, const DriveLogFormat& format, std::stop_token stop, const DriveLogProgress& progress)
{
    DriveLog log(format);
    DriveLogReader reader(source, format, std::move(stop));
    if (const auto count = reader.announced()) {
        log.headerCount = *count;
        log.readRecords(reader, progress);
    } else {
        log.ending = reader.end();
    }
    return log;
}

DriveLog readDriveLog(const FilePlace& place, const DriveLogFormat& format, std::stop_token stop,
    const DriveLogProgress& progress)
{
    FileError why;
    if (const auto file = FileByteSource::open(place, why))
        return readDriveLog(*file, format, std::move(stop), progress);
    DriveLog log(format);
    const bool isRefused = why.code == FileError::link || why.code == FileError::noPlainFile;
    log.ending = why.code == ENOENT ? DriveLogEnd::notThere
        : isRefused                 ? DriveLogEnd::refused
                                    : DriveLogEnd::cannotOpen;
    log.notOpened = why;
    return log;
}
