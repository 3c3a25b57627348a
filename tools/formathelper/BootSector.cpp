#include "tools/formathelper/BootSector.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

namespace {

constexpr size_t sector = 512;
constexpr size_t backupSector = 6;
constexpr size_t reservedSectors = 32;
constexpr uint64_t tables = 2;

struct Number {
    const char* name;
    size_t offset;
    size_t bytes;
    uint64_t wanted;
};

struct Text {
    const char* name;
    size_t offset;
    std::string_view wanted;
};

uint64_t number(std::span<const std::byte> bytes, size_t offset, size_t count)
{
    uint64_t value = 0;
    for (size_t i = count; i > 0; --i)
        value = value * 256 + std::to_integer<uint64_t>(bytes[offset + i - 1]);
    return value;
}

std::string numberFault(std::span<const std::byte> start, const Number& field)
{
    const uint64_t found = number(start, field.offset, field.bytes);
    if (found == field.wanted)
        return {};
    return std::string(field.name) + " is " + std::to_string(found) + ", not " + std::to_string(field.wanted);
}

std::string fieldFault(std::span<const std::byte> start, const WantedFileSystem& wanted)
{
    const std::array numbers = {
        Number{"bytes per sector", 11, 2, sector},
        Number{"sectors per cluster", 13, 1, static_cast<uint64_t>(wanted.cluster)},
        Number{"reserved sectors", 14, 2, reservedSectors},
        Number{"allocation tables", 16, 1, tables},
        Number{"root entries", 17, 2, 0},
        Number{"16-bit sector count", 19, 2, 0},
        Number{"medium", 21, 1, 0xF8},
        Number{"16-bit table size", 22, 2, 0},
        Number{"sector count", 32, 4, wanted.size / sector},
        Number{"table flags", 40, 2, 0},
        Number{"version", 42, 2, 0},
        Number{"root cluster", 44, 4, 2},
        Number{"information sector", 48, 2, 1},
        Number{"backup boot sector", 50, 2, backupSector},
        Number{"state flags", 65, 1, 0},
        Number{"extended signature", 66, 1, 0x29},
        Number{"boot signature", 510, 2, 0xAA55},
        Number{"information signature", sector, 4, 0x41615252},
        Number{"second information signature", sector + 484, 4, 0x61417272},
    };
    constexpr std::array texts = {
        Text{"label", 71, "ZAVIK      "},
        Text{"file system type", 82, "FAT32   "},
    };
    for (const Number& field : numbers) {
        if (std::string fault = numberFault(start, field); !fault.empty())
            return fault;
    }
    for (const Text& field : texts) {
        if (std::memcmp(start.data() + field.offset, field.wanted.data(), field.wanted.size()) != 0)
            return std::string(field.name) + " is not \"" + std::string(field.wanted) + "\"";
    }
    return {};
}

/// The tables must reach every cluster, and not be larger than that needs by more than a cluster's worth.
std::string tableFault(std::span<const std::byte> start, const WantedFileSystem& wanted)
{
    const auto cluster = static_cast<uint64_t>(wanted.cluster);
    const uint64_t sectors = wanted.size / sector;
    const uint64_t tableSectors = number(start, 36, 4);
    const uint64_t before = reservedSectors + tables * tableSectors;
    if (tableSectors == 0 || before + cluster > sectors)
        return "table size is " + std::to_string(tableSectors);
    const uint64_t clusters = (sectors - before) / cluster;
    const uint64_t needed = ((clusters + 2) * 4 + sector - 1) / sector;
    if (tableSectors < needed || tableSectors > needed + cluster)
        return "table size is " + std::to_string(tableSectors) + ", not " + std::to_string(needed);
    return {};
}

} // namespace

std::string fileSystemFault(std::span<const std::byte> start, const WantedFileSystem& wanted)
{
    if (start.size() < checkedBytes)
        return "the first sectors cannot be read";
    if (std::string fault = fieldFault(start, wanted); !fault.empty())
        return fault;
    if (std::string fault = tableFault(start, wanted); !fault.empty())
        return fault;
    if (!std::ranges::equal(start.first(2 * sector), start.subspan(backupSector * sector, 2 * sector)))
        return "the backup differs from the boot sector";
    return {};
}
