#pragma once

#include "platform/disks/KernelDevice.h"
#include "platform/disks/MountTable.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace platform {

/// The first line of a kernel file (/sys, /proc); empty when it cannot be read.
std::string firstLine(const std::filesystem::path& file);

/// The entries of a kernel folder (/sys, /proc).
std::vector<std::filesystem::path> entries(const std::filesystem::path& folder);

/// Names and numbers of block devices.
class DeviceSet {
public:
    /// False when it was in already. The folder is the one that /sys has of the device.
    bool add(const std::filesystem::path& folder);
    /// Adds the device and, recursively, what is built on it and what shares a file system with it.
    void addWithHolders(const std::filesystem::path& folder, const SystemRoots& roots);
    bool has(const std::string& name, const std::string& number) const;
    /// Whether one of a mount's devices is among them: by the file system's number, by the source's.
    bool isUsedBy(const Mount& mount, const SystemRoots& roots) const;
    bool isSwappedTo(const std::string& path, const SystemRoots& roots) const;

private:
    std::set<std::string> names;
    std::set<std::string> numbers;
};

/// What is built on the device, a file system over several devices among it.
std::vector<std::filesystem::path> holdersOf(const std::filesystem::path& folder, const SystemRoots& roots);

/// What is mounted, also for the system's first process, and what is swapped to.
struct UseTables {
    std::vector<Mount> mounts;
    std::vector<std::string> swaps;
};

/// Nothing when one of the tables cannot be read.
std::optional<UseTables> readUseTables(const SystemRoots& roots);

/// The programs that have a device of this kind open, as far as this process may look.
std::vector<KernelDevice::User> usersOf(const DeviceSet& devices, const SystemRoots& roots);

} // namespace platform
