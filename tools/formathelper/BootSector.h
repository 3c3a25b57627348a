#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

/// The expected values in a freshly formatted card's first sectors.
struct WantedFileSystem {
    uint64_t size = 0; // of the volume, in bytes
    long cluster = 0; // sectors per cluster
};

/// Sectors from the start of the volume that `fileSystemFault` looks at: the boot sector, the information
/// sector and their copies.
constexpr size_t checkedBytes = size_t(8) * 512;

/// Compares every field of a FAT32 boot sector, its
/// backup in sector 6 and the information sectors with what the camera needs: 512-byte sectors, 32 reserved
/// ones, 2 allocation tables that reach every cluster, label "ZAVIK". Empty when all is as it should be, else
/// what is not.
std::string fileSystemFault(std::span<const std::byte> start, const WantedFileSystem& wanted);
