#include "tools/samplecard/SideDataWriter.h"

#include "tools/samplecard/LittleEndian.h"

SideDataWriter& SideDataWriter::gsensor(
    int64_t timestamp, int32_t x, int32_t y, int32_t z, int32_t temperature)
{
    putText(written, "0GDA");
    putNumber(written, static_cast<uint64_t>(timestamp), 8);
    for (const int32_t value : {x, y, z, temperature})
        putNumber(written, static_cast<uint32_t>(value), 4);
    ends.push_back(written.size());
    counted += 24;
    return *this;
}

SideDataWriter& SideDataWriter::gps(const GpsRecordFields& record)
{
    const bool hasFurtherBytes = record.km == '1' || record.km == '9';
    std::string text = record.text;
    if (record.zeroByte && !hasFurtherBytes && !text.ends_with('\0'))
        text.push_back('\0');
    const size_t borrowed = !record.zeroByte && !hasFurtherBytes ? 1 : 0;
    const int32_t length = record.declaredLength.value_or(static_cast<int32_t>(text.size() + borrowed));

    putText(written, "0GPS");
    putNumber(written, static_cast<uint64_t>(record.timestamp), 8);
    putNumber(written, static_cast<uint32_t>(length), 4);
    putNumber(written, static_cast<uint32_t>(record.quality), 4);
    putDouble(written, record.latitude);
    putDouble(written, record.longitude);
    putDouble(written, record.speed);
    putNumber(written, static_cast<uint8_t>(record.km), 1);
    putText(written, text);
    if (hasFurtherBytes)
        putText(written, std::string(7, '\x55') + (record.zeroByte ? std::string(1, '\0') : ""));
    ends.push_back(written.size());
    counted += static_cast<uint32_t>(length) + (record.zeroByte ? 42 : 41);
    return *this;
}

SideDataWriter& SideDataWriter::foreign(std::string_view bytes)
{
    putText(written, bytes);
    ends.push_back(written.size());
    return *this;
}

std::vector<std::byte> SideDataWriter::junkChunk(std::optional<uint32_t> declaredSize) const
{
    std::vector<std::byte> chunk;
    chunk.reserve(8 + written.size());
    putText(chunk, "JUNK");
    putNumber(chunk, declaredSize.value_or(static_cast<uint32_t>(written.size())), 4);
    chunk.insert(chunk.end(), written.begin(), written.end());
    return chunk;
}
