#pragma once

#include "cardtools/DriveRecords.h"

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

inline FlashDataRecord flashRecord()
{
    return {.seq = 65535,
        .yoil = 6,
        .value = 1,
        .year = 115,
        .month = 3,
        .day = 21,
        .hour = 7,
        .minute = 5,
        .second = 9,
        .latWhole = 3734,
        .latFraction = 1234,
        .lonWhole = 12702,
        .lonFraction = 5000,
        .cur_speed = 61,
        .driving_distance = 1234,
        .max_speed = 99,
        .x = -128,
        .y = 256,
        .z = 0,
        .battery = 125};
}

inline ObdDriveRecord obdRecord()
{
    return {.seq = 70000,
        .year = 115,
        .month = 3,
        .day = 21,
        .hour = 7,
        .minute = 5,
        .second = 9,
        .yoil = 0,
        .latWhole = 3734,
        .latFraction = 1234,
        .lonWhole = 12702,
        .lonFraction = 5000,
        .gps_speed = 61,
        .cur_speed = 60,
        .rpm = 2500,
        .driving_distance = 123456,
        .battery = 12600,
        .acp = 30,
        .fbk = 0,
        .rll = 1,
        .lll = 2,
        .swa = -30,
        .sbt = 0,
        .gel = 3,
        .gep = 4,
        .sbk = 1,
        .tpa = 17,
        .abt = 2534,
        .x = -128,
        .y = 256,
        .z = 0};
}
