#include "cardtools/drivelog/DriveLogCsv.h"
#include "common/MemoryByteSource.h"
#include "fuzz/Require.h"

namespace {

std::string csvOf(const DriveLog& log)
{
    std::string csv;
    const std::vector<std::string> titles(log.format().columns.size(), "t");
    require(writeDriveLogCsv(log, titles, [&](std::string_view lines, int64_t) {
        csv += lines;
        return true;
    }));
    return csv;
}

void readBoth(std::span<const std::byte> bytes, const DriveLogFormat& format)
{
    MemoryByteSource source(bytes);
    const DriveLog log = readDriveLog(source, format);
    const auto columns = static_cast<int64_t>(format.columns.size());
    const int64_t there = bytes.size() < 12
        ? 0
        : static_cast<int64_t>(std::min<uint64_t>(log.announced(), (bytes.size() - 12) / format.recordSize));
    require(log.count() == there);
    require(isUsable(log.end()) || log.count() == 0);
    require((log.end() == DriveLogEnd::whole) == (isUsable(log.end()) && log.count() == log.announced()));

    const std::string csv = csvOf(log);
    require(std::ranges::count(csv, '\n') == log.count() + 1);
    require(std::ranges::count(csv, ',') == (columns - 1) * (log.count() + 1));
    for (int64_t row = 0; row < std::min<int64_t>(log.count(), 3); ++row) {
        const DrivePlace place = log.placeAt(row);
        require(place.latitude >= 0 && place.longitude >= 0);
        for (int64_t column = 0; column < columns; ++column)
            require(!log.stringForColumnIndex(column, row).empty());
    }

    // Read in pieces, the records are the same.
    MemoryByteSource again(bytes);
    DriveLogReader reader(again, format);
    if (!reader.announced())
        return;
    std::vector<std::byte> piece(format.recordSize * 2);
    int64_t row = 0;
    while (const size_t count = reader.read(piece)) {
        require(row + static_cast<int64_t>(count) <= log.count());
        require(std::equal(piece.begin(), piece.begin() + static_cast<ptrdiff_t>(count * format.recordSize),
            log.recordAt(row)));
        row += static_cast<int64_t>(count);
    }
    require(row == log.count() && reader.end() == log.end());
}

} // namespace

void fuzz(std::string_view input)
{
    const auto bytes = std::as_bytes(std::span(input));
    readBoth(bytes, flashDataFormat);
    readBoth(bytes, obdDriveFormat);
}
