#include "tools/formathelper/CardDevice.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <utility>

namespace {

void closeOnce(int& fd)
{
    if (fd >= 0)
        ::close(fd);
    fd = -1;
}

std::string numberOf(int fd)
{
    struct stat status { };
    if (fstat(fd, &status) != 0 || !S_ISBLK(status.st_mode))
        return {};
    return std::to_string(major(status.st_rdev)) + ":" + std::to_string(minor(status.st_rdev));
}

uint64_t sizeOf(int fd)
{
    uint64_t size = 0;
    return ioctl(fd, BLKGETSIZE64, &size) == 0 ? size : 0;
}

} // namespace

CardDevice::CardDevice(std::string path, platform::KernelDevice device)
    : node(std::move(path)),
      expected(std::move(device))
{
}

CardDevice::~CardDevice()
{
    closeOnce(exclusive);
    closeOnce(kept);
}

FormatStatus CardDevice::openFailure(int error)
{
    failure = std::strerror(error);
    if (error == EBUSY)
        return FormatStatus::stillMounted;
    if (error == EROFS)
        return FormatStatus::writeProtected;
    if (error == ELOOP || error == ENOTBLK)
        return FormatStatus::notADevice;
    return FormatStatus::cardGone;
}

FormatStatus CardDevice::open()
{
    constexpr int flags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    // First without any right to write: the node itself may be anything.
    kept = ::open(node.c_str(), O_RDONLY | flags);
    if (kept < 0)
        return openFailure(errno);
    if (numberOf(kept).empty() || numberOf(kept) != expected.number)
        return FormatStatus::notADevice;
    exclusive = ::open(node.c_str(), O_RDWR | O_EXCL | flags);
    if (exclusive < 0)
        return openFailure(errno);
    if (numberOf(exclusive) != expected.number)
        return FormatStatus::notADevice;
    if (sizeOf(exclusive) != expected.size)
        return FormatStatus::otherSize;
    return isReadOnly() ? FormatStatus::writeProtected : FormatStatus::ok;
}

void CardDevice::letOthersOpen()
{
    closeOnce(exclusive);
}

bool CardDevice::isThere() const
{
    std::byte first{};
    return access(node.c_str(), F_OK) == 0 && sizeOf(kept) == expected.size
        && readFromMedium(std::span(&first, 1));
}

bool CardDevice::isReadOnly() const
{
    int readOnly = 0;
    return ioctl(kept, BLKROGET, &readOnly) != 0 || readOnly != 0;
}

bool CardDevice::readFromMedium(std::span<std::byte> bytes) const
{
    // Until the system's memory of the device is dropped, a card that lost everything reads well.
    if (fsync(kept) != 0 || ioctl(kept, BLKFLSBUF) != 0)
        return false;
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = pread(kept, bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        done += static_cast<size_t>(count);
    }
    return true;
}
