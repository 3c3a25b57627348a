#pragma once

#include "cardtools/drivelog/DriveRecords.h"

#include <array>
#include <bit>
#include <cstring>
#include <vector>

/// A drive log file of these records.
template <typename Record> std::vector<std::byte> driveLogFile(const std::vector<Record>& records)
{
    const DriveRecordHeader header{.count = static_cast<uint32_t>(records.size()), .reserved = {1, 2}};
    std::vector<std::byte> bytes(sizeof header + records.size() * sizeof(Record));
    std::memcpy(bytes.data(), &header, sizeof header);
    if (!records.empty())
        std::memcpy(bytes.data() + sizeof header, records.data(), records.size() * sizeof(Record));
    return bytes;
}

/// Saturday, 2015-03-21 07:05:09, 3734.1234 N 12702.5000 E with a fix, 61 (at most 99), 12.5 V; the bytes as
/// a camera writes them, so that the structs have to lie right.
inline FlashDataRecord flashRecord()
{
    return std::bit_cast<FlashDataRecord>(std::to_array<unsigned char>(
        {0xFF, 0xFF, 6, 1, 0x73, 3, 0x15, 7, 5, 9, 0x96, 0x0E, 0xD2, 4, 0x9E, 0x31, 0x88, 0x13, 0x3D, 0, 0xD2,
            4, 0, 0, 0, 0, 0, 0, 0x63, 0, 0, 0, 0x80, 0xFF, 0, 1, 0, 0, 0x7D, 0}));
}

/// The same place and time, with the car's own values: 60, 2500 turns, gear D.
inline ObdDriveRecord obdRecord()
{
    return std::bit_cast<ObdDriveRecord>(std::to_array<unsigned char>(
        {0x70, 0x11, 1, 0, 0, 0x73, 3, 0x15, 7, 5, 9, 0, 0x96, 0x0E, 0xD2, 4, 0x9E, 0x31, 0x88, 0x13, 0x3D, 0,
            0, 0, 0x3C, 0, 0xC4, 9, 0x40, 0xE2, 1, 0, 0x38, 0x31, 0x1E, 0, 0, 0, 1, 0, 2, 0, 0xE2, 0xFF, 0, 0,
            3, 0, 4, 0, 1, 0, 0x11, 0, 0xE6, 9, 0, 0, 0, 0, 0x80, 0xFF, 0, 1, 0, 0, 0, 0}));
}
