#pragma once

#include <cstdint>
#include <string>

/// A short text for a size, such as "1.9 GB", "954 MB" or "0 B": units of 1024, rounded half to
/// even.
std::string formatByteCount(uint64_t bytes);
