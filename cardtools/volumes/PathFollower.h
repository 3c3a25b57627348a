#pragma once

#include "common/Life.h"
#include "platform/DiskArbitration.h"
#include "platform/Dispatcher.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// Keeps one path valid while its volume moves: when the volume is mounted elsewhere (it got another name,
/// was mounted again or plugged in again), the path leads there. The volume is known by its medium and its
/// file system, never by its label. Main thread only; the system and the card are asked in the background.
class PathFollower {
public:
    using Moved = std::function<void(const std::string& from, const std::string& to)>;

    /// `moved` is called with the old and the new path.
    PathFollower(platform::Dispatcher& queues, platform::DiskArbitration& arbitration, Moved told);
    PathFollower(const PathFollower&) = delete;
    PathFollower& operator=(const PathFollower&) = delete;

    /// Follows this path from now on; an empty one: none.
    void follow(std::string followed);
    /// Whether the path lies on the volume that is mounted there. Also true while that is not known yet.
    bool mayLieOn(const std::string& mountPath) const;

private:
    struct Place {
        platform::VolumeDescription volume;
        std::string below; // the path from the volume's root; empty for the root itself
    };
    struct Finding {
        std::vector<platform::VolumeDescription> volumes;
        std::optional<Place> place;
        std::string to; // empty: not moved
    };

    void look();
    void looked(const Finding& finding);
    static Finding find(platform::DiskArbitration& disks, const std::string& path, std::optional<Place> place,
        const std::vector<platform::VolumeDescription>& seen);
    static std::optional<Place> placeOf(
        const std::string& path, const std::vector<platform::VolumeDescription>& volumes);
    static std::optional<platform::VolumeDescription> placeNow(
        const Place& place, const std::vector<platform::VolumeDescription>& volumes);

    platform::Dispatcher& dispatcher;
    platform::DiskArbitration& disks;
    Moved moved;
    std::string path;
    std::optional<Place> place;
    /// What was seen mounted anywhere since the start: a path may be given while its volume is away.
    std::vector<platform::VolumeDescription> seen;
    bool looking = false;
    bool changedMeanwhile = false;
    Life following; // of this path
    std::unique_ptr<platform::MountWatch> watch;
};
