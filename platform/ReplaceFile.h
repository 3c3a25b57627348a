#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Replaces a file's contents, or creates it, so that a reader finds the old or the new contents and never a
/// mixture, also when the machine stops at any moment: written beside it, synced, renamed, the folder synced,
/// read back and compared. Where no file can be made beside it (and only there), it is written in place.
/// A symbolic link is followed; anything that is neither a regular file nor missing is refused.
/// Empty on success; otherwise why not, as the system says it, nothing is left beside the file, and the file
/// is as it was (after a failed write in place it may not be). Callable from any thread.
[[nodiscard]] std::string replaceFile(const std::string& path, std::string_view contents);

} // namespace platform
