#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

class ZVKBlackBoxData;

/// Something that happened to the car while it was recorded.
struct Moment {
    enum class Kind { impact, braking };
    /// Where it came from: a car that is hit from behind is pushed forwards, "rear". The sensor's axes are x
    /// to the right, y forwards, z up.
    enum class Direction { front, rear, left, right, above, below };

    Kind kind = Kind::impact;
    Direction direction = Direction::front;
    double g = 0; ///< how far from rest at its strongest
    size_t sample =
        0; ///< the G-sensor sample at its strongest; below the number of samples, or 0 without any
    int64_t stamp = 0; ///< when: milliseconds since 1970-01-01 00:00 UTC, as recorded

    /// Seconds into a recording of that length: samples are spread evenly over it, as the graph shows them.
    double seconds(double recordingLength, size_t sampleCount) const;
};

std::string_view momentKindText(Moment::Kind kind); ///< "impact", "braking"
std::string_view momentDirectionText(Moment::Direction direction); ///< "front", ...

/// More than the tyres can do to a car.
inline constexpr double impactBound = 1.0; // g from rest
/// More than a driver brakes without need; above `impossibleBraking` it is the receiver that erred.
inline constexpr double brakingBound = 0.4; // g
inline constexpr double impossibleBraking = 1.5; // g

/// A recording's moments, oldest first: an impact where the samples are further from rest than `impactBound`
/// (rest is the median of each axis), a braking where the speeds of neighbouring GPS records fall faster than
/// `brakingBound`. What follows within two seconds is one moment. Values that no sensor tells are passed
/// over.
std::vector<Moment> momentsOf(const ZVKBlackBoxData& data);

/// The furthest that a recording's samples are from rest, in g; 0 without samples.
double strongestDeviation(const ZVKBlackBoxData& data);
