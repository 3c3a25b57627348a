#pragma once

#include <cstddef>

namespace platform {

/// Bytes of main memory that this program takes up now; 0 when unknown.
size_t ownMemory();

} // namespace platform
