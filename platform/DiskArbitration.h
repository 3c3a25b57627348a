#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// A mounted volume and the medium that it lies on, as the system describes them. Paths and labels are UTF-8.
struct VolumeDescription {
    std::string mountPath;
    /// Absent counts as not removable. Never true for a drive that the system itself runs from.
    std::optional<bool> removable;
    /// "USB" for a card or drive in a USB reader and for a card in a built-in SD or MMC slot.
    std::string protocol;
    /// Without "/dev/": "sdb1", "mmcblk0p1". Empty when there is no device behind the volume.
    std::string deviceName;
    /// The reader's name.
    std::optional<std::string> deviceModel;
    uint64_t size = 0; // of the medium, in bytes
    bool writable = false;
    /// The medium is the whole device, not a partition.
    bool whole = false;
    std::string label;
    /// Identifies the medium as long as it is plugged in.
    std::string mediaPath;
    /// Of the file system: the same wherever it is mounted and whatever its label. Empty when there is none.
    std::string uuid = {};
    /// The system's name for what the medium holds: "vfat". Empty when unknown.
    std::string fileSystem = {};
    /// The drive's serial number; readers often have none, or all the same.
    std::string serial = {};
};

/// Reports until it is destroyed.
class MountWatch {
public:
    virtual ~MountWatch() = default;
};

/// The system's list of mounted volumes. Callable from any thread; a call may take as long as its time limit.
class DiskArbitration {
public:
    virtual ~DiskArbitration() = default;

    /// In the system's order. Empty, with the reason in `trouble`, when the system cannot say. A volume that
    /// cannot be described is left out.
    virtual std::vector<VolumeDescription> mountedVolumes() = 0;

    /// What may be formatted for a camera: the removable media and partitions, mounted (`mountPath`) or not,
    /// with a file system or without. `writable` is the medium's here, not the mount's.
    virtual std::vector<VolumeDescription> formattableVolumes() = 0;

    /// Why the system could not say what is mounted when it was asked last; empty when it could.
    virtual std::string trouble() { return {}; }

    /// Changes the label of the volume that is mounted there. Empty on success, otherwise why not.
    virtual std::string setVolumeName(const std::string& mountPath, const std::string& name) = 0;

    /// Calls `changed` on the main thread whenever a volume may have been mounted, unmounted or moved,
    /// perhaps several times for one change. Main thread only. Null when the system cannot report changes.
    [[nodiscard]] virtual std::unique_ptr<MountWatch> watchMounts(std::function<void()> changed) = 0;
};

} // namespace platform
