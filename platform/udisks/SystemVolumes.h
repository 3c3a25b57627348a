#pragma once

#include "platform/DiskArbitration.h"

#include <memory>

namespace platform {

/// The system's mounted volumes; empty in a build without the desktop's services.
std::unique_ptr<DiskArbitration> systemVolumes();

} // namespace platform
