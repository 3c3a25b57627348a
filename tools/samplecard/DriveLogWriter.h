#pragma once

#include "tools/samplecard/Drive.h"

#include <cstddef>
#include <vector>

namespace samplecard {

/// The ".drv" log of the drive's first seconds in the camera's local time, a record every five seconds as the
/// camera's defaults have it. Distances are in kilometres, speeds in km/h.
std::vector<std::byte> driveLogOf(const Drive& drive, int seconds);

} // namespace samplecard
