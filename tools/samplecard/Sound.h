#pragma once

#include "tools/samplecard/Drive.h"

#include <cstdint>
#include <vector>

namespace samplecard {

inline constexpr int soundRate = 22050;

/// What the camera's microphone hears, one channel of 16-bit samples at soundRate: the engine, tyres and
/// wind, joints of the road, the echo of the tunnel, the impact.
std::vector<int16_t> soundOf(const Drive& drive, int start, int seconds);

} // namespace samplecard
