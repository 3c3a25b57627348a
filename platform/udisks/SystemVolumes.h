#pragma once

#include "platform/DiskArbitration.h"

#include <memory>

namespace platform {

/// The system's mounted volumes.
std::unique_ptr<DiskArbitration> systemVolumes();

} // namespace platform
