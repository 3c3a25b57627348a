#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>

// The camera's drive log: a header and then, without a gap, `count` records of one of the two kinds. All
// fields are little-endian and lie at their natural alignment, so that the structs have no hidden gaps.

struct DriveRecordHeader {
    uint32_t count = 0; // records that follow
    uint32_t reserved[2] = {};
};

/// A record of a ".drv" log.
struct FlashDataRecord {
    uint16_t seq = 0;
    uint8_t yoil = 0; // day of the week, 0 Sunday … 6 Saturday
    uint8_t value = 0; // GPS fix: 1 valid, anything else not valid
    uint8_t year = 0; // since 1900
    uint8_t month = 0; // 1–12
    uint8_t day = 0; // 1–31
    uint8_t hour = 0;
    uint8_t minute = 0;
    uint8_t second = 0;
    uint16_t latWhole = 0; // NMEA ddmm
    uint16_t latFraction = 0; // four decimal digits of the minutes: 12 is .0012
    uint16_t lonWhole = 0; // NMEA dddmm
    uint16_t lonFraction = 0; // four decimal digits of the minutes
    uint16_t cur_speed = 0;
    uint32_t driving_distance = 0; // tenths
    uint32_t reserved24 = 0;
    uint16_t max_speed = 0;
    uint16_t reserved30 = 0;
    int16_t x = 0; // G-sensor, 1/256 g
    int16_t y = 0;
    int16_t z = 0;
    int16_t battery = 0; // tenths of a volt
};

/// A record of an ".obd" log. Absent: the camera had no value.
struct ObdDriveRecord {
    uint32_t seq = 0;
    uint8_t reserved4 = 0;
    uint8_t year = 0; // since 1900
    uint8_t month = 0; // 1–12
    uint8_t day = 0; // 1–31
    uint8_t hour = 0;
    uint8_t minute = 0;
    uint8_t second = 0;
    uint8_t yoil = 0; // day of the week, 0 Sunday … 6 Saturday
    uint16_t latWhole = 0; // NMEA ddmm
    uint16_t latFraction = 0; // four decimal digits of the minutes
    uint16_t lonWhole = 0; // NMEA dddmm
    uint16_t lonFraction = 0; // four decimal digits of the minutes
    int16_t gps_speed = 0; // negative: absent
    uint16_t reserved22 = 0;
    int16_t cur_speed = 0; // negative: absent
    int16_t rpm = 0; // negative: absent
    int32_t driving_distance = 0; // thousandths; negative: absent
    int16_t battery = 0; // millivolts; negative: absent
    int16_t acp = 0; // negative: absent
    int16_t fbk = 0; // a switch: negative absent, 0 off, anything else on
    int16_t rll = 0; // a switch
    int16_t lll = 0; // a switch
    int16_t swa = 0; // signed; 9999: absent
    int16_t sbt = 0; // a switch
    int16_t gel = 0; // 0 or negative: absent
    uint16_t gep = 0; // gear lever: 1 P, 2 R, 3 N, 4 D, anything else absent
    uint16_t sbk = 0; // 0 off, 1 on, anything else absent
    int16_t tpa = 0; // negative: absent
    int16_t abt = 0; // hundredths; 9999: absent
    uint32_t reserved56 = 0;
    int16_t x = 0; // G-sensor, 1/256 g
    int16_t y = 0;
    int16_t z = 0;
    uint16_t reserved66 = 0;
};

