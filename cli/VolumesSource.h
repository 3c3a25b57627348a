#pragma once

#include "platform/DiskArbitration.h"

#include <functional>
#include <memory>

namespace cli {

/// Makes what lists the mounted volumes; empty when this build cannot.
using VolumesSource = std::function<std::unique_ptr<platform::DiskArbitration>()>;

} // namespace cli
