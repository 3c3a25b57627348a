#pragma once

#include "cardtools/volumes/TKUSBDiskEntity.h"
#include "common/ByteCount.h"
#include "platform/DiskArbitration.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The camera's card among the mounted volumes. Nothing is kept between the calls: each asks the system.

/// Mount paths of the volumes whose removable flag is set, in the system's order.
std::vector<std::string> removableVolumeURLs(platform::DiskArbitration& disks);

/// Of these, the ones whose device protocol is "USB".
std::vector<std::string> usbVolumeURLs(platform::DiskArbitration& disks);

/// The removable "USB" volumes that have a device, described.
std::vector<TKUSBDiskEntity> usbDiskEntities(platform::DiskArbitration& disks);

/// What may be formatted: removable "USB" media and partitions, mounted or not; they are writable when their
/// medium is.
std::vector<TKUSBDiskEntity> formattableDisks(platform::DiskArbitration& disks);

/// The first USB volume that holds a file or folder of this path, relative to its root.
std::optional<std::string> findUSBVolumeContainingPath(
    platform::DiskArbitration& disks, std::string_view relativePath);

/// The card to use: a writable one labelled "ZAVIK" with a config.bin first, then a writable "ZAVIK", any
/// "ZAVIK", any writable one, the first one.
std::optional<TKUSBDiskEntity> preferredUSBDisk(platform::DiskArbitration& disks);
std::optional<TKUSBDiskEntity> preferredUSBDisk(const std::vector<TKUSBDiskEntity>& disks);
