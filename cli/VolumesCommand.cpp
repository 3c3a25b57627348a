#include "cardtools/volumes/Volumes.h"
#include "cli/Commands.h"
#include "cli/JsonWriter.h"
#include "cli/VolumesSource.h"
#include "common/Text.h"
#include "platform/disks/FolderCard.h"

#include <algorithm>
#include <ostream>
#include <utility>

namespace cli {

namespace {

VolumesSource& source()
{
    static VolumesSource kept;
    return kept;
}

/// The cards, the one to use first.
std::vector<TKUSBDiskEntity> cards(platform::DiskArbitration& disks)
{
    std::vector<TKUSBDiskEntity> found = usbDiskEntities(disks);
    const auto preferred = preferredUSBDisk(found);
    std::stable_partition(
        found.begin(), found.end(), [&](const TKUSBDiskEntity& card) { return card.key == preferred->key; });
    return found;
}

void writeJson(std::ostream& out, const std::vector<TKUSBDiskEntity>& found)
{
    JsonWriter json(out);
    json.beginArray();
    for (const TKUSBDiskEntity& card : found) {
        json.beginObject();
        json.key("display").string(card.displayString());
        json.key("volumeName").string(card.volumeName);
        json.key("mountedURL").string(card.mountedURL);
        json.key("deviceFilePath").string(card.deviceFilePath);
        json.key("deviceModel");
        card.deviceModel ? json.string(*card.deviceModel) : json.null();
        json.key("volumeSize").integer(static_cast<int64_t>(card.volumeSize));
        json.key("writable").boolean(card.writable);
        json.key("mediaWhole").boolean(card.mediaWhole);
        json.key("key").string(card.key);
        json.endObject();
    }
    json.endArray();
    json.finish();
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

ExitCode runVolumes(const Arguments& arguments, Streams streams)
{
    std::unique_ptr<platform::DiskArbitration> disks = source() ? source()() : nullptr;
    const bool isSystemKnown = disks != nullptr;
    const auto folder = arguments.value("--card");
    if (folder)
        disks = std::make_unique<platform::FolderCard>(std::string(*folder), std::move(disks));
    else if (!isSystemKnown)
        return failure(streams, "volumes", "this program was built without them");

    const std::vector<TKUSBDiskEntity> found = cards(*disks);
    if (folder && (found.empty() || found.front().deviceFilePath != platform::FolderCard::deviceName))
        return failure(streams, *folder, "is no folder");
    if (arguments.flag == "--json")
        writeJson(streams.out, found);
    else
        writeLines(streams.out, found);
    if (const std::string trouble = disks->trouble(); found.empty() && !trouble.empty())
        return failure(streams, "volumes", trouble);
    return ExitCode::Success;
}

constexpr std::string_view flags[] = {"--json"};
constexpr Option options[] = {{"--card"}};

} // namespace

void setVolumesSource(VolumesSource newSource)
{
    source() = std::move(newSource);
}

const Command volumesCommand = {
    .name = "volumes",
    .synopsis = "[--card FOLDER] [--json]",
    .summary = "Lists the mounted cards, the one that the camera's settings would go to first.",
    .details = "For each card: its line as the windows show it, where it is mounted, its device, size and "
               "flags, and\n"
               "the identity of the medium.\n"
               "--card FOLDER: the folder takes the part of a card, before the others.\n"
               "--json: an array of {\"display\", \"volumeName\", \"mountedURL\", \"deviceFilePath\", "
               "\"deviceModel\"\n"
               "(null when unknown), \"volumeSize\", \"writable\", \"mediaWhole\", \"key\"}.\n"
               "No card is no failure; a system that cannot say is one, unless a folder stands in.\n",
    .fewestOperands = 0,
    .mostOperands = 0,
    .flags = flags,
    .run = runVolumes,
    .options = options,
};

} // namespace cli
