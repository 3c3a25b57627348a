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

/// The preferred card, when its config.bin has a record's size. A card of another name is named "ZAVIK"; when
/// that fails the reason is logged and the card is used all the same.
CardSettings findUSBVolume(platform::DiskArbitration& disks);

/// The config.bin to write: the one of the card that was selected while it is still there, otherwise that of
/// the preferred card, there or not. Nothing without a card.
std::optional<std::string> settingsPathToWrite(
    const std::optional<TKUSBDiskEntity>& selectedUSBDisk, platform::DiskArbitration& disks);

struct SaveResult {
    std::optional<std::string> failure; // as saveFileData's; nothing on success
    bool keptPrevious = false; // other contents than the known ones are in "config.bin.bak" now
};

/// Saves like saveFileData. Contents of the file other than the `known` record (what was read from it;
/// nothing when it was not read) are kept beside it as "config.bin.bak" first; when they cannot be kept
/// nothing is written and the text key "msg.file_open_fail" is the failure.
[[nodiscard]] SaveResult saveFileDataKeeping(
    const _FILEDATA& record, const std::string& path, const std::optional<_FILEDATA>& known);

/// What speed_disp_unit of the card's settings says, or of the defaults when no card holds any.
bool readsMiles(platform::DiskArbitration& disks, bool m_bKorean);
