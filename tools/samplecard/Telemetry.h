#pragma once

#include "tools/samplecard/Drive.h"
#include "tools/samplecard/SideDataWriter.h"

namespace samplecard {

/// What the camera stores beside the pictures of that part of the drive: ten G-sensor samples a second, each
/// second followed by the GPS record that stands for it. Speeds are km/h (`KM` "9").
SideDataWriter telemetryOf(const Drive& drive, int start, int seconds);

} // namespace samplecard
