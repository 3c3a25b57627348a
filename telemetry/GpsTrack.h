#pragma once

#include "telemetry/ZVKGpsRecord.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// One point of a recording's track.
struct TrackPoint {
    int64_t nTimestamp = 0; ///< milliseconds since 1970-01-01 00:00 UTC
    double latitude = 0; ///< decimal degrees, north positive
    double longitude = 0; ///< decimal degrees, east positive
    double speed = 0; ///< km/h
    size_t sample = 0; ///< how many G-sensor samples stand before it in the recording
};

/// Points that follow each other without a gap; never empty.
using TrackSegment = std::vector<TrackPoint>;

/// The header's speed in km/h, as its `KM` marker tells.
double speedInKmh(double fSpeed, char KM);

/// The record's position; nothing when it has none (0, 0) or an impossible one.
std::optional<TrackPoint> trackPoint(const ZVKGpsRecord& record);

/// The track. A segment ends at a record without a position, where the time goes backwards, and at a gap of
/// more than ten seconds.
std::vector<TrackSegment> trackSegments(std::span<const ZVKGpsRecord> records);
