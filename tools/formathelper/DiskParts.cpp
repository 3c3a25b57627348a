#include "tools/formathelper/DiskParts.h"

#include <array>
#include <cerrno>
#include <cstdint>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>

namespace {

using Part = platform::KernelDevice::Part;

/// Blocks of 1 kB that begin with their magic number, in either order of bytes, from 128 kB on.
bool isPoolMember(int file)
{
    constexpr uint64_t magic = 0x00bab10c;
    constexpr off_t first = 128 * 1024;
    constexpr off_t last = 256 * 1024;
    constexpr off_t block = 1024;
    for (off_t at = first; at < last; at += block) {
        uint64_t found = 0;
        if (pread(file, &found, sizeof found, at) != sizeof found)
            return false;
        if (found == magic || __builtin_bswap64(found) == magic)
            return true;
    }
    return false;
}

bool isForeign(const Part& part, const std::string& dev)
{
    const int flags = O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | (part.used ? 0 : O_EXCL);
    const int file = ::open((dev + "/" + part.name).c_str(), flags);
    if (file < 0)
        return errno == EBUSY;
    const bool foreign = platform::blockNumber(file) != part.number || isPoolMember(file);
    ::close(file);
    return foreign;
}

} // namespace

std::string foreignPart(const std::string& name, const platform::KernelDevice& device, const std::string& dev)
{
    std::vector<Part> parts = device.parts;
    // Exclusive use of a whole disk includes its partitions.
    for (Part& part : parts)
        part.used = part.used || device.whole;
    parts.push_back({name, device.number, true});
    const auto found = std::ranges::find_if(parts, [&](const Part& part) { return isForeign(part, dev); });
    return found == parts.end() ? std::string() : found->name;
}
