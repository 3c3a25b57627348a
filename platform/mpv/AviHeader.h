#pragma once

#include <cstdint>
#include <string_view>

namespace platform {

/// Where the pictures of an AVI file end, in seconds, by the beginning of the file (its headers) and its
/// size: less than claimed where the file was cut off. 0 when the header doesn't tell.
double pictureSecondsOf(std::string_view head, uint64_t fileSize);

} // namespace platform
