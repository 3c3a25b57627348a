#include "cardtools/volumes/Volumes.h"

#include "common/CardFiles.h"
#include "common/CardRoot.h"
#include "common/Log.h"

#include <algorithm>
#include <array>
#include <functional>

namespace {

using platform::VolumeDescription;

std::vector<VolumeDescription> removable(std::vector<VolumeDescription> volumes)
{
    std::erase_if(volumes, [](const VolumeDescription& volume) { return !volume.removable.value_or(false); });
    return volumes;
}

std::vector<VolumeDescription> usb(std::vector<VolumeDescription> volumes)
{
    volumes = removable(std::move(volumes));
    std::erase_if(volumes, [](const VolumeDescription& volume) { return volume.protocol != "USB"; });
    return volumes;
}

std::vector<std::string> mountPaths(const std::vector<VolumeDescription>& volumes)
{
    std::vector<std::string> paths;
    for (const VolumeDescription& volume : volumes)
        paths.push_back(volume.mountPath);
    return paths;
}

std::vector<TKUSBDiskEntity> entities(std::vector<VolumeDescription> volumes)
{
    std::vector<TKUSBDiskEntity> entities;
    for (VolumeDescription& volume : volumes) {
        if (volume.deviceName.empty())
            continue;
        entities.push_back(
            {std::move(volume.label), std::move(volume.mountPath), std::move(volume.deviceName),
                std::move(volume.deviceModel), volume.size, volume.writable, volume.whole,
                std::move(volume.mediaPath), std::move(volume.fileSystem), std::move(volume.serial)});
    }
    return entities;
}

bool isCamera(const TKUSBDiskEntity& disk)
{
    return disk.volumeName == cardFiles::label;
}

bool isWritableCamera(const TKUSBDiskEntity& disk)
{
    return isCamera(disk) && disk.writable;
}

bool isConfiguredCamera(const TKUSBDiskEntity& disk)
{
    return isWritableCamera(disk) && CardRoot(disk.mountedURL).file(cardFiles::settings).size();
}

} // namespace

std::vector<std::string> removableVolumeURLs(platform::DiskArbitration& disks)
{
    return mountPaths(removable(disks.mountedVolumes()));
}

std::vector<std::string> usbVolumeURLs(platform::DiskArbitration& disks)
{
    return mountPaths(usb(disks.mountedVolumes()));
}

std::vector<TKUSBDiskEntity> usbDiskEntities(platform::DiskArbitration& disks)
{
    std::vector<TKUSBDiskEntity> found = entities(usb(disks.mountedVolumes()));
    for (const TKUSBDiskEntity& entity : found)
        logLine(entity.mountedURL);
    return found;
}

std::vector<TKUSBDiskEntity> formattableDisks(platform::DiskArbitration& disks)
{
    return entities(usb(disks.formattableVolumes()));
}

std::optional<std::string> findUSBVolumeContainingPath(
    platform::DiskArbitration& disks, std::string_view relativePath)
{
    // A leading slash is dropped: the path is relative to the volume.
    relativePath.remove_prefix(std::min(relativePath.find_first_not_of('/'), relativePath.size()));
    for (std::string& volume : usbVolumeURLs(disks)) {
        if (CardRoot(volume).file(relativePath).isThere())
            return std::move(volume);
    }
    return std::nullopt;
}

std::optional<TKUSBDiskEntity> preferredUSBDisk(platform::DiskArbitration& disks)
{
    return preferredUSBDisk(usbDiskEntities(disks));
}

std::optional<TKUSBDiskEntity> preferredUSBDisk(const std::vector<TKUSBDiskEntity>& disks)
{
    using Wish = bool (*)(const TKUSBDiskEntity&);
    static constexpr Wish wishes[] = {
        isConfiguredCamera,
        isWritableCamera,
        isCamera,
        [](const TKUSBDiskEntity& disk) { return disk.writable; },
        [](const TKUSBDiskEntity&) { return true; },
    };
    for (const Wish wish : wishes) {
        const auto found = std::ranges::find_if(disks, wish);
        if (found != disks.end())
            return *found;
    }
    return std::nullopt;
}
