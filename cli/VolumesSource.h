#pragma once

#include "platform/DiskArbitration.h"

#include <functional>
#include <memory>

namespace cli {

/// Makes what lists the mounted volumes; nothing when this build cannot.
using VolumesSource = std::function<std::unique_ptr<platform::DiskArbitration>()>;

/// What "volumes" asks from now on; without it, nothing.
void setVolumesSource(VolumesSource source);

} // namespace cli
