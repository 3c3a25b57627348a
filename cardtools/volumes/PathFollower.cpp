#include "cardtools/volumes/PathFollower.h"

#include "platform/disks/MountTable.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace {

using platform::VolumeDescription;

/// Cards of one production batch may share a UUID, but a reader holds only one at a time.
bool isSameVolume(const VolumeDescription& a, const VolumeDescription& b)
{
    return a.size == b.size && a.uuid == b.uuid && (!a.uuid.empty() || a.mediaPath == b.mediaPath);
}

} // namespace

PathFollower::PathFollower(platform::Dispatcher& queues, platform::DiskArbitration& arbitration, Moved told)
    : dispatcher(queues),
      disks(arbitration),
      moved(std::move(told)),
      watch(disks.watchMounts([this] { look(); }))
{
}

void PathFollower::follow(std::string followed)
{
    path = std::move(followed);
    place.reset();
    // Does not wait for the search for an earlier path: it may hang on its card.
    following.renew();
    looking = false;
    if (!path.empty())
        look();
}

bool PathFollower::mayLieOn(const std::string& mountPath) const
{
    if (path.empty())
        return false;
    return place ? place->volume.mountPath == mountPath : looking;
}

void PathFollower::look()
{
    if (std::exchange(looking, true)) {
        changedMeanwhile = true;
        return;
    }
    changedMeanwhile = false;
    dispatcher.inBackgroundThen([&arbitration = disks, path = path, place = place,
                                    seen = seen] { return find(arbitration, path, place, seen); },
        following.guarded([this](const Finding& finding) { looked(finding); }));
}

void PathFollower::looked(const Finding& finding)
{
    looking = false;
    for (const VolumeDescription& volume : finding.volumes) {
        std::erase_if(seen, [&](const auto& before) { return before.mountPath == volume.mountPath; });
        seen.push_back(volume);
    }
    place = finding.place;
    if (!finding.to.empty()) {
        const std::string from = std::exchange(path, finding.to);
        // The receiver may follow another path now.
        if (std::exchange(changedMeanwhile, false))
            look();
        moved(from, finding.to);
    } else if (changedMeanwhile) {
        look();
    }
}

PathFollower::Finding PathFollower::find(platform::DiskArbitration& disks, const std::string& path,
    std::optional<Place> place, const std::vector<VolumeDescription>& seen)
{
    Finding finding{disks.mountedVolumes(), std::move(place), {}};
    if (path.empty())
        return finding;
    if (!finding.place) {
        auto known = finding.volumes;
        known.insert(known.end(), seen.begin(), seen.end());
        finding.place = placeOf(path, known);
    }
    if (!finding.place)
        return finding;
    const auto now = placeNow(*finding.place, finding.volumes);
    if (!now || now->mountPath == finding.place->volume.mountPath)
        return finding;
    const fs::path to = fs::path(now->mountPath) / finding.place->below;
    std::error_code missing;
    if (fs::exists(to, missing)) {
        finding.to = finding.place->below.empty() ? now->mountPath : to.native();
        finding.place->volume = *now;
    }
    return finding;
}

/// The innermost volume around the path; of two at one place the first.
std::optional<PathFollower::Place> PathFollower::placeOf(
    const std::string& path, const std::vector<VolumeDescription>& volumes)
{
    std::error_code failed;
    std::string real = fs::weakly_canonical(fs::absolute(path, failed), failed).native();
    if (failed)
        return {};
    while (real.size() > 1 && real.ends_with('/'))
        real.pop_back();
    std::optional<Place> found;
    for (const VolumeDescription& volume : volumes) {
        if (!platform::isWithin(real, volume.mountPath)
            || (found && volume.mountPath.size() <= found->volume.mountPath.size()))
            continue;
        const size_t start = real.find_first_not_of('/', volume.mountPath.size());
        found = {volume, start == std::string::npos ? std::string() : real.substr(start)};
    }
    return found;
}

/// The place's volume as it is mounted now; nothing when it is not mounted or is ambiguous.
std::optional<VolumeDescription> PathFollower::placeNow(
    const Place& place, const std::vector<VolumeDescription>& volumes)
{
    std::vector<VolumeDescription> same = volumes;
    std::erase_if(same, [&](const auto& volume) { return !isSameVolume(volume, place.volume); });
    for (const auto mark : {&VolumeDescription::mountPath, &VolumeDescription::mediaPath}) {
        const auto found = std::ranges::find(same, place.volume.*mark, mark);
        if (found != same.end())
            return *found;
    }
    return same.size() == 1 ? std::optional(same.front()) : std::nullopt;
}