static_assert(std::endian::native == std::endian::little);
static_assert(std::is_trivially_copyable_v<DriveRecordHeader> && sizeof(DriveRecordHeader) == 12);
static_assert(std::is_trivially_copyable_v<FlashDataRecord> && sizeof(FlashDataRecord) == 40);
static_assert(std::is_trivially_copyable_v<ObdDriveRecord> && sizeof(ObdDriveRecord) == 68);
static_assert(offsetof(DriveRecordHeader, count) == 0);
static_assert(offsetof(DriveRecordHeader, reserved) == 4);
static_assert(offsetof(FlashDataRecord, seq) == 0);
static_assert(offsetof(FlashDataRecord, yoil) == 2);
static_assert(offsetof(FlashDataRecord, value) == 3);
static_assert(offsetof(FlashDataRecord, year) == 4);
static_assert(offsetof(FlashDataRecord, month) == 5);
static_assert(offsetof(FlashDataRecord, day) == 6);
static_assert(offsetof(FlashDataRecord, hour) == 7);
static_assert(offsetof(FlashDataRecord, minute) == 8);
static_assert(offsetof(FlashDataRecord, second) == 9);
static_assert(offsetof(FlashDataRecord, latWhole) == 10);
static_assert(offsetof(FlashDataRecord, latFraction) == 12);
static_assert(offsetof(FlashDataRecord, lonWhole) == 14);
static_assert(offsetof(FlashDataRecord, lonFraction) == 16);
static_assert(offsetof(FlashDataRecord, cur_speed) == 18);
static_assert(offsetof(FlashDataRecord, driving_distance) == 20);
static_assert(offsetof(FlashDataRecord, reserved24) == 24);
static_assert(offsetof(FlashDataRecord, max_speed) == 28);
static_assert(offsetof(FlashDataRecord, reserved30) == 30);
static_assert(offsetof(FlashDataRecord, x) == 32);
static_assert(offsetof(FlashDataRecord, y) == 34);
static_assert(offsetof(FlashDataRecord, z) == 36);
static_assert(offsetof(FlashDataRecord, battery) == 38);
static_assert(offsetof(ObdDriveRecord, seq) == 0);
static_assert(offsetof(ObdDriveRecord, reserved4) == 4);
static_assert(offsetof(ObdDriveRecord, year) == 5);
static_assert(offsetof(ObdDriveRecord, month) == 6);
static_assert(offsetof(ObdDriveRecord, day) == 7);
static_assert(offsetof(ObdDriveRecord, hour) == 8);
static_assert(offsetof(ObdDriveRecord, minute) == 9);
static_assert(offsetof(ObdDriveRecord, second) == 10);
static_assert(offsetof(ObdDriveRecord, yoil) == 11);
static_assert(offsetof(ObdDriveRecord, latWhole) == 12);
static_assert(offsetof(ObdDriveRecord, latFraction) == 14);
static_assert(offsetof(ObdDriveRecord, lonWhole) == 16);
static_assert(offsetof(ObdDriveRecord, lonFraction) == 18);
static_assert(offsetof(ObdDriveRecord, gps_speed) == 20);
static_assert(offsetof(ObdDriveRecord, reserved22) == 22);
static_assert(offsetof(ObdDriveRecord, cur_speed) == 24);
static_assert(offsetof(ObdDriveRecord, rpm) == 26);
static_assert(offsetof(ObdDriveRecord, driving_distance) == 28);
static_assert(offsetof(ObdDriveRecord, battery) == 32);
static_assert(offsetof(ObdDriveRecord, acp) == 34);
static_assert(offsetof(ObdDriveRecord, fbk) == 36);
static_assert(offsetof(ObdDriveRecord, rll) == 38);
static_assert(offsetof(ObdDriveRecord, lll) == 40);
static_assert(offsetof(ObdDriveRecord, swa) == 42);
static_assert(offsetof(ObdDriveRecord, sbt) == 44);
static_assert(offsetof(ObdDriveRecord, gel) == 46);
static_assert(offsetof(ObdDriveRecord, gep) == 48);
static_assert(offsetof(ObdDriveRecord, sbk) == 50);
static_assert(offsetof(ObdDriveRecord, tpa) == 52);
static_assert(offsetof(ObdDriveRecord, abt) == 54);
static_assert(offsetof(ObdDriveRecord, reserved56) == 56);
static_assert(offsetof(ObdDriveRecord, x) == 60);
static_assert(offsetof(ObdDriveRecord, y) == 62);
static_assert(offsetof(ObdDriveRecord, z) == 64);
static_assert(offsetof(ObdDriveRecord, reserved66) == 66);
