#pragma once

#include "cardtools/volumes/TKUSBDiskEntity.h"
#include "common/FilePlace.h"
#include "platform/DiskArbitration.h"
#include "settings/record/FileData.h"

#include <optional>
#include <string>

// The camera's settings on its card. Callable from any thread; the system's answer may take seconds, and a
// card that hangs any time.

/// What a card holds for the settings window.
struct CardSettings {
    std::string path; // of config.bin; empty when no card holds one
    std::optional<TKUSBDiskEntity> disk; // with the path only
    /// The card to save to when none holds settings.
    std::optional<TKUSBDiskEntity> emptyCard;
    /// Of the card's drive log; empty when it has none.
    std::string driveLog;
    /// Why the card's config.bin is not touched: it is a link or no file.
    FileError refusal;
};

/// The preferred card, when its config.bin has a record's size.
CardSettings findUSBVolume(platform::DiskArbitration& disks);

/// True when the card is named "ZAVIK", or there is no card.
bool isNamedAsCard(const CardSettings& card);
struct NamedCard {
    CardSettings card; // where it is mounted now
    std::string failure; // why it could not be named; then the card is as it was
};
/// Names the card that was found "ZAVIK", for which it is unmounted: nothing on it may be in use.
NamedCard nameAsCard(const CardSettings& card, platform::DiskArbitration& disks);

/// What was read from a card.
struct ReadSettings {
    std::optional<_FILEDATA> record; // nothing when it cannot be read
    /// The record before the latest save, which is kept beside the settings.
    std::optional<_FILEDATA> previous;
    FileError error; // why there is no record
};
ReadSettings readCardSettings(const CardSettings& card);

/// What is to be saved.
struct SaveRequest {
    FinishedFileData record;
    /// Where the record was read from; its `path` is empty when it was not read from a card.
    CardSettings card = {};
    /// What the file held when the window read or wrote it.
    std::optional<_FILEDATA> known = {};
    /// The user has agreed to save to another card than the one that was read, or over settings other than
    /// `known`.
    bool mayBeOtherCard = false;
    bool mayReplaceOthers = false;
};

struct SaveOutcome {
    enum class Kind {
        saved,
        failed, // `error` says why; the file is as it was
        noCard, // nothing was written; the user has to say where
        otherCard, // the card that was read is gone, and this is another one; nothing was written
        othersSettings, // the file holds settings that this window does not know; nothing was written
        cannotKeep, // what the file holds cannot be kept beside it; nothing was written
    };

    Kind kind = Kind::noCard;
    /// The card of the request as it is mounted now, or the one that was saved to.
    CardSettings card;
    /// The card that is asked about.
    std::optional<TKUSBDiskEntity> disk;
    std::string path; // of the file
    FileError error;
    /// What was in the file and is no record is kept beside it under this name; empty otherwise.
    std::string keptAs;
    /// othersSettings: what the file holds. saved: what it held, kept beside it.
    std::optional<_FILEDATA> before;
};

/// Saves the record to the config.bin of the card that was read, also when it is mounted elsewhere by now,
/// else to that of the preferred card. Other programs of ours wait meanwhile. The record that the file held
/// is kept beside it as "config.bin.bak"; other contents are kept under a name that is free.
[[nodiscard]] SaveOutcome saveToCard(const SaveRequest& request, platform::DiskArbitration& disks);

/// What speed_disp_unit of the card's settings says, or of the defaults when no card holds any. Only reads.
bool readsMiles(platform::DiskArbitration& disks, bool isKorean);
