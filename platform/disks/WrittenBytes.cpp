#include "platform/disks/WrittenBytes.h"

#include "platform/disks/DeviceUse.h"
#include "platform/disks/DiskCommand.h"

#include <sstream>

namespace platform {

std::optional<uint64_t> writtenBytes(const std::string& deviceName, const SystemRoots& roots)
{
    if (!isPlainDeviceName(deviceName))
        return {};
    constexpr int field = 7; // the sectors written, of 512 bytes whatever the device's own are
    std::istringstream counters(
        firstLine(std::filesystem::path(roots.sys) / "class/block" / deviceName / "stat"));
    uint64_t sectors = 0;
    for (int i = 0; i < field; ++i)
        counters >> sectors;
    return counters ? std::optional(sectors * 512) : std::nullopt;
}

} // namespace platform
