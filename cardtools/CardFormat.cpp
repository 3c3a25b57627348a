#include "cardtools/CardFormat.h"

#include "cardtools/ConfigCopy.h"
#include "cardtools/FormatRule.h"
#include "cardtools/Volumes.h"
#include "common/Log.h"
#include "platform/CardRoot.h"
#include "platform/DiskCommand.h"
#include "platform/FolderCard.h"
#include "settings/FileData.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace {

namespace fs = std::filesystem;

bool isSameMedium(const TKUSBDiskEntity& a, const TKUSBDiskEntity& b)
{
    return a.deviceFilePath == b.deviceFilePath && a.key == b.key && a.volumeSize == b.volumeSize
        && a.mediaWhole == b.mediaWhole;
}

std::string command(const char* format, const TKUSBDiskEntity& card)
{
    return std::string(format) + " " + card.deviceFilePath;
}

ErrorDictionary asError(FormatStatus status)
{
    if (status == FormatStatus::ok)
        return {};
    return {
        {"NSAppleScriptErrorNumber", static_cast<int>(status)}, {"NSAppleScriptErrorMessage", std::string()}};
}

/// Empty, or why one of them is missing or may not outlive a pulled card.
std::string makeFolders(const std::string& root)
{
    const platform::CardRoot card(root);
    std::string why;
    for (const char* const name : {"AlwaysMovie", "EventMovie", "MotionMovie"}) {
        if (const platform::FileError error = card.makeFolder(name); error && why.empty())
            why = std::string(name) + ": " + error.text();
    }
    // Once the user reads that the card is done, it may be pulled.
    return why.empty() ? card.sync().text() : why;
}

} // namespace

CardFormat::CardFormat(platform::ScriptRunner& runner, platform::DiskArbitration& arbitration, Say report)
    : scripts(runner),
      disks(arbitration),
      say(std::move(report))
{
}

std::optional<TKUSBDiskEntity> CardFormat::find(
    const TKUSBDiskEntity& card, const std::vector<TKUSBDiskEntity>& present) const
{
    const auto found =
        std::ranges::find_if(present, [&](const TKUSBDiskEntity& disk) { return isSameMedium(disk, card); });
    return found == present.end() ? std::nullopt : std::optional(*found);
}

ErrorDictionary CardFormat::refusal(
    const TKUSBDiskEntity& chosen, const std::vector<TKUSBDiskEntity>& present)
{
    const auto onDevice = std::ranges::find(present, chosen.deviceFilePath, &TKUSBDiskEntity::deviceFilePath);
    if (onDevice == present.end())
        return asError(FormatStatus::cardGone);
    if (onDevice->mediaWhole != chosen.mediaWhole)
        return asError(FormatStatus::otherMedium);
    FormatFacts facts;
    facts.device = platform::isPlainDeviceName(chosen.deviceFilePath)
        && chosen.deviceFilePath != platform::FolderCard::deviceName;
    facts.systemDisk = std::ranges::any_of(present, [&](const TKUSBDiskEntity& disk) {
        return disk.deviceFilePath == chosen.deviceFilePath && isSystemPlace(disk.mountedURL);
    });
    facts.card = true;
    facts.writable = onDevice->writable;
    facts.size = onDevice->volumeSize;
    facts.sizeSeen = chosen.volumeSize;
    facts.medium = onDevice->key;
    facts.mediumSeen = chosen.key;
    facts.cluster = clusterSizeByVolumeSizeInKB(chosen.volumeSize);
    return asError(mayFormat(facts));
}

/// Empty, or why the settings that are on the card cannot be copied aside.
std::string CardFormat::takeConfig(
    const TKUSBDiskEntity& chosen, const std::vector<TKUSBDiskEntity>& present, ConfigCopy& config) const
{
    // Where the card was when it was chosen, another card may be by now.
    const auto now = find(chosen, present);
    return now && !now->mountedURL.empty() ? config.take(now->mountedURL) : std::string();
}

