#pragma once

#include "cardtools/TKUSBDiskEntity.h"
#include "platform/DiskArbitration.h"
#include "settings/FileData.h"

#include <optional>
#include <string>

// The camera's settings on its card. Callable from any thread; the system's answer may take seconds.

/// Where a card holds the settings; both empty when none does.
struct CardSettings {
    std::string path; // of config.bin
    std::optional<TKUSBDiskEntity> disk;
};

/// The preferred card, when its config.bin has a record's size.
CardSettings findUSBVolume(platform::DiskArbitration& disks);

/// Whether there is no card, or it has the camera's name for it, "ZAVIK".
bool isNamedAsCard(const CardSettings& card);
/// Names the card that was found "ZAVIK", for which it is unmounted: nothing on it may be in use. Where it is
/// then; when it cannot be named the reason is logged and the card is as it was.
CardSettings nameAsCard(const CardSettings& card, platform::DiskArbitration& disks);

/// The config.bin to write: the one of the card that was found while it is still there, also when it is
/// mounted elsewhere by now (then `card` tells where), otherwise that of the preferred card, there or not.
/// Nothing without a card.
std::optional<std::string> settingsPathToWrite(CardSettings& card, platform::DiskArbitration& disks);

struct SaveResult {
    std::optional<std::string> failure; // as saveFileData's; nothing on success
    bool keptPrevious = false; // other contents than the known ones are in "config.bin.bak" now
};

/// Saves like saveFileData. Contents of the file other than the `known` record (what was read from it;
/// nothing when it was not read) are kept beside it as "config.bin.bak" first; when they cannot be kept
/// nothing is written and the text key "msg.file_open_fail" is the failure.
[[nodiscard]] SaveResult saveFileDataKeeping(
    const _FILEDATA& record, const std::string& path, const std::optional<_FILEDATA>& known);

/// What speed_disp_unit of the card's settings says, or of the defaults when no card holds any. Only reads.
bool readsMiles(platform::DiskArbitration& disks, bool m_bKorean);
