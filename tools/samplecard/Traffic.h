#pragma once

#include "tools/samplecard/Drive.h"

#include <vector>

namespace samplecard {

/// Another car on the road at one moment.
struct Vehicle {
    double along = 0; // of its rear end in its own direction
    double across = 0; // of its middle, right of the road's centre line
    bool oncoming = false;
    bool braking = false;
    Rgb colour;
};

/// The cars around ours: one ahead, one behind, and those that come the other way. While ours is parked,
/// cars pass it in both directions.
std::vector<Vehicle> trafficAt(const Drive& drive, double seconds);

} // namespace samplecard
