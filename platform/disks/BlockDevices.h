#pragma once

#include "platform/DiskArbitration.h"
#include "platform/disks/MountTable.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A block device as UDisks2 (org.freedesktop.UDisks2.Block and its relatives) and the kernel know it.
/// What refers to another object holds its D-Bus path; empty when there is none.
struct Block {
    std::string object;
    std::string device; // without "/dev/": "sdb1", "dm-0"
    std::string drive;
    std::string table; // of a partition: the block device that it is part of
    std::string cryptoBacking; // of an opened container: the block device that holds it
    std::string raid; // of an array: the array's object
    std::string raidMember; // of a part of an array: the array's object
    std::string backingFile; // of a loop device
    std::vector<std::string> slaves; // devices that this one is mapped onto by the kernel
    std::string type; // of the contents: "vfat", "crypto_LUKS"
    std::string uuid; // of the contents
    std::string label;
    uint64_t size = 0;
    bool readOnly = false;
    bool systemHint = false;
    bool isSwap = false; // in use right now
    bool isFilesystem = false;
    bool isContainer = false; // a partition that only holds others
    std::vector<std::string> mountPoints;
};

/// What a medium is in, as UDisks2 knows it (org.freedesktop.UDisks2.Drive).
struct Drive {
    std::string object;
    std::string bus; // "usb", "sdio"
    std::string vendor;
    std::string model;
    std::string serial;
    std::string medium; // "flash_sdhc"; often empty
    std::vector<std::string> media; // that fit
    bool mediaRemovable = false; // as the kernel says
    uint64_t mediaDetected = 0; // when; another one for another medium
};

/// Everything that is there at one moment, in the order of the devices' names.
struct BlockDevices {
    std::vector<Block> blocks;
    std::vector<Drive> drives;
    std::vector<Mount> mounts;
    std::vector<std::string> swaps;

    const Block* block(std::string_view device) const;
    const Block* mountedAt(std::string_view mountPath) const;
    const Drive* driveOf(const Block& block) const;
};

/// Whether the running system needs the drive that the device belongs to: the drive, a part of it, or what is
/// built on one of them (encryption, volumes, arrays, a file used as a device) holds a system's mount or
/// swap, or UDisks2 marks it as a system's drive. False for a device that is not there.
bool holdsSystem(const BlockDevices& devices, std::string_view device);

/// The mounted file systems. Removable are media that can be taken out of their drive, also a card in a
/// built-in slot, unless the drive holds the system or is the machine's built-in flash memory.
std::vector<VolumeDescription> describedVolumes(const BlockDevices& devices);

/// What may be formatted for a camera: every partition of a removable medium, or the whole of one that has
/// none. The paths of what is not mounted are empty.
std::vector<VolumeDescription> formattableVolumes(const BlockDevices& devices);

} // namespace platform
