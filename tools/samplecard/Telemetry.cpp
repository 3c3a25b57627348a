#include "tools/samplecard/Telemetry.h"

#include "common/Log.h"
#include "tools/samplecard/DeviceSentence.h"

#include <ctime>

namespace samplecard {

namespace {

constexpr int samplesPerSecond = 10;
constexpr double stepsPerG = 256;

double nmeaCoordinate(double degrees)
{
    const double magnitude = std::abs(degrees);
    const double whole = std::floor(magnitude);
    return whole * 100 + (magnitude - whole) * 60;
}

DeviceFix deviceFix(const Fix& fix)
{
    const auto utc = std::time_t(fix.utcMilliseconds / 1000);
    std::tm when{};
    gmtime_r(&utc, &when);
    DeviceFix sentence;
    sentence.year = when.tm_year + 1900;
    sentence.month = when.tm_mon + 1;
    sentence.day = when.tm_mday;
    sentence.hour = when.tm_hour;
    sentence.minute = when.tm_min;
    sentence.second = when.tm_sec;
    sentence.isValid = fix.valid;
    sentence.latitude = nmeaCoordinate(fix.latitude);
    sentence.longitude = nmeaCoordinate(fix.longitude);
    sentence.ns = fix.latitude < 0 ? 'S' : 'N';
    sentence.ew = fix.longitude < 0 ? 'W' : 'E';
    sentence.speed = fix.kilometresPerHour;
    sentence.course = fix.courseDegrees;
    sentence.satellitesUsed = fix.satellites;
    sentence.hdop = fix.hdop;
    return sentence;
}

// Without a fix the position fields stay empty.
std::string textOf(const DeviceFix& fix)
{
    if (fix.isValid)
        return deviceText(fix);
    const std::string ga =
        sentenceWithChecksum(formatted("GA,%02d%02d%02d,V,,,,,", fix.hour, fix.minute, fix.second));
    return ga + "\r\n" + gcSentence(fix) + "\r\n";
}

GpsRecordFields gpsRecord(const Fix& fix)
{
    const DeviceFix sentence = deviceFix(fix);
    GpsRecordFields record;
    // The record is written with the last sample of its second.
    record.timestamp = fix.utcMilliseconds + 900;
    record.quality = fix.valid ? 1 : 0;
    record.latitude = fix.valid ? sentence.latitude : 0;
    record.longitude = fix.valid ? sentence.longitude : 0;
    record.speed = fix.kilometresPerHour;
    record.km = '9';
    record.text = textOf(sentence);
    return record;
}

} // namespace

SideDataWriter telemetryOf(const Drive& drive, int start, int seconds)
{
    SideDataWriter writer;
    for (int second = start; second < start + seconds; ++second) {
        for (int tenth = 0; tenth < samplesPerSecond; ++tenth) {
            const Acceleration g = drive.accelerationAt(second + tenth / 10.0);
            const auto steps = [](double value) { return int32_t(std::lround(value * stepsPerG)); };
            const int64_t at = Drive::startUtcMilliseconds + int64_t(second) * 1000 + tenth * 100;
            writer.gsensor(at, steps(g.x), steps(g.y), steps(g.z), 31);
        }
        writer.gps(gpsRecord(drive.fixAt(second)));
    }
    return writer;
}

} // namespace samplecard
