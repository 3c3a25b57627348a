#include "cardtools/format/CardFormat.h"

#include "cardtools/format/FormatRule.h"
#include "cardtools/volumes/Volumes.h"
#include "common/CardFiles.h"
#include "common/CardRoot.h"
#include "common/Log.h"
#include "platform/disks/DiskCommand.h"
#include "platform/disks/FolderCard.h"
#include "platform/disks/OpenFiles.h"
#include "settings/record/FileData.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
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

/// Empty, or why a folder is missing or may not be on the medium yet.
std::string makeFolders(const std::string& root)
{
    const CardRoot card(root);
    std::string why;
    for (const char* const name : cardFiles::recordingFolders) {
        if (const FileError error = card.makeFolder(name); error && why.empty())
            why = std::string(name) + ": " + error.text();
    }
    // Synced, as the user may pull the card as soon as the window reports the end.
    return why.empty() ? card.sync().text() : why;
}

} // namespace

CardFormat::CardFormat(
    platform::ScriptRunner& runner, platform::DiskArbitration& arbitration, std::string copies, Say report)
    : scripts(runner),
      disks(arbitration),
      config(std::move(copies)),
      say(std::move(report))
{
}

CardFormat::~CardFormat()
{
    if (!isTouched)
        config.drop();
}

bool CardFormat::cancel()
{
    Will before = Will::open;
    return will.compare_exchange_strong(before, Will::cancelled) || before == Will::cancelled;
}

bool CardFormat::commit()
{
    Will before = Will::open;
    return will.compare_exchange_strong(before, Will::committed);
}

std::optional<TKUSBDiskEntity> CardFormat::find(const std::vector<TKUSBDiskEntity>& present) const
{
    const auto found =
        std::ranges::find_if(present, [&](const TKUSBDiskEntity& disk) { return isSameMedium(disk, card); });
    return found == present.end() ? std::nullopt : std::optional(*found);
}

ErrorDictionary CardFormat::refusal(const std::vector<TKUSBDiskEntity>& present) const
{
    const auto onDevice = std::ranges::find(present, card.deviceFilePath, &TKUSBDiskEntity::deviceFilePath);
    if (onDevice == present.end())
        return asError(FormatStatus::cardGone);
    if (onDevice->mediaWhole != card.mediaWhole)
        return asError(FormatStatus::otherMedium);
    FormatFacts facts;
    facts.device = platform::isPlainDeviceName(card.deviceFilePath)
        && card.deviceFilePath != platform::FolderCard::deviceName;
    facts.systemDisk = std::ranges::any_of(present, [&](const TKUSBDiskEntity& disk) {
        return disk.deviceFilePath == card.deviceFilePath && !disk.mountedURL.empty()
            && isSystemPlace(disk.mountedURL);
    });
    facts.card = true;
    facts.writable = onDevice->writable;
    facts.size = onDevice->volumeSize;
    facts.sizeSeen = card.volumeSize;
    facts.medium = onDevice->key;
    facts.mediumSeen = card.key;
    facts.cluster = clusterSizeByVolumeSizeInKB(card.volumeSize);
    return asError(mayFormat(facts));
}

/// Empty, or why the settings that may be on the card cannot be copied aside.
std::string CardFormat::takeConfig(ErrorDictionary& mountError)
{
    say(Phase::copying);
    if (card.mountedURL.empty() && !card.fileSystem.empty()) {
        mountError = mount();
        if (const auto now = find(formattableDisks(disks)))
            card = *now;
        if (card.mountedURL.empty())
            return std::strerror(ENODEV);
    }
    return card.mountedURL.empty() ? std::string() : config.take(card.mountedURL);
}

ErrorDictionary CardFormat::unmount(Outcome& outcome)
{
    say(Phase::unmounting);
    const char* const verb = card.mediaWhole ? "diskutil umountDisk" : "diskutil umount";
    ErrorDictionary error = runShellScript(scripts, command(verb, card), false);
    if (error.empty())
        return {};
    // No password is asked for when the card is gone; it may have been unmounted already.
    const auto now = find(formattableDisks(disks));
    if (!now)
        return asError(FormatStatus::cardGone);
    if (now->mountedURL.empty())
        return {};
    outcome.stillOpen = platform::openFilesBelow(now->mountedURL);
    // A tool's exit status is no FormatStatus.
    if (errorNumber(error) > 0)
        error["NSAppleScriptErrorNumber"] = static_cast<int>(FormatStatus::stillMounted);
    return error;
}

