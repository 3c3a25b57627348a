#include "cli/Numbers.h"
#include "cli/TelemetryFormats.h"
#include "common/Log.h"
#include "common/Text.h"
#include "telemetry/GpsTrack.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <string>

namespace cli {

namespace {

std::string_view sideDataText(WalkEnd end)
{
    switch (end) {
    case WalkEnd::complete:
        return "complete";
    case WalkEnd::endOfFile:
        return "complete, to the end of the file";
    case WalkEnd::impossibleText:
        return "up to a GPS record that cannot be right";
    case WalkEnd::noSideData:
        return "none";
    case WalkEnd::cutGSensorRecord:
        return "cut inside a G-sensor record";
    default:
        return "not read";
    }
}

std::string timeText(int64_t milliseconds)
{
    return utcText(milliseconds).value_or("an unknown time");
}

std::string spanText(int64_t first, int64_t last)
{
    return timeText(first) + " to " + timeText(last);
}

float magnitude(const ZVKGSensor& sample)
{
    return std::hypot(sample.x, sample.y, sample.z);
}

void writeSamples(std::ostream& out, const ZVKBlackBoxData& data)
{
    const auto& samples = data.m_GSensors;
    const auto& records = data.m_vGSensorData();
    out << "G-sensor:     " << samples.size() << " samples\n";
    if (samples.empty())
        return;
    size_t at = 0;
    for (size_t i = 1; i < samples.size(); ++i) {
        if (magnitude(samples[i]) > magnitude(samples[at]))
            at = i;
    }
    const ZVKGSensor strongest = samples[at];
    out << "  time:       " << spanText(records.front().data.nTimestamp, records.back().data.nTimestamp)
        << '\n'
        << formatted("  strongest:  %.2f g (x %+.2f, y %+.2f, z %+.2f) at ", magnitude(strongest),
               strongest.x, strongest.y, strongest.z)
        << timeText(records[at].data.nTimestamp) << '\n';
}

std::string positionText(const TrackPoint& point)
{
    return formatted("%.6f %c, %.6f %c, %.0f km/h at ", std::fabs(point.latitude),
               std::signbit(point.latitude) ? 'S' : 'N', std::fabs(point.longitude),
               std::signbit(point.longitude) ? 'W' : 'E', point.speed)
        + timeText(point.nTimestamp);
}

void writeTrack(std::ostream& out, const ZVKBlackBoxData& data)
{
    const auto segments = trackSegments(data.gpsRecords);
    size_t points = 0;
    double fastest = 0;
    for (const TrackSegment& segment : segments) {
        points += segment.size();
        for (const TrackPoint& point : segment)
            fastest = std::max(fastest, point.speed);
    }
    out << "GPS:          " << data.gpsRecords.size() << " records, " << points << " with a position, "
        << data.m_NMEAs.size() << " sentences\n";
    if (segments.empty())
        return;
    out << "  first:      " << positionText(segments.front().front()) << '\n'
        << "  last:       " << positionText(segments.back().back()) << '\n'
        << formatted("  fastest:    %.0f km/h\n", fastest);
}

} // namespace

void writeTelemetrySummary(std::ostream& out, const ZVKBlackBoxData& data, std::string_view name)
{
    out << "recording:    " << visibleText(name) << "\nside data:    " << sideDataText(data.walkEnd())
        << '\n';
    writeSamples(out, data);
    writeTrack(out, data);
}

} // namespace cli
