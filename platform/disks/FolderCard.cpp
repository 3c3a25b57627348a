#include "platform/disks/FolderCard.h"

#include "common/CardFiles.h"

#include <filesystem>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

namespace platform {

FolderCard::FolderCard(const std::string& folder, std::unique_ptr<DiskArbitration> otherVolumes)
    : others(std::move(otherVolumes))
{
    std::error_code unknown;
    path = fs::absolute(folder, unknown).lexically_normal();
    if (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
}

std::vector<VolumeDescription> FolderCard::mountedVolumes()
{
    return withFolder(others ? others->mountedVolumes() : std::vector<VolumeDescription>());
}

std::vector<VolumeDescription> FolderCard::formattableVolumes()
{
    return withFolder(others ? others->formattableVolumes() : std::vector<VolumeDescription>());
}

std::vector<VolumeDescription> FolderCard::withFolder(std::vector<VolumeDescription> otherVolumes) const
{
    std::error_code missing;
    if (!fs::is_directory(path, missing))
        return otherVolumes;
    VolumeDescription card;
    card.mountPath = path;
    card.removable = true;
    card.protocol = "USB";
    card.deviceName = deviceName;
    card.deviceModel = fs::path(path).filename();
    const fs::space_info space = fs::space(path, missing);
    card.size = missing ? 0 : space.capacity;
    card.writable = ::access(path.c_str(), W_OK) == 0;
    card.label = cardFiles::label;
    card.mediaPath = "folder:" + path;
    otherVolumes.insert(otherVolumes.begin(), std::move(card));
    return otherVolumes;
}

std::string FolderCard::setVolumeName(const std::string& mountPath, const std::string& name)
{
    if (mountPath == path || !others)
        return mountPath + " is a folder, not a volume";
    return others->setVolumeName(mountPath, name);
}

std::unique_ptr<MountWatch> FolderCard::watchMounts(std::function<void()> changed)
{
    return others ? others->watchMounts(std::move(changed)) : nullptr;
}

} // namespace platform
