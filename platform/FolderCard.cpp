#include "platform/FolderCard.h"

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
    std::vector<VolumeDescription> volumes;
    std::error_code missing;
    if (fs::is_directory(path, missing)) {
        VolumeDescription card;
        card.mountPath = path;
        card.removable = true;
        card.protocol = "USB";
        card.deviceName = deviceName;
        card.deviceModel = fs::path(path).filename();
        const fs::space_info space = fs::space(path, missing);
        card.size = missing ? 0 : space.capacity;
        card.writable = ::access(path.c_str(), W_OK) == 0;
        card.label = "ZAVIK";
        card.mediaPath = "folder:" + path;
        volumes.push_back(std::move(card));
    }
    if (others) {
        for (VolumeDescription& volume : others->mountedVolumes())
            volumes.push_back(std::move(volume));
    }
    return volumes;
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