ErrorDictionary CardFormat::unmount(const TKUSBDiskEntity& card)
{
    say("unmount disk...");
    const char* const verb = card.mediaWhole ? "diskutil umountDisk" : "diskutil umount";
    ErrorDictionary error = runShellScript(scripts, command(verb, card), false);
    // It may have been unmounted already. Asking for a password only makes sense when it is.
    if (!error.empty() && !find(card, usbDiskEntities(disks)))
        error.clear();
    // A tool's exit status is none of the numbers that tell the user what a format came to.
    if (errorNumber(error) > 0)
        error["NSAppleScriptErrorNumber"] = static_cast<int>(FormatStatus::stillMounted);
    return error;
}

ErrorDictionary CardFormat::format(const TKUSBDiskEntity& card)
{
    say("formatting...");
    return runShellScript(scripts,
        formatted("sudo newfs_msdos -v ZAVIK -F 32 -n 2 -k 6 -r 32 -c %ld %s",
            clusterSizeByVolumeSizeInKB(card.volumeSize), card.deviceFilePath.c_str()),
        true);
}

ErrorDictionary CardFormat::mount(const TKUSBDiskEntity& card)
{
    return runShellScript(scripts, command("diskutil mount", card), false);
}

CardFormat::Outcome CardFormat::run(const TKUSBDiskEntity& chosen)
{
    Outcome outcome;
    outcome.card = chosen;
    ConfigCopy config;
    // Before the look at what is there: a card that takes its place from here on is another medium.
    scripts.chooseMedium({chosen.deviceFilePath, chosen.volumeSize});
    const auto present = usbDiskEntities(disks);
    if (ErrorDictionary error = refusal(chosen, present); !error.empty()) {
        outcome.step = Step::formatFailed;
        outcome.error = std::move(error);
    } else {
        outcome.text = takeConfig(chosen, present, config);
        outcome.step = outcome.text.empty() ? Step::done : Step::copyAsideFailed;
    }
    if (outcome.step != Step::done) {
        say("Disk searching...");
        outcome.disks = usbDiskEntities(disks);
        return outcome;
    }
    ErrorDictionary error = unmount(chosen);
    if (error.empty())
        error = format(chosen);
    if (!error.empty())
        return failed(chosen, std::move(error), config);
    say("try mount...");
    const ErrorDictionary mountError = mount(chosen);
    say("Format completed!");
    return finish(chosen, mountError, config);
}

CardFormat::Outcome CardFormat::failed(const TKUSBDiskEntity& card, ErrorDictionary error, ConfigCopy& config)
{
    mount(card);
    say("Disk searching...");
    Outcome outcome{Step::formatFailed, card, std::move(error), {}, {}, usbDiskEntities(disks)};
    const auto found = find(card, outcome.disks);
    if (config.isThere() && !(found && config.isOn(found->mountedURL)))
        outcome.keptCopy = config.keep();
    return outcome;
}

CardFormat::Outcome CardFormat::finish(
    const TKUSBDiskEntity& card, const ErrorDictionary& mountError, ConfigCopy& config)
{
    say("Disk searching...");
    Outcome outcome{Step::done, card, {}, {}, {}, usbDiskEntities(disks)};
    const auto found = find(card, outcome.disks);
    if (!found || found->mountedURL.empty()) {
        outcome.step = Step::cardNotFound;
        outcome.text = errorMessage(mountError);
        outcome.keptCopy = config.keep();
        return outcome;
    }
    outcome.card = *found;
    if (config.isThere()) {
        outcome.text = config.putBack(found->mountedURL);
        if (!outcome.text.empty()) {
            outcome.step = Step::configFailed;
            outcome.keptCopy = config.keep();
            logFormat("error=%s", outcome.text.c_str());
            return outcome;
        }
    } else if (auto why = writeDefaultFileData(platform::CardRoot(found->mountedURL).file("config.bin"))) {
        outcome.step = Step::defaultFailed;
        outcome.text = *why;
        return outcome;
    }
    outcome.text = makeFolders(found->mountedURL);
    if (!outcome.text.empty())
        outcome.step = Step::foldersFailed;
    return outcome;
}
