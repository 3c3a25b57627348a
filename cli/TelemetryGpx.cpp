#include "cli/Escapes.h"
#include "cli/Numbers.h"
#include "cli/TelemetryFormats.h"
#include "common/Log.h"
#include "telemetry/GpsTrack.h"

#include <ostream>

namespace cli {

namespace {

constexpr std::string_view opening = //
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<gpx version=\"1.1\" creator=\"zavikctl\" xmlns=\"http://www.topografix.com/GPX/1/1\"\n"
    "     xmlns:gpxtpx=\"http://www.garmin.com/xmlschemas/TrackPointExtension/v2\">\n";

void write(std::ostream& out, const TrackPoint& point)
{
    // Eight decimals are a millimetre; the digits after them are rounding errors of the conversion to
    // degrees.
    out << formatted("      <trkpt lat=\"%.8f\" lon=\"%.8f\">", point.latitude, point.longitude);
    if (const auto time = utcText(point.nTimestamp))
        out << "<time>" << *time << "</time>";
    if (const auto speed = decimalText(point.speed / 3.6))
        out << "<extensions><gpxtpx:TrackPointExtension><gpxtpx:speed>" << *speed
            << "</gpxtpx:speed></gpxtpx:TrackPointExtension></extensions>";
    out << "</trkpt>\n";
}

} // namespace

void writeTelemetryGpx(std::ostream& out, const ZVKBlackBoxData& data, std::string_view name)
{
    out << opening << "  <trk>\n    <name>" << xmlText(name) << "</name>\n";
    for (const TrackSegment& segment : trackSegments(data.gpsRecords)) {
        out << "    <trkseg>\n";
        for (const TrackPoint& point : segment)
            write(out, point);
        out << "    </trkseg>\n";
    }
    out << "  </trk>\n</gpx>\n";
}

} // namespace cli
