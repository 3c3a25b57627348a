#include "platform/disks/DeviceNumber.h"

#include <fcntl.h>
#include <linux/loop.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace platform {

namespace {

std::string text(unsigned major, unsigned minor)
{
    return std::to_string(major) + ":" + std::to_string(minor);
}

std::string numberAt(int folder, const char* path, int flags)
{
    struct statx status { };
    // Must not wait for a network file whose server is gone.
    if (statx(folder, path, flags | AT_STATX_DONT_SYNC | AT_NO_AUTOMOUNT, STATX_TYPE, &status) != 0
        || !S_ISBLK(status.stx_mode))
        return {};
    return text(status.stx_rdev_major, status.stx_rdev_minor);
}

} // namespace

std::string blockNumber(const std::string& path)
{
    return numberAt(AT_FDCWD, path.c_str(), 0);
}

std::string blockNumber(int file)
{
    return numberAt(file, "", AT_EMPTY_PATH);
}

std::vector<std::string> loopBacking(const std::string& node, const std::string& number)
{
    const int file = ::open(node.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW);
    if (file < 0)
        return {};
    std::vector<std::string> numbers;
    loop_info64 info{};
    if (blockNumber(file) == number && ioctl(file, LOOP_GET_STATUS64, &info) == 0) {
        for (const dev_t device : {static_cast<dev_t>(info.lo_rdevice), static_cast<dev_t>(info.lo_device)})
            numbers.push_back(text(major(device), minor(device)));
    }
    ::close(file);
    return numbers;
}

} // namespace platform
