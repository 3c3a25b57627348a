#pragma once

#include "platform/disks/KernelDevice.h"

#include <cstdint>
#include <optional>
#include <string>

namespace platform {

/// How many bytes have been written to a block device since the system knows it: what has arrived there, not
/// what still waits in the system's memory. The name is plain, without "/dev/". Nothing where the kernel does
/// not tell. Only the kernel's counters are read, never the device, so that one that hangs holds up nobody:
/// any thread, the main one, too.
std::optional<uint64_t> writtenBytes(const std::string& deviceName, const SystemRoots& roots = {});

} // namespace platform
