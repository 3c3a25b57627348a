#pragma once

#include <string>
#include <vector>

namespace platform {

/// The paths of what this process has open in the folder or anywhere below it, as the kernel's table `proc`
/// tells; the files themselves are not accessed, so that a hanging card does not block this.
std::vector<std::string> openFilesBelow(const std::string& folder, const std::string& proc = "/proc");

/// A program that was started in a folder of a card keeps the card from being unmounted: when the current
/// folder is this one or below it, the root becomes the current one.
void leaveFolder(const std::string& folder);

} // namespace platform
