#include "platform/StreamedFile.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace fs = std::filesystem;

namespace platform {

namespace {

/// The path that a chain of links ends at, whether a file is there or not.
fs::path followed(const std::string& path)
{
    fs::path place = path;
    std::error_code error;
    constexpr int longestChain = 40;
    for (int i = 0; i < longestChain && fs::is_symlink(place, error); ++i) {
        const fs::path next = fs::read_symlink(place, error);
        if (error)
            break;
        place = next.is_absolute() ? next : place.parent_path() / next;
    }
    return place;
}

int createBeside(const fs::path& target, std::string& name)
{
    std::random_device random;
    constexpr int attempts = 20;
    for (int i = 0; i < attempts; ++i) {
        // Short, so that it fits wherever the file's own name does.
        char hidden[20];
        std::snprintf(hidden, sizeof hidden, ".zvk%08x.tmp", random());
        name = (target.parent_path() / hidden).string();
        const int descriptor = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor >= 0 || errno != EEXIST)
            return descriptor;
    }
    return -1;
}

void syncFolder(const fs::path& folder)
{
    const int descriptor = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

} // namespace

StreamedFile::StreamedFile(const std::string& path)
    : target(followed(path).string())
{
    struct stat there { };
    const bool exists = ::stat(target.c_str(), &there) == 0;
    if (exists && !S_ISREG(there.st_mode)) {
        failure = S_ISDIR(there.st_mode) ? EISDIR : EINVAL;
        return;
    }
    if (exists && ::access(target.c_str(), W_OK) != 0) {
        fail();
        return;
    }
    descriptor = createBeside(target, beside);
    if (descriptor >= 0) {
        if (exists)
            ::fchmod(descriptor, there.st_mode & 07777);
        return;
    }
    beside.clear();
    const int why = errno;
    // What is there is not thrown away first: on a full disk its room is all there is.
    descriptor = exists ? ::open(target.c_str(), O_WRONLY | O_CLOEXEC) : -1;
    if (descriptor < 0)
        failure = why;
}

StreamedFile::~StreamedFile()
{
    close();
    if (!beside.empty())
        ::unlink(beside.c_str());
}

bool StreamedFile::write(std::string_view piece)
{
    while (failure == 0 && !piece.empty()) {
        const ssize_t count = ::write(descriptor, piece.data(), piece.size());
        if (count > 0) {
            piece.remove_prefix(static_cast<size_t>(count));
            length += count;
        } else if (count == 0 || errno != EINTR) {
            fail();
        }
    }
    return failure == 0;
}

std::string StreamedFile::finish()
{
    if (failure == 0 && beside.empty() && ::ftruncate(descriptor, length) != 0)
        fail();
    if (failure == 0 && ::fsync(descriptor) != 0)
        fail();
    close();
    if (failure == 0 && !beside.empty()) {
        if (::rename(beside.c_str(), target.c_str()) == 0)
            beside.clear();
        else
            fail();
    }
    if (failure != 0)
        return std::system_category().message(failure);
    syncFolder(fs::path(target).parent_path());
    return {};
}

void StreamedFile::fail()
{
    failure = errno != 0 ? errno : EIO;
}

void StreamedFile::close()
{
    if (descriptor >= 0 && ::close(descriptor) != 0 && failure == 0)
        fail();
    descriptor = -1;
}

} // namespace platform
