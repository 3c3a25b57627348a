#include "telemetry/TripFigures.h"

#include "telemetry/ZVKBlackBoxData.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <numbers>

namespace {

constexpr double fastestOfAll = 1000; // km/h; a receiver that tells more errs
/// Over a longer gap a straight line is no way.
constexpr int64_t longestGap = 120000; // milliseconds

/// Damaged times can span anything; they must not hide what other recordings tell.
bool isRecordingLong(const std::pair<int64_t, int64_t>& span)
{
    constexpr uint64_t longest = 3600000; // milliseconds
    return static_cast<uint64_t>(span.second) - static_cast<uint64_t>(span.first) <= longest;
}

double radians(double degrees)
{
    return degrees * std::numbers::pi / 180;
}

} // namespace

RecordingFigures figuresOf(const ZVKBlackBoxData& data)
{
    RecordingFigures figures;
    figures.track = trackSegments(data.gpsRecords);
    figures.moments = momentsOf(data);
    figures.sampleCount = data.m_GSensors.size();
    figures.strongestG = strongestDeviation(data);
    const auto widen = [&](int64_t stamp) {
        if (!figures.span)
            figures.span = {stamp, stamp};
        figures.span = {std::min(figures.span->first, stamp), std::max(figures.span->second, stamp)};
    };
    for (const ZVKAviGSensorData& record : data.m_vGSensorData())
        widen(record.data.nTimestamp);
    for (const ZVKGpsRecord& record : data.gpsRecords)
        widen(record.header.nTimestamp);
    return figures;
}

double distanceInKm(const TrackPoint& one, const TrackPoint& other)
{
    constexpr double earthRadius = 6371.0088; // km, the mean
    const double halfLatitude = std::sin(radians(other.latitude - one.latitude) / 2);
    const double halfLongitude = std::sin(radians(other.longitude - one.longitude) / 2);
    const double chord = halfLatitude * halfLatitude
        + std::cos(radians(one.latitude)) * std::cos(radians(other.latitude)) * halfLongitude * halfLongitude;
    return 2 * earthRadius * std::asin(std::min(1.0, std::sqrt(chord)));
}

namespace {

/// In kilometres; 0 where the places cannot be on one way.
double drivenBetween(const TrackPoint& before, const TrackPoint& after)
{
    constexpr double fastestCar = 500; // km/h
    if (after.nTimestamp <= before.nTimestamp
        || static_cast<uint64_t>(after.nTimestamp) - static_cast<uint64_t>(before.nTimestamp) > longestGap)
        return 0;
    const double hours = static_cast<double>(after.nTimestamp - before.nTimestamp) / 3600000;
    const double kilometres = distanceInKm(before, after);
    return kilometres <= fastestCar * hours ? kilometres : 0;
}

} // namespace

bool TripFigures::isTold(int64_t stamp) const
{
    const auto after = told.upper_bound(stamp);
    return after != told.begin() && stamp <= std::prev(after)->second;
}

/// Overlapping spans become one, so that one look tells.
void TripFigures::addSpan(std::pair<int64_t, int64_t> span)
{
    auto at = told.upper_bound(span.first);
    if (at != told.begin() && std::prev(at)->second >= span.first)
        --at;
    for (; at != told.end() && at->first <= span.second; at = told.erase(at))
        span = {std::min(span.first, at->first), std::max(span.second, at->second)};
    told.emplace(span);
}

/// In a time that was told, too, unless it is a moment that was: the camera's clock may have been set back.
bool TripFigures::isNew(const Moment& moment)
{
    constexpr int64_t same = 1000; // milliseconds
    constexpr int64_t first = std::numeric_limits<int64_t>::min();
    const auto& stamps = moments[moment.kind];
    const auto near = stamps.lower_bound(moment.stamp < first + same ? first : moment.stamp - same);
    const bool isNear = near != stamps.end()
        && (*near <= moment.stamp
            || static_cast<uint64_t>(*near) - static_cast<uint64_t>(moment.stamp) <= uint64_t(same));
    return !isNear || !isTold(moment.stamp);
}

std::vector<size_t> TripFigures::add(const RecordingFigures& recording)
{
    std::vector<size_t> fresh;
    for (size_t i = 0; i < recording.moments.size(); ++i) {
        if (isNew(recording.moments[i]))
            fresh.push_back(i);
    }
    for (const size_t i : fresh)
        moments[recording.moments[i].kind].insert(recording.moments[i].stamp);
    for (const TrackSegment& segment : recording.track) {
        for (const TrackPoint& point : segment) {
            if (!isTold(point.nTimestamp))
                addPoint(point);
        }
    }
    strongest = std::max(strongest, recording.strongestG);
    samples = samples || recording.sampleCount > 0;
    if (recording.span && isRecordingLong(*recording.span))
        addSpan(*recording.span);
    return fresh;
}

void TripFigures::addPoint(const TrackPoint& point)
{
    if (lastPoint)
        kilometres += drivenBetween(*lastPoint, point);
    lastPoint = point;
    if (point.speed >= 0 && point.speed <= fastestOfAll)
        fastest = std::max(fastest, point.speed);
}
