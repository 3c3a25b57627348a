#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// One of the disk commands that the application knows.
struct DiskCommand {
    enum class Kind {
        unmountDisk,
        unmount,
        mount,
        format,
    };
    Kind kind = Kind::mount;
    long cluster = 0; // sectors per cluster, of a format command
    std::string device; // without "/dev/"
};

/// Reads "diskutil umountDisk D", "diskutil umount D", "diskutil mount D" and
/// "sudo newfs_msdos -v ZAVIK -F 32 -n 2 -k 6 -r 32 -c N D". Nothing for any other text.
std::optional<DiskCommand> parsedDiskCommand(std::string_view command);

/// A device's name without any folder: letters, digits, "_" and "-".
bool isPlainDeviceName(std::string_view name);

} // namespace platform
