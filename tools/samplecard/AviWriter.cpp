#include "tools/samplecard/AviWriter.h"

#include "tools/samplecard/LittleEndian.h"

#include <algorithm>

AviWriter::AviWriter()
{
    putText(m_bytes, "RIFF");
    putNumber(m_bytes, 0, 4);
    putText(m_bytes, "AVI ");
}

AviWriter& AviWriter::chunk(
    std::string_view id, std::span<const std::byte> body, std::optional<uint32_t> declaredSize)
{
    putText(m_bytes, id);
    putNumber(m_bytes, declaredSize.value_or(static_cast<uint32_t>(body.size())), 4);
    m_bytes.insert(m_bytes.end(), body.begin(), body.end());
    return *this;
}

AviWriter& AviWriter::filler(size_t size)
{
    return chunk("LIST", std::vector<std::byte>(size));
}

AviWriter& AviWriter::junk(const SideDataWriter& sideData, std::optional<uint32_t> declaredSize)
{
    m_sideDataOffset = m_bytes.size() + 8;
    const std::vector<std::byte> chunk = sideData.junkChunk(declaredSize);
    m_bytes.insert(m_bytes.end(), chunk.begin(), chunk.end());
    return *this;
}

std::vector<std::byte> AviWriter::bytes() const
{
    std::vector<std::byte> riffSize;
    putNumber(riffSize, m_bytes.size() - 8, 4);
    std::vector<std::byte> file = m_bytes;
    std::copy(riffSize.begin(), riffSize.end(), file.begin() + 4);
    return file;
}
