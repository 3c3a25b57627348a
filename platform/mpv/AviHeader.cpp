#include "platform/mpv/AviHeader.h"

#include <cstring>

namespace platform {

namespace {

constexpr std::string_view::size_type chunkHeader = 8;
/// Beyond this a file has several parts, and each header may tell of its own alone.
constexpr uint32_t largestSinglePart = 1'000'000'000;

uint32_t numberAt(std::string_view bytes, size_t offset)
{
    uint32_t number = 0;
    std::memcpy(&number, bytes.data() + offset, sizeof number);
    return number;
}

} // namespace

double pictureSecondsOf(std::string_view head, uint64_t fileSize)
{
    constexpr size_t scaleAt = chunkHeader + 20, rateAt = chunkHeader + 24, lengthAt = chunkHeader + 32;
    const size_t type = head.find("vids");
    if (!head.starts_with("RIFF") || type == head.npos || type < chunkHeader
        || head.substr(type - chunkHeader, 4) != "strh" || type + lengthAt > head.size())
        return 0;
    const size_t strh = type - chunkHeader;
    const uint32_t riffSize = numberAt(head, 4), scale = numberAt(head, strh + scaleAt),
                   rate = numberAt(head, strh + rateAt), length = numberAt(head, strh + lengthAt);
    if (riffSize == 0 || riffSize > largestSinglePart || scale == 0 || rate == 0)
        return 0;
    const double seconds = double(length) * scale / rate;
    const double whole = double(riffSize) + chunkHeader;
    return double(fileSize) < whole ? seconds * double(fileSize) / whole : seconds;
}

} // namespace platform
