#pragma once

#include "platform/disks/KernelDevice.h"

#include <string>

/// Which of the disk's partitions, the device itself among them, belongs to something that no table here
/// tells: it is claimed although nothing that is known uses it (a medium that is mounted before the system's
/// start or for other programs only), or it is a part of a storage pool. Empty when none does.
std::string foreignPart(
    const std::string& name, const platform::KernelDevice& device, const std::string& dev);
