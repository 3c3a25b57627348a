#include "cardtools/drivelog/DriveLogReader.h"

#include "cardtools/drivelog/DriveRecords.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {

// No file on a FAT32 card is longer.
constexpr uint64_t longestFile = std::numeric_limits<uint32_t>::max();
constexpr size_t pieceSize = size_t{1} << 20;

} // namespace

DriveLogReader::DriveLogReader(ByteSource& bytes, const DriveLogFormat& kind, std::stop_token stopping)
    : source(bytes),
      format(kind),
      stop(std::move(stopping))
{
    readHeader();
}

void DriveLogReader::readHeader()
{
    DriveRecordHeader header;
    if (readBytes(std::as_writable_bytes(std::span(&header, 1))) < sizeof header) {
        if (ending == DriveLogEnd::deviceFailed)
            ending = DriveLogEnd::headerFailed;
        else if (ending != DriveLogEnd::stopped)
            ending = DriveLogEnd::noHeader;
        return;
    }
    if (header.count > (longestFile - sizeof header) / format.recordSize) {
        ending = DriveLogEnd::impossibleCount;
        return;
    }
    count = header.count;
    remaining = header.count;
}

uint64_t DriveLogReader::recordsAtMost() const
{
    const uint64_t size = source.size();
    if (size <= sizeof(DriveRecordHeader))
        return 0;
    return std::min(uint64_t{count.value_or(0)}, (size - sizeof(DriveRecordHeader)) / format.recordSize);
}

size_t DriveLogReader::read(std::span<std::byte> into)
{
    if (ending != DriveLogEnd::whole)
        return 0;
    const uint64_t wanted = std::min<uint64_t>(into.size() / format.recordSize, remaining);
    const size_t filled = readBytes(into.first(wanted * format.recordSize)) / format.recordSize;
    remaining -= filled;
    return filled;
}

size_t DriveLogReader::readBytes(std::span<std::byte> into)
{
    size_t filled = 0;
    while (filled < into.size()) {
        if (stop.stop_requested()) {
            ending = DriveLogEnd::stopped;
            break;
        }
        const auto rest = into.subspan(filled);
        const auto length = source.read(rest.first(std::min(rest.size(), pieceSize)));
        if (!length || *length == 0) {
            ending = length ? DriveLogEnd::cut : DriveLogEnd::deviceFailed;
            break;
        }
        filled += *length;
    }
    return filled;
}
