#include "cardtools/DriveLog.h"

#include "common/Log.h"
#include "telemetry/FileByteSource.h"

#include <new>
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

DriveLog readDriveLog(ByteSource& source, const DriveLogFormat& format, std::stop_token stop)
{
    DriveLog log(format);
    DriveLogReader reader(source, format, std::move(stop));
    if (const auto count = reader.readHeader()) {
        log.headerCount = *count;
        const uint64_t size = reader.recordsAtMost() * format.recordSize;
        log.bytes.reset(new (std::nothrow) std::byte[size]);
        if (!log.bytes) {
            log.ending = DriveLogEnd::NoMemory;
            return log;
        }
        log.records = static_cast<int64_t>(reader.read({log.bytes.get(), size}));
    }
    log.ending = reader.end();
    if (log.ending == DriveLogEnd::Whole && log.records < int64_t{log.headerCount})
        log.ending = DriveLogEnd::Cut;
    return log;
}

DriveLog readDriveLog(const std::string& path, const DriveLogFormat& format, std::stop_token stop)
{
    if (const auto file = FileByteSource::open(path.c_str()))
        return readDriveLog(*file, format, std::move(stop));
    logFormat("fopen fail:%s", path.c_str());
    DriveLog log(format);
    log.ending = DriveLogEnd::CannotOpen;
    return log;
}
