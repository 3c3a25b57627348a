#include "platform/KernelDevice.h"

#include "platform/DiskCommand.h"
#include "platform/MountTable.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>

namespace platform {

namespace {

namespace fs = std::filesystem;

std::string firstLine(const fs::path& file)
{
    std::ifstream in(file);
    std::string line;
    std::getline(in, line);
    return line;
}

std::optional<std::string> wholeText(const std::string& file)
{
    std::ifstream in(file);
    std::string text{std::istreambuf_iterator<char>(in), {}};
    if (text.empty())
        return {};
    return text;
}

std::vector<fs::path> entries(const fs::path& folder)
{
    std::error_code error;
    std::vector<fs::path> found;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
        found.push_back(at->path());
    return found;
}

/// Names and numbers of block devices.
struct Devices {
    std::set<std::string> names;
    std::set<std::string> numbers;

    bool add(const fs::path& folder)
    {
        numbers.insert(firstLine(folder / "dev"));
        return names.insert(folder.filename()).second;
    }
    bool has(const std::string& name, const std::string& number) const
    {
        return names.contains(name) || numbers.contains(number);
    }
};

/// The device that a table's path means: its name, links followed.
std::string deviceName(const std::string& path, const SystemRoots& roots)
{
    if (!path.starts_with("/dev/"))
        return {};
    std::error_code error;
    const fs::path there = fs::path(roots.dev) / path.substr(5);
    const fs::path real = fs::canonical(there, error);
    return (error ? there : real).filename();
}

/// What is built on the device. A loop device on top of it is not among those that it tells of itself.
std::vector<fs::path> holdersOf(const fs::path& folder, const SystemRoots& roots)
{
    std::vector<fs::path> found;
    const fs::path all = fs::path(roots.sys) / "class/block";
    for (const fs::path& holder : entries(folder / "holders"))
        found.push_back(all / holder.filename());
    for (const fs::path& other : entries(all)) {
        const std::string backing = firstLine(other / "loop/backing_file");
        if (!backing.empty() && deviceName(backing, roots) == folder.filename())
            found.push_back(other);
    }
    return found;
}

void addHolders(Devices& devices, const fs::path& folder, const SystemRoots& roots)
{
    for (const fs::path& holder : holdersOf(folder, roots)) {
        if (devices.add(holder))
            addHolders(devices, holder, roots);
    }
}

/// The number of the device on which a file lies.
std::string numberBelow(const std::string& path)
{
    struct stat status { };
    if (stat(path.c_str(), &status) != 0)
        return {};
    return std::to_string(major(status.st_dev)) + ":" + std::to_string(minor(status.st_dev));
}

std::vector<fs::path> withPartitions(const fs::path& disk)
{
    std::vector<fs::path> all{disk};
    for (const fs::path& entry : entries(disk)) {
        if (fs::exists(entry / "partition"))
            all.push_back(entry);
    }
    return all;
}

void readKind(KernelDevice& device, const fs::path& disk)
{
    std::error_code error;
    const std::string path = fs::canonical(disk, error).native();
    device.removable = firstLine(disk / "removable") == "1";
    device.usb = path.find("/usb") != std::string::npos;
    device.sdCard = path.find("/mmc_host/") != std::string::npos && firstLine(disk / "device/type") == "SD";
    device.loop = path.find("/virtual/block/loop") != std::string::npos;
    device.sequence = firstLine(disk / "diskseq");
    if (device.sequence.empty())
        device.sequence = "-";
}

/// False when one of the tables cannot be read.
bool readUses(KernelDevice& device, const Devices& own, const Devices& all, const SystemRoots& roots)
{
    const auto mountinfo = wholeText(roots.proc + "/self/mountinfo");
    const auto swaps = wholeText(roots.proc + "/swaps");
    // A kernel without swap has no table of it.
    if (!mountinfo || (!swaps && fs::exists(roots.proc + "/swaps")))
        return false;
    for (const Mount& mount : parsedMounts(*mountinfo)) {
        const std::string name = deviceName(mount.source, roots);
        if (all.has(name, mount.number))
            device.mounts.push_back({mount.path, own.has(name, mount.number)});
    }
    const auto paths = parsedSwaps(swaps.value_or(""));
    device.swap = std::ranges::any_of(
        paths, [&](const std::string& path) { return all.has(deviceName(path, roots), numberBelow(path)); });
    return true;
}

std::optional<uint64_t> sizeOf(const fs::path& folder)
{
    const std::string sectors = firstLine(folder / "size");
    if (sectors.empty() || sectors.size() > 16
        || sectors.find_first_not_of("0123456789") != std::string::npos)
        return {};
    return std::stoull(sectors) * 512;
}

} // namespace

KernelDevice kernelDevice(const std::string& name, const SystemRoots& roots)
{
    KernelDevice device;
    if (!isPlainDeviceName(name))
        return device;
    std::error_code error;
    const fs::path folder = fs::canonical(fs::path(roots.sys) / "class/block" / name, error);
    if (error || folder.filename() != name)
        return device;
    device.whole = !fs::exists(folder / "partition");
    const fs::path disk = device.whole ? folder : folder.parent_path();
    device.number = firstLine(folder / "dev");
    device.readOnly = firstLine(folder / "ro") != "0" || firstLine(disk / "ro") != "0";
    readKind(device, disk);

    Devices own;
    Devices all;
    for (const fs::path& part : withPartitions(disk)) {
        all.add(part);
        addHolders(all, part, roots);
        if (!device.whole && part != folder)
            continue;
        own.add(part);
        addHolders(own, part, roots);
        device.held = device.held || !holdersOf(part, roots).empty();
    }
    const auto size = sizeOf(folder);
    device.size = size.value_or(0);
    device.known = readUses(device, own, all, roots) && size && !device.number.empty();
    return device;
}

} // namespace platform
