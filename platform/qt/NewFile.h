#pragma once

#include <string>
#include <string_view>

namespace platform {

enum class NewFile { written, exists, failed };

/// Writes a file that is not there yet: created exclusively (a symbolic link counts as there), written whole,
/// synced to the disk, read back and compared. `exists` leaves what is there untouched; `failed` leaves
/// nothing behind. Callable from any thread.
NewFile writeNewFile(const std::string& path, std::string_view contents);

/// The path when nothing is there, else the first free one of "name 2.png", "name 3.png", ...
std::string freePath(const std::string& path);

} // namespace platform
