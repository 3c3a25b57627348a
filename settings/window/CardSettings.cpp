#include "settings/window/CardSettings.h"

#include "cardtools/volumes/Volumes.h"
#include "common/CardFiles.h"
#include "common/CardRoot.h"
#include "common/Log.h"
#include "common/ReplaceFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

// A config.bin larger than this is no settings file: it is neither copied nor replaced.
constexpr size_t largestToKeep = 16 * 1024 * 1024;

FilePlace settingsOn(const TKUSBDiskEntity& disk)
{
    return CardRoot(disk.mountedURL).file(cardFiles::settings);
}

std::string settingsPathOn(const TKUSBDiskEntity& disk)
{
    return (fs::path(disk.mountedURL) / cardFiles::settings).native();
}

std::optional<_FILEDATA> asRecord(const std::string& contents)
{
    if (contents.size() != sizeof(_FILEDATA))
        return std::nullopt;
    _FILEDATA record;
    std::memcpy(&record, contents.data(), sizeof record);
    return record;
}

bool isSame(const std::optional<_FILEDATA>& a, const std::optional<_FILEDATA>& b)
{
    return a && b && std::memcmp(&*a, &*b, sizeof *a) == 0;
}

/// The name for the number: "config.bin.bak", "config.bin.bak2", ...
FilePlace copyBeside(const FilePlace& settings, int number)
{
    return settings.sibling(
        settings.name() + cardFiles::copyEnding + (number > 1 ? std::to_string(number) : ""));
}

constexpr int mostCopies = 99;

/// The copy of the record before: the first that is a record of this version.
std::optional<FilePlace> recordBeside(const FilePlace& settings, uint16_t version)
{
    for (int number = 1; number <= mostCopies; ++number) {
        FilePlace copy = copyBeside(settings, number);
        FileError why;
        const auto bytes = copy.contents(sizeof(_FILEDATA), why);
        const auto record = bytes ? asRecord(*bytes) : std::nullopt;
        if (record && record->cfg_ver == version)
            return copy;
        if (!copy.isThere())
            break;
    }
    return std::nullopt;
}

/// The first free name for a copy; nothing when all are taken.
std::optional<FilePlace> freeBeside(const FilePlace& settings)
{
    for (int number = 1; number <= mostCopies; ++number) {
        if (FilePlace copy = copyBeside(settings, number); !copy.isThere())
            return copy;
    }
    return std::nullopt;
}

/// The card that was read, wherever it is mounted now; otherwise the preferred one.
std::optional<TKUSBDiskEntity> diskToWrite(const CardSettings& card, platform::DiskArbitration& disks)
{
    const std::vector<TKUSBDiskEntity> present = usbDiskEntities(disks);
    const auto isTheCard = [&](const TKUSBDiskEntity& disk) {
        return card.disk && disk.key == card.disk->key;
    };
    const auto isWhereItWas = [&](const TKUSBDiskEntity& disk) {
        return isTheCard(disk) && disk.mountedURL == card.disk->mountedURL;
    };
    for (const auto& same :
        {std::ranges::find_if(present, isWhereItWas), std::ranges::find_if(present, isTheCard)}) {
        if (same != present.end())
            return *same;
    }
    // A card that the system no longer lists is written at its old path while no other card is mounted there.
    const bool isReplaced = card.disk
        && std::ranges::find(present, card.disk->mountedURL, &TKUSBDiskEntity::mountedURL) != present.end();
    if (card.disk && !isReplaced && settingsOn(*card.disk).isThere())
        return card.disk;
    return preferredUSBDisk(present);
}

/// Copies the file's contents beside it, unless they equal the new ones.
void keepBefore(const FilePlace& settings, const std::string& contents, SaveOutcome& outcome)
{
    outcome.before = asRecord(contents);
    auto kept = outcome.before ? recordBeside(settings, outcome.before->cfg_ver) : std::nullopt;
    if (!kept)
        kept = freeBeside(settings);
    outcome.error = kept ? replaceFile(*kept, contents) : FileError{EEXIST};
    if (outcome.error) {
        outcome.kind = SaveOutcome::Kind::cannotKeep;
    } else if (!outcome.before) {
        outcome.keptAs = kept->name();
    }
}

