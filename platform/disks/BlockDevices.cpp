#include "platform/disks/BlockDevices.h"

#include "common/Text.h"

#include <algorithm>
#include <set>

namespace platform {

namespace {

bool isAny(const std::vector<std::string>& list, std::string_view text)
{
    return std::ranges::find(list, text) != list.end();
}

bool holdsFile(const BlockDevices& devices, const Block& block, std::string_view file)
{
    // The file belongs to the innermost mount around it.
    const Block* holder = nullptr;
    size_t longest = 0;
    for (const Block& candidate : devices.blocks) {
        for (const std::string& path : candidate.mountPoints) {
            if (isWithin(file, path) && path.size() > longest) {
                longest = path.size();
                holder = &candidate;
            }
        }
    }
    return holder == &block;
}

/// Whether the contents of the upper block lie, in part, on the lower one or on the same drive.
bool isBuiltOn(const BlockDevices& devices, const Block& upper, const Block& lower)
{
    const auto same = [](const std::string& a, const std::string& b) { return !a.empty() && a == b; };
    return same(upper.drive, lower.drive) || same(upper.table, lower.object)
        || same(upper.cryptoBacking, lower.object) || same(upper.raid, lower.raidMember)
        || isAny(upper.slaves, lower.device)
        || (upper.type == "btrfs" && lower.type == "btrfs" && same(upper.uuid, lower.uuid))
        || upper.backingFile == "/dev/" + lower.device
        || (!upper.backingFile.empty() && holdsFile(devices, lower, upper.backingFile));
}

bool isNeeded(const BlockDevices& devices, const Block& block)
{
    // Which mount belongs to a pool cannot be told from its parts.
    if (block.systemHint || block.isSwap || block.type == "zfs_member")
        return true;
    const std::string node = "/dev/" + block.device;
    const auto isHere = [&](const Mount& mount) { return mount.source == node && isSystemMount(mount.path); };
    const auto isOnIt = [&](const std::string& swap) {
        return swap == node || holdsFile(devices, block, swap);
    };
    return std::ranges::any_of(block.mountPoints, isSystemMount)
        || std::ranges::any_of(devices.mounts, isHere) || std::ranges::any_of(devices.swaps, isOnIt);
}

bool isFlashCard(const Drive& drive, const Block& block)
{
    const auto isCard = [](std::string_view medium) {
        return medium.starts_with("flash_sd") || medium.starts_with("flash_mmc");
    };
    return drive.bus == "sdio" || block.device.starts_with("mmcblk") || isCard(drive.medium)
        || std::ranges::any_of(drive.media, isCard);
}

/// Flash memory that is soldered in has boot areas beside the one for data; a card never has.
bool isBuiltIn(const BlockDevices& devices, const Block& block)
{
    constexpr std::string_view family = "mmcblk";
    if (!block.device.starts_with(family))
        return false;
    const size_t end = block.device.find_first_not_of("0123456789", family.size());
    const std::string bootArea = block.device.substr(0, end) + "boot";
    return std::ranges::any_of(
        devices.blocks, [&](const Block& other) { return other.device.starts_with(bootArea); });
}

std::optional<std::string> readerName(const Drive& drive)
{
    if (drive.vendor.empty() || asciiLower(drive.model).starts_with(asciiLower(drive.vendor)))
        return drive.model.empty() ? std::nullopt : std::optional(drive.model);
    return drive.model.empty() ? drive.vendor : drive.vendor + " " + drive.model;
}

/// The card's write-protect switch, or another reason of the kernel.
bool isProtected(const BlockDevices& devices, const Block& block)
{
    return std::ranges::any_of(devices.blocks, [&](const Block& other) {
        const bool isWholeOne = !block.table.empty() && other.object == block.table;
        return other.readOnly && (&other == &block || isWholeOne);
    });
}

bool isMountedReadOnly(const BlockDevices& devices, const std::string& mountPath)
{
    // Of several mounts at one place the last one is visible.
    const auto mount = std::find_if(devices.mounts.rbegin(), devices.mounts.rend(),
        [&](const Mount& candidate) { return candidate.path == mountPath; });
    return mount != devices.mounts.rend() && mount->readOnly;
}

std::string mountPathOf(const Block& block)
{
    const auto path = std::ranges::find_if(block.mountPoints, isValidUtf8);
    return path == block.mountPoints.end() ? std::string() : *path;
}

bool hasPartitions(const BlockDevices& devices, const Block& block)
{
    return std::ranges::any_of(
        devices.blocks, [&](const Block& other) { return other.table == block.object; });
}

std::string protocolText(const Drive& drive, const Block& block)
{
    if (drive.bus == "usb" || isFlashCard(drive, block))
        return "USB";
    std::string text = drive.bus;
    std::ranges::transform(
        text, text.begin(), [](char c) { return c >= 'a' && c <= 'z' ? char(c - 32) : c; });
    return text;
}

/// All rules that do not depend on how it is mounted.
VolumeDescription described(const BlockDevices& devices, const Block& block)
{
    VolumeDescription volume;
    volume.mountPath = mountPathOf(block);
    volume.deviceName = block.device;
    volume.size = block.size;
    volume.writable = !isProtected(devices, block);
    volume.whole = block.table.empty();
    volume.label = block.label;
    volume.mediaPath = block.object;
    volume.uuid = block.uuid;
    volume.fileSystem = block.type;
    if (const Drive* drive = devices.driveOf(block)) {
        const bool isCard = isFlashCard(*drive, block) && !isBuiltIn(devices, block);
        volume.removable = (drive->mediaRemovable || isCard) && !holdsSystem(devices, block.device);
        volume.protocol = protocolText(*drive, block);
        volume.deviceModel = readerName(*drive);
        volume.serial = drive->serial;
        volume.mediaPath = drive->object + "/" + std::to_string(drive->mediaDetected) + "/" + block.device;
    }
    return volume;
}

} // namespace

const Block* BlockDevices::block(std::string_view device) const
{
    const auto found = std::ranges::find(blocks, device, &Block::device);
    return found == blocks.end() ? nullptr : &*found;
}

const Block* BlockDevices::mountedAt(std::string_view mountPath) const
{
    const auto found =
        std::ranges::find_if(blocks, [&](const Block& one) { return isAny(one.mountPoints, mountPath); });
    return found == blocks.end() ? nullptr : &*found;
}

const Drive* BlockDevices::driveOf(const Block& block) const
{
    const auto found = std::ranges::find(drives, block.drive, &Drive::object);
    return block.drive.empty() || found == drives.end() ? nullptr : &*found;
}

bool holdsSystem(const BlockDevices& devices, std::string_view device)
{
    const Block* const start = devices.block(device);
    if (!start)
        return false;
    std::set<const Block*> together = {start};
    const auto belongs = [&](const Block& block) {
        return std::ranges::any_of(together, [&](const Block* other) {
            return isBuiltOn(devices, block, *other) || isBuiltOn(devices, *other, block);
        });
    };
    for (size_t before = 0; before != together.size();) {
        before = together.size();
        for (const Block& block : devices.blocks) {
            if (belongs(block))
                together.insert(&block);
        }
    }
    return std::ranges::any_of(together, [&](const Block* block) { return isNeeded(devices, *block); });
}

std::vector<VolumeDescription> describedVolumes(const BlockDevices& devices)
{
    std::vector<VolumeDescription> volumes;
    for (const Block& block : devices.blocks) {
        if (!block.isFilesystem || mountPathOf(block).empty())
            continue;
        VolumeDescription volume = described(devices, block);
        volume.writable = volume.writable && !isMountedReadOnly(devices, volume.mountPath);
        volumes.push_back(std::move(volume));
    }
    return volumes;
}

std::vector<VolumeDescription> formattableVolumes(const BlockDevices& devices)
{
    std::vector<VolumeDescription> volumes;
    for (const Block& block : devices.blocks) {
        const Drive* const drive = devices.driveOf(block);
        const bool holdsOthers = block.isContainer || hasPartitions(devices, block);
        // An empty slot of a reader has no size.
        if (!drive || drive->medium.starts_with("optical") || block.size == 0 || holdsOthers)
            continue;
        VolumeDescription volume = described(devices, block);
        if (volume.removable.value_or(false))
            volumes.push_back(std::move(volume));
    }
    return volumes;
}

} // namespace platform
