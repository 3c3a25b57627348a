#pragma once

#include "telemetry/ZVKGpsRecord.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// One place on a recording's way.
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

/// The record as a place; nothing when it holds no position (0, 0) or an impossible one.
std::optional<TrackPoint> trackPoint(const ZVKGpsRecord& record);

/// The records' way. A segment ends at a record without a position, where the time goes backwards and where
/// more than ten seconds pass.
std::vector<TrackSegment> trackSegments(std::span<const ZVKGpsRecord> records);
