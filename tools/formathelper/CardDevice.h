#pragma once

#include "cardtools/format/FormatRule.h"
#include "platform/disks/KernelDevice.h"

#include <chrono>
#include <cstddef>
#include <span>
#include <string>

/// The block device that is being formatted. As long as this lives, its number cannot go to another device.
class CardDevice {
public:
    CardDevice(std::string node, platform::KernelDevice expected);
    ~CardDevice();
    CardDevice(const CardDevice&) = delete;
    CardDevice& operator=(const CardDevice&) = delete;

    /// Opens it for this process alone and compares it with what the kernel told; `ok`, or why not.
    FormatStatus open();
    /// What the system said when `open` or a reading failed.
    const std::string& reason() const { return failure; }
    /// Ends the exclusive use, so that a tool can have it; the device stays open.
    void letOthersOpen();

    const std::string& path() const { return node; }
    /// After a failure: what is wrong with the card itself, `ok` when nothing is. A card that is being pulled
    /// fails before it disappears: waits for that.
    FormatStatus trouble(std::chrono::milliseconds patience);
    /// Fills the bytes from the start of the medium, not from the system's cache; `ok`, or what is wrong.
    FormatStatus readFromMedium(std::span<std::byte> bytes);

private:
    FormatStatus failed(int error);
    bool isGone() const;
    bool isReadOnly() const;

    std::string node;
    platform::KernelDevice expected;
    int exclusive = -1;
    int kept = -1;
    std::string failure;
};
