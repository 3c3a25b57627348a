#pragma once

#include "cardtools/format/ConfigCopy.h"
#include "cardtools/format/RunShellScript.h"
#include "cardtools/volumes/TKUSBDiskEntity.h"
#include "platform/DiskArbitration.h"

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Formats one card for the camera: FAT32, label ZAVIK, the three folders, its config.bin as before or, when
/// it had none, a default one. Nothing but the medium that was chosen is written to.
/// Knows no window. `prepare`, then `run` or `giveUp`, each on a background thread; they take as long as the
/// card.
class CardFormat {
public:
    enum class Step {
        done,
        copyAsideFailed, // nothing was touched, and it may go on all the same; `text` or `error` says why
        cancelled, // before anything was changed
        formatFailed, // `error` says why; also when the card was refused and nothing was touched
        cardNotFound, // formatted, but gone afterwards: the settings were not put back; `error` may say why
        configFailed, // config.bin could not be put back; `text` says why; no folders
        defaultFailed, // the default config.bin could not be written; `text` is a text's key; no folders
        foldersFailed, // all but the folders; `text` says why
    };

    struct Outcome {
        Step step = Step::done;
        TKUSBDiskEntity card; // as found last
        /// Whether the card is among those that there are now.
        bool isThere = false;
        ErrorDictionary error; // of a tool
        std::string text;
        /// Where the copy of config.bin is, when the card does not have it any more.
        std::string keptCopy;
        /// Files of the card that this program still had open when it could not be unmounted.
        std::vector<std::string> stillOpen;
        /// The cards that there are now.
        std::vector<TKUSBDiskEntity> disks;
    };

    /// What is being done, in this order.
    enum class Phase { looking, copying, unmounting, formatting, mounting, finishing };
    using Say = std::function<void(Phase)>;

    /// `copies`: the folder for what is copied aside.
    CardFormat(platform::ScriptRunner& runner, platform::DiskArbitration& arbitration, std::string copies,
        Say report);

    /// One that was never run leaves nothing behind.
    ~CardFormat();
    CardFormat(const CardFormat&) = delete;
    CardFormat& operator=(const CardFormat&) = delete;

    /// Pins the chosen medium, looks whether it may be formatted and copies its config.bin aside; one that is
    /// not mounted is mounted for that. `done`: `run` may follow.
    Outcome prepare(const TKUSBDiskEntity& chosen);
    /// Where the card is mounted, once prepared.
    const std::string& mountPath() const { return card.mountedURL; }
    /// The rest.
    Outcome run();
    /// Skips the remaining steps and deletes the copy of the settings.
    Outcome giveUp();

    /// Cancels the formatting; false when it has begun already. Any thread.
    bool cancel();
    bool isCancelled() const { return will == Will::cancelled; }

private:
    enum class Will { open, cancelled, committed };

    std::optional<TKUSBDiskEntity> find(const std::vector<TKUSBDiskEntity>& present) const;
    ErrorDictionary refusal(const std::vector<TKUSBDiskEntity>& present) const;
    std::string takeConfig(ErrorDictionary& mountError);
    ErrorDictionary unmount(Outcome& outcome);
    bool commit();
    ErrorDictionary format();
    ErrorDictionary mount();
    Outcome withDisks(Step step);
    Outcome failed(Outcome outcome);
    Outcome finish(const ErrorDictionary& mountError);

    platform::ScriptRunner& scripts;
    platform::DiskArbitration& disks;
    ConfigCopy config;
    Say say;
    TKUSBDiskEntity card; // the chosen one
    bool isTouched = false;
    std::atomic<Will> will = Will::open;
};
