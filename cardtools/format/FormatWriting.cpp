#include "cardtools/format/FormatWriting.h"

#include "cardtools/format/FormatRule.h"

#include <algorithm>
#include <utility>

uint64_t bytesOfFormat(uint64_t volumeSize)
{
    constexpr uint64_t sector = 512;
    constexpr uint64_t reserved = 32; // sectors
    constexpr uint64_t tables = 2;
    constexpr uint64_t entry = 4; // bytes of a table, for each cluster and for two more
    const uint64_t sectors = volumeSize / sector;
    if (sectors <= reserved)
        return 0;
    // A cluster needs its own bytes and its table entries; the two reserved entries need theirs.
    const auto cluster = static_cast<uint64_t>(clusterSizeByVolumeSizeInKB(volumeSize));
    const uint64_t clusters =
        ((sectors - reserved) * sector + tables * 2 * entry) / (cluster * sector + tables * entry);
    const uint64_t table = ((clusters + 2) * entry + sector - 1) / sector;
    return (reserved + tables * table + cluster) * sector;
}

FormatWriting::FormatWriting(uint64_t volumeSize, Count count)
    : whole(bytesOfFormat(volumeSize)),
      written(std::move(count)),
      before(written ? written() : std::nullopt)
{
}

double FormatWriting::share()
{
    const auto now = before && whole > 0 ? written() : std::nullopt;
    if (now && *now > *before)
        latest = std::clamp(double(*now - *before) / double(whole), latest, 1.0);
    return latest;
}
