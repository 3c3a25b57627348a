#pragma once

#include <cstddef>

namespace platform {

/// Bytes of main memory that this program takes up now; 0 where the system does not tell.
size_t ownMemory();

} // namespace platform
