#include "platform/disks/KernelDevice.h"

#include "platform/disks/DeviceUse.h"
#include "platform/disks/DiskCommand.h"

#include <algorithm>
#include <filesystem>
#include <optional>

namespace platform {

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> withPartitions(const fs::path& disk)
{
    std::vector<fs::path> all{disk};
    for (const fs::path& entry : entries(disk)) {
        if (fs::exists(entry / "partition"))
            all.push_back(entry);
    }
    return all;
}

/// Flash memory that is soldered in has boot areas beside the one for data; a card never has.
bool isCardInSlot(const fs::path& disk, const SystemRoots& roots)
{
    const std::string type = firstLine(disk / "device/type");
    const std::string bootArea = disk.filename().native() + "boot";
    return (type == "SD" || type == "MMC")
        && std::ranges::none_of(entries(fs::path(roots.sys) / "class/block"),
            [&](const fs::path& other) { return other.filename().native().starts_with(bootArea); });
}

void readKind(KernelDevice& device, const fs::path& disk, const SystemRoots& roots)
{
    std::error_code error;
    const std::string path = fs::canonical(disk, error).native();
    device.removable = firstLine(disk / "removable") == "1";
    device.usb = path.find("/usb") != std::string::npos;
    device.sdCard = path.find("/mmc_host/") != std::string::npos && isCardInSlot(disk, roots);
    device.loop = path.find("/virtual/block/loop") != std::string::npos;
    device.sequence = firstLine(disk / "diskseq");
    if (device.sequence.empty())
        device.sequence = "-";
}

bool isUsed(const fs::path& part, const UseTables& tables, const SystemRoots& roots)
{
    DeviceSet only;
    only.add(part);
    return std::ranges::any_of(tables.mounts, [&](const Mount& mount) { return only.isUsedBy(mount, roots); })
        || std::ranges::any_of(
            tables.swaps, [&](const std::string& path) { return only.isSwappedTo(path, roots); });
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
    readKind(device, disk, roots);

    const auto tables = readUseTables(roots);
    const auto size = sizeOf(folder);
    device.size = size.value_or(0);
    device.known = tables && size && !device.number.empty();
    if (!device.known)
        return device;
    DeviceSet own;
    DeviceSet all;
    for (const fs::path& part : withPartitions(disk)) {
        // Use of the whole disk is use of each partition.
        const bool isOwn = device.whole || part == folder || part == disk;
        const bool isHeld = !holdersOf(part, roots).empty();
        device.held = device.held || (isOwn && isHeld);
        all.addWithHolders(part, roots);
        if (isOwn)
            own.addWithHolders(part, roots);
        if (part != folder && part != disk)
            device.parts.push_back(
                {part.filename(), firstLine(part / "dev"), isHeld || isUsed(part, *tables, roots)});
    }
    for (const Mount& mount : tables->mounts) {
        if (all.isUsedBy(mount, roots))
            device.mounts.push_back({mount.path, own.isUsedBy(mount, roots)});
    }
    device.swap = std::ranges::any_of(
        tables->swaps, [&](const std::string& path) { return all.isSwappedTo(path, roots); });
    device.users = usersOf(own, roots);
    return device;
}

} // namespace platform
