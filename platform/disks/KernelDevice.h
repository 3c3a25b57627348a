#pragma once

#include "platform/disks/DeviceNumber.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace platform {

/// Where the system describes its devices, and how their nodes are read.
struct SystemRoots {
    std::string sys = "/sys";
    std::string proc = "/proc";
    std::string dev = "/dev";
    std::function<std::string(const std::string& path)> numberAt = [](const auto& path) {
        return blockNumber(path);
    };
    std::function<std::vector<std::string>(const std::string& node, const std::string& number)> backing =
        loopBacking;
};

/// The kernel's facts about a block device, its disk and what is built on that.
struct KernelDevice {
    struct Use {
        std::string place;
        bool own = false; // of the device itself (of the whole disk: any partition's), not of a sibling
    };
    struct User {
        int process = 0;
        std::string name;
    };
    struct Part {
        std::string name;
        std::string number;
        bool used = false; // by something that is known here: a mount, swap, or what is built on it
    };

    bool known = false; // there is such a device, and everything below could be read
    bool whole = false; // a disk, not a partition
    bool readOnly = false;
    uint64_t size = 0; // in bytes
    std::string number; // "8:17"
    std::string sequence; // of the disk: another one for another medium; "-" where the kernel does not count

    bool removable = false; // of the disk
    bool usb = false; // the disk is plugged in by USB
    bool sdCard = false; // the disk is a card in an SD slot, not memory that is soldered in
    bool loop = false; // the disk is a file

    // The device is a part of something larger: encryption, a volume group, an array, a file system over
    // several devices.
    bool held = false;
    bool swap = false; // the disk, or something that is built on it, has swap space in use
    std::vector<Use> mounts; // of the disk's partitions and of everything that is built on them
    std::vector<User> users; // programs that have it or its disk open: file systems in user space, machines
    std::vector<Part> parts; // the disk's partitions, without the device itself
};

/// Looks the device up; its name is plain, without "/dev/".
KernelDevice kernelDevice(const std::string& name, const SystemRoots& roots = {});

} // namespace platform
