#pragma once

#include "platform/DiskArbitration.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// Volumes as the test tells. A new name really becomes the label, and a volume that is mounted at its label
/// is mounted at the new one then, as by UDisks2: its folder gets another name.
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

    /// Media that are not mounted.
    std::vector<platform::VolumeDescription> unmounted;
    bool mediaAreWritable = true;
    std::vector<platform::VolumeDescription> formattableVolumes() override
    {
        auto all = volumes;
        all.insert(all.end(), unmounted.begin(), unmounted.end());
        for (platform::VolumeDescription& volume : all)
            volume.writable = mediaAreWritable;
        return all;
    }

    std::string setVolumeName(const std::string& mountPath, const std::string& name) override
    {
        if (!nameFailure.empty())
            return nameFailure;
        for (platform::VolumeDescription& volume : volumes) {
            if (volume.mountPath != mountPath)
                continue;
            const std::filesystem::path path = mountPath;
            if (path.filename() == std::exchange(volume.label, name))
                move(volume, path.parent_path() / name);
        }
        return {};
    }

    std::unique_ptr<platform::MountWatch> watchMounts(std::function<void()> changed) override
    {
        struct Watch final : platform::MountWatch {
            std::shared_ptr<std::function<void()>> told;
        };
        auto watch = std::make_unique<Watch>();
        watch->told = std::make_shared<std::function<void()>>(std::move(changed));
        watches.push_back(watch->told);
        return watch;
    }
    /// Tells everybody who watches.
    void tellOfMounts()
    {
        for (const auto& watch : std::vector(watches)) {
            if (const auto told = watch.lock())
                (*told)();
        }
    }
    /// The volume, with what is on it, is mounted at another path.
    void move(platform::VolumeDescription& volume, const std::filesystem::path& path)
    {
        std::filesystem::rename(volume.mountPath, path);
        volume.mountPath = path.string();
        tellOfMounts();
    }

    /// A card in a reader, mounted on this folder.
    static platform::VolumeDescription card(const std::filesystem::path& folder, std::string label = "ZAVIK")
    {
        return {folder.string(), true, "USB", "sdb1", "Card Reader", 1'977'614'336, true, false,
            std::move(label), "usb-1"};
    }

private:
    std::vector<std::weak_ptr<std::function<void()>>> watches;
};