/// True without a check when the file does not exist.
bool mayReplace(const FilePlace& settings, const SaveRequest& request, SaveOutcome& outcome)
{
    using Kind = SaveOutcome::Kind;
    if (!settings.isThere())
        return true;
    outcome.kind = Kind::failed;
    const auto contents = settings.contents(largestToKeep, outcome.error);
    if (!contents)
        return false;
    const auto record = asRecord(*contents);
    const _FILEDATA& wanted = request.record.record();
    if (record && !isSame(record, request.known) && !isSame(record, wanted) && !request.mayReplaceOthers) {
        outcome.kind = Kind::othersSettings;
        outcome.before = record;
        return false;
    }
    if (!isSame(record, wanted))
        keepBefore(settings, *contents, outcome);
    return outcome.kind != Kind::cannotKeep;
}

void saveLocked(const FilePlace& settings, const SaveRequest& request, SaveOutcome& outcome)
{
    using Kind = SaveOutcome::Kind;
    const SaveLock lock(settings);
    outcome.error = lock.error();
    if (outcome.error)
        outcome.kind = Kind::failed;
    if (outcome.error || !mayReplace(settings, request, outcome))
        return;
    outcome.error = saveFileData(request.record, settings);
    outcome.kind = outcome.error ? Kind::failed : Kind::saved;
}

} // namespace

CardSettings findUSBVolume(platform::DiskArbitration& disks)
{
    if (usbVolumeURLs(disks).empty()) {
        logLine("no removable devices");
        return {};
    }
    const auto disk = preferredUSBDisk(disks);
    if (!disk)
        return {};
    CardSettings card;
    const CardRoot root(disk->mountedURL);
    // A link counts as there: the reader of the log refuses it and tells the user.
    if (const FilePlace log = root.file(cardFiles::driveLog);
        log.isThere() || log.error().code == FileError::link)
        card.driveLog = log.path();
    const FilePlace settings = root.file(cardFiles::settings);
    if (settings.size() == sizeof(_FILEDATA)) {
        card.path = settings.path();
        card.disk = disk;
        return card;
    }
    card.emptyCard = disk;
    if (settings.isThere() && !settings.size())
        (void)settings.open(card.refusal);
    return card;
}

bool isNamedAsCard(const CardSettings& card)
{
    return !card.disk || card.disk->volumeName == cardFiles::label;
}

NamedCard nameAsCard(const CardSettings& card, platform::DiskArbitration& disks)
{
    const std::string failure = disks.setVolumeName(card.disk->mountedURL, cardFiles::label);
    return failure.empty() ? NamedCard{findUSBVolume(disks), {}} : NamedCard{card, failure};
}

ReadSettings readCardSettings(const CardSettings& card)
{
    ReadSettings read;
    const FilePlace settings = settingsOn(*card.disk);
    _FILEDATA record;
    read.error = readFileData(settings, record);
    if (read.error)
        return read;
    read.record = record;
    const auto copy = recordBeside(settings, record.cfg_ver);
    if (copy && !readFileData(*copy, record))
        read.previous = record;
    return read;
}

SaveOutcome saveToCard(const SaveRequest& request, platform::DiskArbitration& disks)
{
    SaveOutcome outcome;
    outcome.card = request.card;
    const auto disk = diskToWrite(request.card, disks);
    if (!disk)
        return outcome;
    outcome.disk = disk;
    outcome.path = settingsPathOn(*disk);
    const bool isTheCard = request.card.disk && disk->key == request.card.disk->key;
    if (isTheCard) {
        outcome.card.path = outcome.path;
        outcome.card.disk = disk;
    } else if (request.card.disk && !request.mayBeOtherCard) {
        outcome.kind = SaveOutcome::Kind::otherCard;
        return outcome;
    }
    SaveRequest known = request;
    // The settings read from another card are not this one's.
    if (!isTheCard)
        known.known.reset();
    saveLocked(settingsOn(*disk), known, outcome);
    if (outcome.kind == SaveOutcome::Kind::saved && !isTheCard) {
        outcome.card.path = outcome.path;
        outcome.card.disk = disk;
    }
    return outcome;
}

bool readsMiles(platform::DiskArbitration& disks, bool isKorean)
{
    _FILEDATA record;
    initFileDataForRegion(record, isKorean);
    if (const CardSettings card = findUSBVolume(disks); card.disk)
        (void)readFileData(settingsOn(*card.disk), record); // the defaults stay where it cannot be read
    return (record.speed_disp_unit & 0xFF) != 0;
}
