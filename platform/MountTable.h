#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// One mount of the running system.
struct Mount {
    std::string path;
    std::string source; // "/dev/sdb1", "tmpfs"
    bool readOnly = false; // the mount itself or the file system behind it
    std::string number = {}; // of the file system's device, "8:17"
};

/// The mounts of a /proc/self/mountinfo (proc(5)). Lines that are none are left out.
std::vector<Mount> parsedMounts(std::string_view mountinfo);

/// What is swapped to, by a /proc/swaps (proc(5)): devices and files.
std::vector<std::string> parsedSwaps(std::string_view swaps);

/// Whether the running system needs what is mounted there: the root, /boot, /efi, /home and a user's whole
/// home, /usr, /var, what lies below /boot, /usr and /var, and the medium that a live system was started
/// from.
bool isSystemMount(std::string_view path);

/// Whether a path is the folder or lies below it; both without a slash at their end, except "/".
bool isWithin(std::string_view path, std::string_view folder);

} // namespace platform
