#include "platform/disks/DeviceUse.h"

#include "common/FilePlace.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <algorithm>
#include <charconv>
#include <sstream>

namespace platform {

namespace fs = std::filesystem;

namespace {

/// Nothing when the table cannot be read or is empty.
std::optional<std::string> tableIn(const std::string& file)
{
    auto text = wholeFile(file);
    return text && !text->empty() ? std::move(text) : std::nullopt;
}

/// The device node for a path in the table.
fs::path nodeAt(const std::string& path, const SystemRoots& roots)
{
    return path.starts_with("/dev/") ? fs::path(roots.dev) / path.substr(5) : fs::path(path);
}

/// The device that a table's path means: its name, links followed.
std::string deviceName(const std::string& path, const SystemRoots& roots)
{
    if (!path.starts_with("/dev/"))
        return {};
    std::error_code error;
    const fs::path there = nodeAt(path, roots);
    const fs::path real = fs::canonical(there, error);
    return (error ? there : real).filename();
}

bool isOn(const fs::path& loop, const fs::path& folder, const SystemRoots& roots)
{
    const std::string file = firstLine(loop / "loop/backing_file");
    if (file.empty())
        return false;
    // A path may mean another device here than where the loop device was made; the kernel's number is
    // unambiguous.
    const auto numbers = roots.backing(fs::path(roots.dev) / loop.filename(), firstLine(loop / "dev"));
    return deviceName(file, roots) == folder.filename()
        || std::ranges::find(numbers, firstLine(folder / "dev")) != numbers.end();
}

/// The other devices of a mounted file system that is on several; its mount names only one.
std::vector<fs::path> companionsOf(const fs::path& folder, const SystemRoots& roots)
{
    std::vector<std::vector<fs::path>> groups;
    for (const fs::path& system : entries(fs::path(roots.sys) / "fs/btrfs"))
        groups.push_back(entries(system / "devices"));
    for (const fs::path& system : entries(fs::path(roots.sys) / "fs/bcachefs")) {
        groups.emplace_back();
        for (const fs::path& member : entries(system)) {
            std::error_code error;
            const fs::path device = fs::read_symlink(member / "block", error);
            if (!error)
                groups.back().push_back(device);
        }
    }
    std::vector<fs::path> found;
    for (const auto& group : groups) {
        if (std::ranges::find(group, folder.filename(), &fs::path::filename) == group.end())
            continue;
        for (const fs::path& device : group)
            found.push_back(device);
    }
    std::erase_if(found, [&](const fs::path& device) { return device.filename() == folder.filename(); });
    return found;
}

/// The number of the device on which a file lies.
std::string numberBelow(const std::string& path)
{
    struct stat status { };
    if (stat(path.c_str(), &status) != 0)
        return {};
    return std::to_string(major(status.st_dev)) + ":" + std::to_string(minor(status.st_dev));
}

} // namespace

std::string firstLine(const fs::path& file)
{
    const std::string text = wholeFile(file.native()).value_or("");
    return text.substr(0, text.find('\n'));
}

std::vector<fs::path> entries(const fs::path& folder)
{
    std::error_code error;
    std::vector<fs::path> found;
    for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error))
        found.push_back(at->path());
    return found;
}

std::vector<fs::path> holdersOf(const fs::path& folder, const SystemRoots& roots)
{
    std::vector<fs::path> found;
    const fs::path all = fs::path(roots.sys) / "class/block";
    for (const fs::path& holder : entries(folder / "holders"))
        found.push_back(all / holder.filename());
    for (const fs::path& other : entries(all)) {
        if (isOn(other, folder, roots))
            found.push_back(other);
    }
    for (const fs::path& other : companionsOf(folder, roots))
        found.push_back(all / other.filename());
    return found;
}

bool DeviceSet::add(const fs::path& folder)
{
    numbers.insert(firstLine(folder / "dev"));
    return names.insert(folder.filename()).second;
}

void DeviceSet::addWithHolders(const fs::path& folder, const SystemRoots& roots)
{
    if (!add(folder))
        return;
    for (const fs::path& holder : holdersOf(folder, roots))
        addWithHolders(holder, roots);
}

bool DeviceSet::has(const std::string& name, const std::string& number) const
{
    return names.contains(name) || (!number.empty() && numbers.contains(number));
}

bool DeviceSet::isUsedBy(const Mount& mount, const SystemRoots& roots) const
{
    // A mount may name several devices: "/dev/sda1:/dev/sdb1".
    std::istringstream sources(mount.source.starts_with('/') ? mount.source : std::string());
    bool used = has({}, mount.number);
    for (std::string one; !used && std::getline(sources, one, ':');)
        used = has(deviceName(one, roots), roots.numberAt(nodeAt(one, roots)));
    return used;
}

bool DeviceSet::isSwappedTo(const std::string& path, const SystemRoots& roots) const
{
    return has(deviceName(path, roots), roots.numberAt(nodeAt(path, roots))) || has({}, numberBelow(path));
}

std::optional<UseTables> readUseTables(const SystemRoots& roots)
{
    const auto mountinfo = tableIn(roots.proc + "/self/mountinfo");
    const auto swaps = tableIn(roots.proc + "/swaps");
    // A kernel without swap has no table of it.
    if (!mountinfo || (!swaps && fs::exists(roots.proc + "/swaps")))
        return {};
    // The first process may have other mounts than this one.
    return UseTables{parsedMounts(*mountinfo + "\n" + tableIn(roots.proc + "/1/mountinfo").value_or("")),
        parsedSwaps(swaps.value_or(""))};
}

std::vector<KernelDevice::User> usersOf(const DeviceSet& devices, const SystemRoots& roots)
{
    std::vector<KernelDevice::User> users;
    for (const fs::path& folder : entries(roots.proc)) {
        const std::string name = folder.filename();
        int process = 0;
        if (std::from_chars(name.data(), name.data() + name.size(), process).ptr != name.data() + name.size())
            continue;
        const auto isOpen = [&](const fs::path& file) { return devices.has({}, roots.numberAt(file)); };
        if (std::ranges::any_of(entries(folder / "fd"), isOpen))
            users.push_back({process, firstLine(folder / "comm")});
    }
    return users;
}

} // namespace platform
