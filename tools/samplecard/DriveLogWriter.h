#pragma once

#include "tools/samplecard/Drive.h"

#include <cstddef>
#include <vector>

namespace samplecard {

/// The ".drv" log of the drive's first seconds, one record a second in the camera's local time. Distances are
/// in kilometres, speeds in km/h.
std::vector<std::byte> driveLogOf(const Drive& drive, int seconds);

} // namespace samplecard
