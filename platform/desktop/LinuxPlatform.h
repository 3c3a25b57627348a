#pragma once

#include "platform/Platform.h"

#include <optional>

namespace platform {

/// The desktop as it is. Created on the main thread after the application object.
class LinuxPlatform {
public:
    /// A folder given here takes the part of the camera's card, before the mounted volumes.
    explicit LinuxPlatform(const std::optional<std::string>& cardFolder = {});
    ~LinuxPlatform();

    /// How the camera's card is found among the volumes, the path of its root; the panels start there.
    using CardFinder = std::function<std::optional<std::string>(DiskArbitration&)>;
    void setCardFinder(CardFinder finder);

    /// Called on the main thread when a background job has failed, most likely for lack of memory.
    void tellFailures(std::function<void()> told);

    Platform& platform();

private:
    struct Parts;
    std::unique_ptr<Parts> parts;
};

/// Prepares the process for the layer; before anything else of it is used, after the application object.
void initialiseLayer();

} // namespace platform
