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
}

std::optional<uint32_t> DriveLogReader::readHeader()
{
    DriveRecordHeader header;
    if (readBytes(std::as_writable_bytes(std::span(&header, 1))) < sizeof header) {
        if (ending == DriveLogEnd::DeviceFailed)
            ending = DriveLogEnd::HeaderFailed;
        else if (ending != DriveLogEnd::Stopped)
            ending = DriveLogEnd::NoHeader;
        return {};
    }
    if (header.count > (longestFile - sizeof header) / format.recordSize) {
        ending = DriveLogEnd::ImpossibleCount;
        return {};
    }
    announced = header.count;
    remaining = announced;
    return header.count;
}

uint64_t DriveLogReader::recordsAtMost() const
{
    const uint64_t size = source.size();
    if (size <= sizeof(DriveRecordHeader))
        return 0;
    return std::min(announced, (size - sizeof(DriveRecordHeader)) / format.recordSize);
}

size_t DriveLogReader::read(std::span<std::byte> into)
{
    if (ending != DriveLogEnd::Whole)
        return 0;
    const uint64_t wanted = std::min<uint64_t>(into.size() / format.recordSize, remaining);
    const size_t count = readBytes(into.first(wanted * format.recordSize)) / format.recordSize;
    remaining -= count;
    return count;
}

size_t DriveLogReader::readBytes(std::span<std::byte> into)
{
    size_t filled = 0;
    while (filled < into.size()) {
        if (stop.stop_requested()) {
            ending = DriveLogEnd::Stopped;
            break;
        }
        const auto rest = into.subspan(filled);
        const auto count = source.read(rest.first(std::min(rest.size(), pieceSize)));
        if (!count || *count == 0) {
            ending = count ? DriveLogEnd::Cut : DriveLogEnd::DeviceFailed;
            break;
        }
        filled += *count;
    }
    return filled;
}