ErrorDictionary CardFormat::format()
{
    say(Phase::formatting);
    return runShellScript(scripts,
        formatted("sudo newfs_msdos -v ZAVIK -F 32 -n 2 -k 6 -r 32 -c %ld %s",
            clusterSizeByVolumeSizeInKB(card.volumeSize), card.deviceFilePath.c_str()),
        true);
}

ErrorDictionary CardFormat::mount()
{
    return runShellScript(scripts, command("diskutil mount", card), false);
}

/// The cards that there are now.
CardFormat::Outcome CardFormat::withDisks(Step step)
{
    Outcome outcome;
    outcome.step = step;
    outcome.card = card;
    outcome.disks = formattableDisks(disks);
    if (const auto found = find(outcome.disks)) {
        outcome.isThere = true;
        outcome.card = *found;
    }
    return outcome;
}

CardFormat::Outcome CardFormat::prepare(const TKUSBDiskEntity& chosen)
{
    say(Phase::looking);
    card = chosen;
    // Before the card is looked at: one that is put in its place from here on is refused as another medium.
    scripts.chooseMedium({chosen.deviceFilePath, chosen.volumeSize});
    const auto present = formattableDisks(disks);
    if (ErrorDictionary error = refusal(present); !error.empty()) {
        Outcome outcome = withDisks(Step::formatFailed);
        outcome.error = std::move(error);
        return outcome;
    }
    // Another card may be mounted there since the choice.
    card = find(present).value_or(chosen);
    ErrorDictionary error;
    const std::string why = takeConfig(error);
    Outcome outcome = withDisks(why.empty() ? Step::done : Step::copyAsideFailed);
    outcome.error = std::move(error);
    outcome.text = why;
    return outcome;
}

CardFormat::Outcome CardFormat::giveUp()
{
    config.drop();
    return withDisks(Step::cancelled);
}

CardFormat::Outcome CardFormat::run()
{
    isTouched = true;
    Outcome outcome;
    outcome.step = Step::formatFailed;
    outcome.error = unmount(outcome);
    if (outcome.error.empty() && !commit())
        outcome.step = Step::cancelled;
    else if (outcome.error.empty())
        outcome.error = format();
    if (outcome.step == Step::cancelled || !outcome.error.empty())
        return failed(std::move(outcome));
    say(Phase::mounting);
    const ErrorDictionary mountError = mount();
    say(Phase::finishing);
    return finish(mountError);
}

CardFormat::Outcome CardFormat::failed(Outcome outcome)
{
    mount();
    Outcome ended = withDisks(outcome.step);
    ended.error = std::move(outcome.error);
    ended.stillOpen = std::move(outcome.stillOpen);
    if (ended.isThere && config.isOn(ended.card.mountedURL))
        config.drop();
    ended.keptCopy = config.path();
    return ended;
}

CardFormat::Outcome CardFormat::finish(const ErrorDictionary& mountError)
{
    Outcome outcome = withDisks(Step::done);
    const std::string& root = outcome.card.mountedURL;
    if (!outcome.isThere || root.empty()) {
        outcome.step = Step::cardNotFound;
        outcome.error = mountError;
        outcome.keptCopy = config.path();
        return outcome;
    }
    if (!config.path().empty()) {
        outcome.text = config.putBack(root);
        if (!outcome.text.empty()) {
            outcome.step = Step::configFailed;
            outcome.keptCopy = config.path();
            logFormat("cannot put the settings back: %s", outcome.text.c_str());
            return outcome;
        }
    } else if (const FileError why = writeDefaultFileData(CardRoot(root).file(cardFiles::settings))) {
        outcome.step = Step::defaultFailed;
        outcome.text = "msg.file_open_fail";
        logFormat("cannot write the default settings: %s", why.text().c_str());
        return outcome;
    }
    outcome.text = makeFolders(root);
    if (outcome.text.empty())
        config.drop(); // synced: the card has the settings
    else
        outcome.step = Step::foldersFailed;
    outcome.keptCopy = config.path();
    return outcome;
}
