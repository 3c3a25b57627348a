#pragma once

#include "platform/DiskArbitration.h"

#include <memory>

namespace platform {

/// A folder used as the camera's card: for a copy of a card, and where the system does not list volumes. It
/// is listed before the system's volumes.
class FolderCard final : public DiskArbitration {
public:
    /// No device has this name.
    static constexpr const char* deviceName = "folder";

    /// `others` may be empty.
    FolderCard(const std::string& folder, std::unique_ptr<DiskArbitration> others);

    /// Without the folder while it is not there.
    std::vector<VolumeDescription> mountedVolumes() override;
    /// With the folder, so that the user is told why it is not formatted.
    std::vector<VolumeDescription> formattableVolumes() override;
    std::string trouble() override { return others ? others->trouble() : std::string(); }
    /// A folder cannot be renamed as a volume: fails.
    std::string setVolumeName(const std::string& mountPath, const std::string& name) override;
    std::unique_ptr<MountWatch> watchMounts(std::function<void()> changed) override;

private:
    std::vector<VolumeDescription> withFolder(std::vector<VolumeDescription> otherVolumes) const;

    std::string path;
    std::unique_ptr<DiskArbitration> others;
};

} // namespace platform
