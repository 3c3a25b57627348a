#pragma once

#include "telemetry/GpsTrack.h"
#include "telemetry/Moments.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

class ZVKBlackBoxData;

/// What the telemetry of one recording adds up to.
struct RecordingFigures {
    std::vector<TrackSegment> track;
    std::vector<Moment> moments; ///< oldest first
    size_t sampleCount = 0; ///< of the G-sensor
    double strongestG = 0; ///< from rest
    /// The first and last moment that a G-sensor sample or a GPS record tells; milliseconds since 1970-01-01
    /// 00:00 UTC. Nothing without any.
    std::optional<std::pair<int64_t, int64_t>> span;
};

RecordingFigures figuresOf(const ZVKBlackBoxData& data);

/// The distance on the earth between two places in kilometres, along a great circle.
double distanceInKm(const TrackPoint& one, const TrackPoint& other);

/// Adds up recordings to a drive. What a recording tells of a time that one before it has told already (an
/// event that was recorded beside the continuous recording) counts once. The way through a tunnel, or between
/// two recordings, is a straight line.
class TripFigures {
public:
    /// In the order of their starts. Tells which of the recording's moments are new, by index.
    std::vector<size_t> add(const RecordingFigures& recording);

    double distanceKm() const { return kilometres; }
    double topSpeedKmh() const { return fastest; }
    double strongestG() const { return strongest; }
    /// Whether any place was told; without one, distance and speed tell nothing.
    bool hasTrack() const { return lastPoint.has_value(); }
    bool hasSamples() const { return samples; }

private:
    bool isTold(int64_t stamp) const;
    void addSpan(std::pair<int64_t, int64_t> span);
    bool isNew(const Moment& moment);
    void addPoint(const TrackPoint& point);

    std::map<int64_t, int64_t> told; // spans of the recordings before, none touches another
    std::map<Moment::Kind, std::set<int64_t>> moments; // their stamps
    std::optional<TrackPoint> lastPoint;
    double kilometres = 0;
    double fastest = 0;
    double strongest = 0;
    bool samples = false;
};
