#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// One card in a reader, as it was when it was asked for.
struct TKUSBDiskEntity {
    std::string volumeName; // the label, such as "ZAVIK"
    std::string mountedURL; // where it is mounted, a path; empty where that is nowhere
    std::string deviceFilePath; // the device's name, such as "sdb1"
    std::optional<std::string> deviceModel; // the reader's name
    uint64_t volumeSize = 0; // of the medium, in bytes
    bool writable = false; // false for a write-protected card
    bool mediaWhole = false; // the medium is the whole device, not a partition
    std::string key; // identity of the medium
    std::string fileSystem = {}; // the system's name for its file system; empty when unknown
    std::string serial = {}; // the reader's number, if it has one

    /// One line for lists and messages: "[1.9 GB] ZAVIK <Card Reader>".
    std::string displayString() const;

    bool operator==(const TKUSBDiskEntity&) const = default;
};
