#include "tools/samplecard/DriveLogWriter.h"

#include "cardtools/drivelog/DriveRecords.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <ctime>

namespace samplecard {

namespace {

constexpr int partsOfAMinute = 10000;
constexpr int everySeconds = 5;

struct NmeaParts {
    uint16_t whole;
    uint16_t fraction;
};

NmeaParts nmeaParts(double degrees)
{
    const long minuteParts = std::lround(degrees * 60 * partsOfAMinute);
    const long minutes = minuteParts / partsOfAMinute;
    return {static_cast<uint16_t>(minutes / 60 * 100 + minutes % 60),
        static_cast<uint16_t>(minuteParts % partsOfAMinute)};
}

int16_t steps(double g)
{
    return static_cast<int16_t>(std::lround(g * 256));
}

void setTime(FlashDataRecord& record, int64_t utcMilliseconds)
{
    const auto local = std::time_t(utcMilliseconds / 1000 + Drive::localHoursAhead * 3600);
    std::tm when{};
    gmtime_r(&local, &when);
    record.yoil = static_cast<uint8_t>(when.tm_wday);
    record.year = static_cast<uint8_t>(when.tm_year);
    record.month = static_cast<uint8_t>(when.tm_mon + 1);
    record.day = static_cast<uint8_t>(when.tm_mday);
    record.hour = static_cast<uint8_t>(when.tm_hour);
    record.minute = static_cast<uint8_t>(when.tm_min);
    record.second = static_cast<uint8_t>(when.tm_sec);
}

FlashDataRecord recordAt(const Drive& drive, int second)
{
    const Fix fix = drive.fixAt(second);
    const Acceleration g = drive.accelerationAt(second);
    FlashDataRecord record{.seq = static_cast<uint16_t>(second),
        .value = fix.valid,
        .x = steps(g.x),
        .y = steps(g.y),
        .z = steps(g.z)};
    setTime(record, fix.utcMilliseconds);
    if (fix.valid) {
        const NmeaParts latitude = nmeaParts(fix.latitude);
        const NmeaParts longitude = nmeaParts(fix.longitude);
        record.latWhole = latitude.whole;
        record.latFraction = latitude.fraction;
        record.lonWhole = longitude.whole;
        record.lonFraction = longitude.fraction;
    }
    record.cur_speed = static_cast<uint16_t>(std::lround(fix.kilometresPerHour));
    record.driving_distance = static_cast<uint32_t>(drive.motionAt(second).along / 100);
    // The dynamo charges while the engine runs.
    record.battery = second < int(Drive::parked) ? static_cast<int16_t>(138 + second / 7 % 3) : 126;
    return record;
}

} // namespace

std::vector<std::byte> driveLogOf(const Drive& drive, int seconds)
{
    const size_t count = static_cast<size_t>((seconds + everySeconds - 1) / everySeconds);
    const DriveRecordHeader header{.count = static_cast<uint32_t>(count)};
    std::vector<std::byte> file(sizeof header + count * sizeof(FlashDataRecord));
    std::memcpy(file.data(), &header, sizeof header);
    uint16_t fastest = 0;
    for (size_t i = 0; i < count; ++i) {
        FlashDataRecord record = recordAt(drive, static_cast<int>(i) * everySeconds);
        fastest = std::max(fastest, record.cur_speed);
        record.max_speed = fastest;
        std::memcpy(file.data() + sizeof header + i * sizeof record, &record, sizeof record);
    }
    return file;
}

} // namespace samplecard
