#pragma once

#include "platform/Previews.h"

#include <memory>

namespace platform {

/// Previews that are decoded directly, without a player: a few milliseconds each, no thread of its own but
/// the one that reads.
std::unique_ptr<Previews> makeAvPreviews();

} // namespace platform
