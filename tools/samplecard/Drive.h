#pragma once

#include "tools/samplecard/Road.h"

#include <array>
#include <cstdint>
#include <vector>

namespace samplecard {

/// Acceleration along the car's axes in g: x to the right, y forward, z up (1 at rest).
struct Acceleration {
    double x = 0;
    double y = 0;
    double z = 1;
};

/// A position fix as the receiver would report it for one second of the drive.
struct Fix {
    int64_t utcMilliseconds = 0; // the start of the second
    bool valid = false; // no satellites in the tunnel
    double latitude = 0; // decimal degrees, north positive
    double longitude = 0; // decimal degrees, east positive
    double kilometresPerHour = 0;
    double courseDegrees = 0;
    int satellites = 0;
    double hdop = 0;
};

/// Where the car is and how its body moves at one moment.
struct Motion {
    double along = 0; // metres from the start of the road
    double across = 0; // metres right of the centre line
    double speed = 0; // m/s
    double acceleration = 0; // m/s², forward
    double heave = 0; // metres, the body's travel on its springs
    double pitch = 0; // radians, nose down positive
    double roll = 0; // radians, leaning to the left positive
};

/// One drive, the same in every run, as a function of the seconds since it began: out of a village, through
/// bends and a tunnel; minutes later a collision with the car ahead; at the end parked by the road. Immutable
/// after construction.
class Drive {
public:
    /// 2024-05-18 18:12:00 in the camera's local time, which is nine hours ahead of UTC.
    static constexpr int64_t startUtcMilliseconds = 1716023520000;
    static constexpr int localHoursAhead = 9;
    static constexpr double impact = 395.6;
    static constexpr double parked = 690;

    Drive();

    const Road& road() const { return way; }
    Motion motionAt(double seconds) const;
    /// What the sensor reads, with a little noise that depends on the tenth of a second only.
    Acceleration accelerationAt(double seconds) const;
    /// The fix that stands for the second that begins at `second`, taken in the middle of it.
    Fix fixAt(int second) const;
    /// The moment at which the car passes a place on the road.
    double timeAt(double along) const;
    double tunnelEntry() const { return entryTime; }
    /// Metres from the camera to the rear of the car ahead.
    double gapAheadAt(double seconds) const;
    /// Shaking after the impact: 0 before it, 1 at it, decreasing to 0 within a second.
    static double impactShake(double seconds);

private:
    double distanceAt(double seconds) const;

    Road way;
    std::vector<double> distanceAtKey; // parallel to the speed profile
    std::vector<double> bumpTimes; // parallel to the road's bumps
    double entryTime = 0;
};

} // namespace samplecard
