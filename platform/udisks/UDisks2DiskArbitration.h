#pragma once

#include "platform/disks/BlockDevices.h"

#include <atomic>
#include <chrono>
#include <mutex>
#include <string>

namespace platform {

/// The mounted volumes by UDisks2 on the system bus.
///
/// Every question goes over a connection of its own and has a time limit. After a timeout the service is not
/// asked again for a while, so that a window that asks several times waits once. Why nothing could be listed
/// is logged, too: "cannot list the volumes: ...".
class UDisks2DiskArbitration final : public DiskArbitration {
public:
    struct Surroundings {
        std::string busAddress; // empty: the system bus
        std::string proc = "/proc";
        std::string sys = "/sys";
        std::chrono::milliseconds limit{3000}; // for a question
        std::chrono::milliseconds actionLimit{8000}; // for an unmount, a mount or a new label
        std::chrono::milliseconds pause{15000}; // after a question without an answer
    };

    UDisks2DiskArbitration();
    explicit UDisks2DiskArbitration(Surroundings surroundings);

    /// Everything that UDisks2 and the kernel know; without any block when they do not answer.
    BlockDevices blockDevices();

    std::vector<VolumeDescription> mountedVolumes() override;
    std::vector<VolumeDescription> formattableVolumes() override;
    std::string trouble() override;
    /// The volume is unmounted, named and mounted again, perhaps elsewhere: a mounted FAT keeps its label in
    /// memory. Refused for what is not removable or is in use. After a failure the volume is mounted again
    /// where that is possible.
    std::string setVolumeName(const std::string& mountPath, const std::string& name) override;
    std::unique_ptr<MountWatch> watchMounts(std::function<void()> changed) override;

private:
    void report(const std::string& trouble);

    const Surroundings surroundings;
    std::atomic<std::chrono::steady_clock::time_point> silentUntil{};
    std::mutex reporting;
    std::string reported;
};

} // namespace platform
