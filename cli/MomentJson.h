#pragma once

#include "cli/Json.h"
#include "drives/DriveFigures.h"

namespace cli {

/// {"file", "seconds", "kind", "g", "direction"}; seconds to the millisecond, g to the hundredth.
Json momentJson(const DriveMoment& moment);

} // namespace cli
