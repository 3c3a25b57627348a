#pragma once

#include "cardtools/RunShellScript.h"
#include "cardtools/TKUSBDiskEntity.h"
#include "platform/DiskArbitration.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

class ConfigCopy;

/// Formats one card for the camera: FAT32, label ZAVIK, the three folders, its config.bin as before or, when
/// it had none, a default one. Nothing but the medium that was chosen is written to.
/// Knows no window; runs on a background thread and takes as long as the card.
class CardFormat {
public:
    enum class Step {
        done,
        copyAsideFailed, // nothing was touched; `text` says why
        formatFailed, // `error` says why; also when the card was refused and nothing was touched
        cardNotFound, // formatted, but not there afterwards: nothing was put back; `text` may say why
        configFailed, // config.bin could not be put back; `text` says why; no folders
        defaultFailed, // the default config.bin could not be written; `text` is a text's key; no folders
        foldersFailed, // all but the folders; `text` says why
    };

    struct Outcome {
        Step step = Step::done;
        TKUSBDiskEntity card; // as found last
        ErrorDictionary error;
        std::string text;
        /// Where the copy of config.bin is, when the card does not have it any more.
        std::string keptCopy;
        /// The cards that there are now.
        std::vector<TKUSBDiskEntity> disks;
    };

    /// Told what is going on, in the words for the window.
    using Say = std::function<void(const std::string& message)>;

    CardFormat(platform::ScriptRunner& runner, platform::DiskArbitration& arbitration, Say report);

    Outcome run(const TKUSBDiskEntity& chosen);

private:
    std::optional<TKUSBDiskEntity> find(
        const TKUSBDiskEntity& card, const std::vector<TKUSBDiskEntity>& present) const;
    static ErrorDictionary refusal(
        const TKUSBDiskEntity& chosen, const std::vector<TKUSBDiskEntity>& present);
    std::string takeConfig(
        const TKUSBDiskEntity& chosen, const std::vector<TKUSBDiskEntity>& present, ConfigCopy& config) const;
    ErrorDictionary unmount(const TKUSBDiskEntity& card);
    ErrorDictionary format(const TKUSBDiskEntity& card);
    ErrorDictionary mount(const TKUSBDiskEntity& card);
    Outcome failed(const TKUSBDiskEntity& card, ErrorDictionary error, ConfigCopy& config);
    Outcome finish(const TKUSBDiskEntity& card, const ErrorDictionary& mountError, ConfigCopy& config);

    platform::ScriptRunner& scripts;
    platform::DiskArbitration& disks;
    Say say;
};
