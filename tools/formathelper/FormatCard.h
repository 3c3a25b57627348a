#pragma once

#include "cardtools/format/FormatRule.h"
#include "platform/disks/KernelDevice.h"

#include <chrono>
#include <functional>
#include <span>
#include <string>
#include <string_view>

/// What the format helper was asked for. All of it is checked.
struct FormatRequest {
    std::string device; // without "/dev/"
    long cluster = 0; // sectors per cluster
    uint64_t sizeSeen = 0; // of the card that the user chose, in bytes
    std::string sequenceSeen; // of its medium, "-" where the kernel does not count media
};

/// The four arguments as a request; false when they are none.
bool readRequest(std::span<const std::string_view> arguments, FormatRequest& request);

/// The helper's settings. The installed program uses the defaults.
struct FormatPolicy {
    platform::SystemRoots roots = {};
    bool acceptsLoopDevices = false; // a file may stand in for a card
    std::string mkfs = "/usr/sbin/mkfs.fat";
    std::string fsck = "/usr/sbin/fsck.fat";
    std::chrono::milliseconds mkfsLimit{6 * 60'000};
    std::chrono::milliseconds fsckLimit{4 * 60'000};
    // How long others may have the device open, and how long a card takes to be seen gone.
    std::chrono::milliseconds patience{3'000};
    std::function<void()> opened = {}; // told when the device has been opened
};

struct FormatResult {
    FormatStatus status = FormatStatus::ok;
    std::string detail; // one line, for the user and the log
};

/// What the kernel says about the device, as the rule's facts.
FormatFacts gatheredFacts(
    const FormatRequest& request, const FormatPolicy& policy, const platform::KernelDevice& device);

/// Makes the file system: checks the device again, opens it for itself alone, formats it, reads back what is
/// on it and has it checked. Nothing is written unless the rule allows it.
FormatResult formatCard(const FormatRequest& request, const FormatPolicy& policy);

/// The whole program: arguments, the format, the line on standard error. Returns the exit status.
int formatHelperMain(int argc, char** argv, const FormatPolicy& policy);
