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

/// Whether a mount at this place belongs to the system or is a user's whole home: the root, /home, a home and
/// its hidden folders, /usr, /var, /etc, /opt, /srv, /boot and their like with all below them, and the medium
/// that a live system was started from. Anywhere else a desktop or a user may have put a card.
bool isSystemMount(std::string_view path);

/// Whether a path is the folder or lies below it; both without a slash at their end, except "/".
bool isWithin(std::string_view path, std::string_view folder);

} // namespace platform
