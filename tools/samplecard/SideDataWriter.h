#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// One GPS record as the camera writes it.
struct GpsRecordFields {
    int64_t timestamp = 0; ///< milliseconds since 1970-01-01 00:00 UTC
    int32_t quality = 1;
    double latitude = 0; ///< ddmm.mmmm, without a hemisphere
    double longitude = 0; ///< dddmm.mmmm, without a hemisphere
    double speed = 0;
    char km = '1'; ///< '1' and '9' announce 7 more bytes after the text
    std::string text = {}; ///< sentences, each with its own terminator
    /// Whether a 0x00 byte closes the record. Without it a record with another `km` than '1' and '9'
    /// declares one byte more than its text has: the first byte of whatever follows.
    bool zeroByte = true;
    /// Written instead of the true length of the text: a header that lies.
    std::optional<int32_t> declaredLength = {};
};

/// Builds the side-data area of a recording, the body of its "JUNK" chunk, byte by byte:
/// little-endian, packed, each record after its 4-byte id.
class SideDataWriter {
public:
    /// Axes in 1/256 g.
    SideDataWriter& gsensor(int64_t timestamp, int32_t x, int32_t y, int32_t z, int32_t temperature = 0);
    SideDataWriter& gps(const GpsRecordFields& record);
    /// Bytes that are no record.
    SideDataWriter& foreign(std::string_view bytes);

    const std::vector<std::byte>& bytes() const { return written; }
    /// Where each record or foreign piece ends, counted from the start of the area, rising.
    const std::vector<size_t>& boundaries() const { return ends; }
    /// What the records written so far count for: 24 for each G-sensor record; for each GPS record its
    /// declared length and 41, and 1 more with the closing 0x00. Ids, the 7 further bytes and foreign
    /// bytes count nothing.
    uint32_t countedSize() const { return counted; }

    /// "JUNK", the size (that of the area when none is given) and the area. Not padded to an even length.
    std::vector<std::byte> junkChunk(std::optional<uint32_t> declaredSize = {}) const;

private:
    std::vector<std::byte> written;
    std::vector<size_t> ends;
    uint32_t counted = 0;
};
