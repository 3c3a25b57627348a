#include "cardtools/volumes/Volumes.h"
#include "cli/Commands.h"
#include "cli/Json.h"
#include "common/Text.h"
#include "platform/disks/FolderCard.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace cli {

namespace {

/// The cards, the one to use first.
std::vector<TKUSBDiskEntity> cards(platform::DiskArbitration& disks)
{
    std::vector<TKUSBDiskEntity> found = usbDiskEntities(disks);
    const auto preferred = preferredUSBDisk(found);
    std::stable_partition(
        found.begin(), found.end(), [&](const TKUSBDiskEntity& card) { return card.key == preferred->key; });
    return found;
}

Json json(const TKUSBDiskEntity& card)
{
    return {{"display", card.displayString()}, {"volumeName", card.volumeName},
        {"mountedURL", card.mountedURL}, {"deviceFilePath", card.deviceFilePath},
        {"deviceModel", card.deviceModel ? Json(*card.deviceModel) : Json()}, {"volumeSize", card.volumeSize},
        {"writable", card.writable}, {"mediaWhole", card.mediaWhole}, {"key", card.key}};
}

void writeLines(std::ostream& out, const std::vector<TKUSBDiskEntity>& found)
{
    for (const TKUSBDiskEntity& card : found) {
        out << visibleText(card.displayString()) << '\n'
            << "    " << visibleText(card.mountedURL) << '\n'
            << "    " << visibleText(card.deviceFilePath) << ", " << card.volumeSize << " bytes, "
            << (card.writable ? "writable" : "write-protected") << ", "
            << (card.mediaWhole ? "whole medium" : "partition") << '\n'
            << "    " << visibleText(card.key) << '\n';
    }
}

} // namespace

ExitCode runVolumes(const VolumesSource& source, const Arguments& arguments, Streams streams)
{
    std::unique_ptr<platform::DiskArbitration> disks = source ? source() : nullptr;
    const bool isSystemKnown = disks != nullptr;
    const auto folder = arguments.value("--card");
    if (folder)
        disks = std::make_unique<platform::FolderCard>(*folder, std::move(disks));
    else if (!isSystemKnown)
        return failure(streams, "volumes", "this program was built without them");

    const std::vector<TKUSBDiskEntity> found = cards(*disks);
    if (folder && (found.empty() || found.front().deviceFilePath != platform::FolderCard::deviceName))
        return failure(streams, *folder, "is no folder");
    if (arguments.has("--json"))
        writeJsonArray(streams.out, found, json) << '\n';
    else
        writeLines(streams.out, found);
    if (const std::string trouble = disks->trouble(); found.empty() && !trouble.empty())
        return failure(streams, "volumes", trouble);
    return ExitCode::success;
}

} // namespace cli
