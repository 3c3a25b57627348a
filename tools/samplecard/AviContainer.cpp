#include "tools/samplecard/AviContainer.h"

#include "tools/samplecard/LittleEndian.h"

#include <cstring>
#include <span>
#include <string_view>

namespace samplecard {

namespace {

constexpr size_t chunkHead = 8;
constexpr size_t listHead = 12;

uint32_t numberAt(std::span<const std::byte> bytes, size_t offset)
{
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i)
        value |= uint32_t(bytes[offset + i]) << (8 * i);
    return value;
}

std::string_view idAt(std::span<const std::byte> bytes, size_t offset)
{
    return {reinterpret_cast<const char*>(bytes.data()) + offset, 4};
}

void setNumber(std::vector<std::byte>& bytes, size_t offset, uint32_t value)
{
    for (size_t i = 0; i < 4; ++i)
        bytes[offset + i] = std::byte(value >> (8 * i));
}

// Players take an offset in "idx1" as one from the word "movi" when the first entry fits that reading.
std::optional<std::string> checkIndex(std::span<const std::byte> avi, size_t index, size_t movi)
{
    if (index == 0 || movi == 0)
        return "it has no pictures or no index";
    if (numberAt(avi, index + 4) < 16)
        return std::nullopt;
    const std::string_view id = idAt(avi, index + chunkHead);
    const size_t place = movi + chunkHead + numberAt(avi, index + chunkHead + 8);
    if (place + 4 > avi.size() || idAt(avi, place) != id)
        return "its index counts from the beginning of the file";
    return std::nullopt;
}

} // namespace

std::optional<std::string> embedSideData(std::vector<std::byte>& avi, const SideDataWriter& sideData)
{
    if (avi.size() < listHead || idAt(avi, 0) != "RIFF" || idAt(avi, 8) != "AVI ")
        return "it is no AVI file";
    const size_t end = chunkHead + numberAt(avi, 4);
    if (end > avi.size() || avi.size() - end > 1)
        return "its size is not what its head says";
    std::vector<std::byte> kept(avi.begin(), avi.begin() + listHead);
    size_t index = 0;
    size_t movi = 0;
    for (size_t at = listHead; at + chunkHead <= end;) {
        const size_t size = chunkHead + ((size_t(numberAt(avi, at + 4)) + 1) & ~size_t(1));
        if (size > end - at)
            return "a chunk reaches beyond the file";
        if (idAt(avi, at) == "idx1")
            index = at;
        else if (idAt(avi, at) == "LIST" && size >= listHead && idAt(avi, at + chunkHead) == "movi")
            movi = at;
        if (idAt(avi, at) != "JUNK")
            kept.insert(kept.end(), avi.begin() + ptrdiff_t(at), avi.begin() + ptrdiff_t(at + size));
        at += size;
    }
    if (auto refusal = checkIndex(avi, index, movi))
        return refusal;
    const std::vector<std::byte> chunk = sideData.junkChunk();
    kept.insert(kept.end(), chunk.begin(), chunk.end());
    if (kept.size() % 2)
        kept.push_back(std::byte(0));
    setNumber(kept, 4, uint32_t(kept.size() - chunkHead));
    avi = std::move(kept);
    return std::nullopt;
}

} // namespace samplecard
