#include "telemetry/GpsTrack.h"

#include "common/Coordinates.h"

#include <cmath>

namespace {

bool followsWithoutGap(int64_t before, int64_t after)
{
    constexpr uint64_t longestGap = 10000;
    return after >= before && static_cast<uint64_t>(after) - static_cast<uint64_t>(before) <= longestGap;
}

} // namespace

double speedInKmh(double fSpeed, char KM)
{
    return KM == '1' ? fSpeed * 0.621371192 : fSpeed;
}

std::optional<TrackPoint> trackPoint(const ZVKGpsRecord& record)
{
    const _AVI_GPS_DATA_T& header = record.header;
    if (header.fLatitude == 0 && header.fLongitude == 0)
        return {};
    TrackPoint point;
    nmeaCoordinateToDegrees(&point.latitude, &point.longitude, header.fLatitude, header.fLongitude);
    // Also false for a NaN.
    if (!(std::fabs(point.latitude) <= 90 && std::fabs(point.longitude) <= 180))
        return {};
    if (record.NS == 'S')
        point.latitude = -point.latitude;
    if (record.EW == 'W')
        point.longitude = -point.longitude;
    point.nTimestamp = header.nTimestamp;
    point.sample = record.samplesBefore;
    point.speed = speedInKmh(header.fSpeed, header.KM);
    return point;
}

std::vector<TrackSegment> trackSegments(std::span<const ZVKGpsRecord> records)
{
    std::vector<TrackSegment> segments;
    bool continues = false;
    for (const ZVKGpsRecord& record : records) {
        const auto point = trackPoint(record);
        if (point) {
            if (!continues || !followsWithoutGap(segments.back().back().nTimestamp, point->nTimestamp))
                segments.emplace_back();
            segments.back().push_back(*point);
        }
        continues = point.has_value();
    }
    return segments;
}
