#pragma once

#include "platform/DiskArbitration.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

/// Volumes as the test tells; a new name really becomes the label.
class TestDiskArbitration final : public platform::DiskArbitration {
public:
    std::vector<platform::VolumeDescription> volumes;
    std::string nameFailure;
    int asked = 0;

    std::vector<platform::VolumeDescription> mountedVolumes() override
    {
        ++asked;
        return volumes;
    }

    std::string setVolumeName(const std::string& mountPath, const std::string& name) override
    {
        if (!nameFailure.empty())
            return nameFailure;
        for (platform::VolumeDescription& volume : volumes) {
            if (volume.mountPath == mountPath)
                volume.label = name;
        }
        return {};
    }

    /// A card in a reader, mounted on this folder.
    static platform::VolumeDescription card(const std::filesystem::path& folder, std::string label = "ZAVIK")
    {
        return {folder.string(), true, "USB", "sdb1", "Card Reader", 1'977'614'336, true, false,
            std::move(label), "usb-1"};
    }
};
