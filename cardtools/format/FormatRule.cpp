#include "cardtools/format/FormatRule.h"

#include "platform/disks/MountTable.h"

#include <algorithm>
#include <array>

namespace {

// The boot sector counts 512-byte sectors in 32 bits.
constexpr uint64_t largestSize = uint64_t(0xFFFFFFFF) * 512;

struct StatusKey {
    FormatStatus status;
    const char* key;
};

constexpr std::array statusKeys = {
    StatusKey{FormatStatus::writeProtected, "msg.write_protected_disk"},
    StatusKey{FormatStatus::wrongUse, "format.wrong_use"},
    StatusKey{FormatStatus::toolMissing, "format.tool_missing"},
    StatusKey{FormatStatus::toolFailed, "format.tool_failed"},
    StatusKey{FormatStatus::tookTooLong, "format.took_too_long"},
    StatusKey{FormatStatus::notAsAsked, "format.not_as_asked"},
    StatusKey{FormatStatus::notClean, "format.not_clean"},
    StatusKey{FormatStatus::cardGone, "format.card_gone"},
    StatusKey{FormatStatus::notADevice, "format.not_a_device"},
    StatusKey{FormatStatus::systemDisk, "format.system_disk"},
    StatusKey{FormatStatus::swapSpace, "format.system_disk"},
    StatusKey{FormatStatus::heldByOthers, "format.held_by_others"},
    StatusKey{FormatStatus::notACard, "format.not_a_card"},
    StatusKey{FormatStatus::otherSize, "format.other_card"},
    StatusKey{FormatStatus::otherMedium, "format.other_card"},
    StatusKey{FormatStatus::stillMounted, "format.still_mounted"},
    StatusKey{FormatStatus::tooLarge, "format.too_large"},
    StatusKey{FormatStatus::wrongCluster, "format.wrong_use"},
    StatusKey{FormatStatus::mediumErrors, "format.medium_errors"},
    StatusKey{FormatStatus::stillWorking, "format.still_working"},
};

} // namespace

FormatStatus mayFormat(const FormatFacts& facts)
{
    using enum FormatStatus;
    if (!facts.device)
        return notADevice;
    if (facts.systemDisk)
        return systemDisk;
    if (facts.swapSpace)
        return swapSpace;
    if (facts.held)
        return heldByOthers;
    if (!facts.card)
        return notACard;
    if (facts.size == 0 || facts.size != facts.sizeSeen)
        return otherSize;
    if (facts.medium.empty() || facts.medium != facts.mediumSeen)
        return otherMedium;
    if (facts.mounted)
        return stillMounted;
    if (facts.size > largestSize)
        return tooLarge;
    if (facts.cluster != clusterSizeByVolumeSizeInKB(facts.size))
        return wrongCluster;
    return facts.writable ? ok : writeProtected;
}

long clusterSizeByVolumeSizeInKB(uint64_t volumeSize)
{
    return (volumeSize >> 30) < 7 ? 32 : 128;
}

bool isSystemPlace(std::string_view mountPath)
{
    return !mountPath.empty() && platform::isSystemMount(mountPath);
}

std::string formatStatusKey(int number)
{
    const auto* const found = std::ranges::find_if(
        statusKeys, [&](const StatusKey& entry) { return static_cast<int>(entry.status) == number; });
    return found == statusKeys.end() ? std::string() : found->key;
}
