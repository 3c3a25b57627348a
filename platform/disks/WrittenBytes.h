#pragma once

#include "platform/disks/KernelDevice.h"

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

/// How many bytes have been written to a block device since the system knows it: what has reached the device,
/// without what is still cached. The name is plain, without "/dev/". Nothing where the kernel does not tell.
/// Reads only the kernel's counters, so a device that hangs does not block it. Any thread, also the main one.
std::optional<uint64_t> writtenBytes(const std::string& deviceName, const SystemRoots& roots = {});

} // namespace platform
