#include "tools/formathelper/CardDevice.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <thread>
#include <utility>

namespace {

void closeOnce(int& fd)
{
    if (fd >= 0)
        ::close(fd);
    fd = -1;
}

uint64_t sizeOf(int fd)
{
    uint64_t size = 0;
    return ioctl(fd, BLKGETSIZE64, &size) == 0 ? size : 0;
}

bool meansGone(int error)
{
    return error == ENOENT || error == ENXIO || error == ENODEV || error == ENOMEDIUM;
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

FormatStatus CardDevice::failed(int error)
{
    failure = std::strerror(error);
    if (error == EBUSY)
        return FormatStatus::stillMounted;
    if (error == EROFS)
        return FormatStatus::writeProtected;
    if (error == ELOOP || error == ENOTBLK)
        return FormatStatus::notADevice;
    if (error == EACCES || error == EPERM || error == EMFILE || error == ENFILE || error == ENOMEM)
        return FormatStatus::toolFailed;
    return meansGone(error) ? FormatStatus::cardGone : FormatStatus::mediumErrors;
}

FormatStatus CardDevice::open()
{
    constexpr int flags = O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK;
    // First for reading only: the node may be anything.
    kept = ::open(node.c_str(), O_RDONLY | flags);
    if (kept < 0)
        return failed(errno);
    if (platform::blockNumber(kept).empty() || platform::blockNumber(kept) != expected.number)
        return FormatStatus::notADevice;
    exclusive = ::open(node.c_str(), O_RDWR | O_EXCL | flags);
    if (exclusive < 0)
        return failed(errno);
    if (platform::blockNumber(exclusive) != expected.number)
        return FormatStatus::notADevice;
    if (sizeOf(exclusive) != expected.size)
        return FormatStatus::otherSize;
    return isReadOnly() ? FormatStatus::writeProtected : FormatStatus::ok;
}

void CardDevice::letOthersOpen()
{
    closeOnce(exclusive);
}

bool CardDevice::isGone() const
{
    // Opened again: an open descriptor does not tell that the medium was changed.
    const int now = ::open(node.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    const bool gone = now < 0 ? meansGone(errno)
                              : platform::blockNumber(now) != expected.number || sizeOf(now) != expected.size;
    if (now >= 0)
        ::close(now);
    return gone;
}

FormatStatus CardDevice::trouble(std::chrono::milliseconds patience)
{
    constexpr std::chrono::milliseconds pause(100);
    std::byte first{};
    // Once only: the kernel reports a failed write only once.
    const FormatStatus read = readFromMedium(std::span(&first, 1));
    for (;; patience -= pause) {
        if (isGone())
            return FormatStatus::cardGone;
        if (isReadOnly())
            return FormatStatus::writeProtected;
        if (read == FormatStatus::ok || patience < pause)
            return read;
        std::this_thread::sleep_for(pause);
    }
}

bool CardDevice::isReadOnly() const
{
    int readOnly = 0;
    return ioctl(kept, BLKROGET, &readOnly) != 0 || readOnly != 0;
}

FormatStatus CardDevice::readFromMedium(std::span<std::byte> bytes)
{
    // Until the system's cache of the device is dropped, even a defective card reads well.
    if (fsync(kept) != 0 || ioctl(kept, BLKFLSBUF) != 0)
        return failed(errno);
    size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t count = pread(kept, bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return failed(count < 0 ? errno : ENXIO);
        done += static_cast<size_t>(count);
    }
    return FormatStatus::ok;
}
