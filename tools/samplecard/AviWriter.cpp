#include "tools/samplecard/AviWriter.h"

#include "tools/samplecard/LittleEndian.h"

#include <algorithm>

AviWriter::AviWriter()
{
    putText(chunks, "RIFF");
    putNumber(chunks, 0, 4);
    putText(chunks, "AVI ");
}

AviWriter& AviWriter::chunk(
    std::string_view id, std::span<const std::byte> body, std::optional<uint32_t> declaredSize)
{
    putText(chunks, id);
    putNumber(chunks, declaredSize.value_or(static_cast<uint32_t>(body.size())), 4);
    chunks.insert(chunks.end(), body.begin(), body.end());
    return *this;
}

AviWriter& AviWriter::filler(size_t size)
{
    return chunk("LIST", std::vector<std::byte>(size));
}

AviWriter& AviWriter::junk(const SideDataWriter& sideData, std::optional<uint32_t> declaredSize)
{
    sideDataAt = chunks.size() + 8;
    const std::vector<std::byte> chunk = sideData.junkChunk(declaredSize);
    chunks.insert(chunks.end(), chunk.begin(), chunk.end());
    return *this;
}

std::vector<std::byte> AviWriter::bytes() const
{
    std::vector<std::byte> riffSize;
    putNumber(riffSize, chunks.size() - 8, 4);
    std::vector<std::byte> file = chunks;
    std::copy(riffSize.begin(), riffSize.end(), file.begin() + 4);
    return file;
}
