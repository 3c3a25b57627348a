#pragma once

#include "tools/samplecard/SideDataWriter.h"

#include <optional>
#include <string>

namespace samplecard {

/// Turns a finished AVI file into one as the camera writes it: padding chunks ("JUNK") at the top level go,
/// the side data is appended as the only one, within the RIFF. Chunks inside lists stay as they are. Returns
/// why not when the bytes are no AVI file of a single RIFF, or its index ("idx1") counts from the beginning
/// of the file, so that the change would break it; the bytes are then unchanged.
std::optional<std::string> embedSideData(std::vector<std::byte>& avi, const SideDataWriter& sideData);

} // namespace samplecard
