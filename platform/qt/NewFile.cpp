#include "platform/qt/NewFile.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

template <typename Call> ssize_t retried(Call call)
{
    ssize_t result;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

bool writeWhole(int descriptor, std::string_view contents)
{
    while (!contents.empty()) {
        const ssize_t count = retried([&] { return ::write(descriptor, contents.data(), contents.size()); });
        if (count <= 0)
            return false;
        contents.remove_prefix(static_cast<size_t>(count));
    }
    return true;
}

bool holds(int descriptor, std::string_view contents)
{
    if (::lseek(descriptor, 0, SEEK_SET) != 0)
        return false;
    std::array<char, 65536> block;
    for (;;) {
        const ssize_t count = retried([&] { return ::read(descriptor, block.data(), block.size()); });
        if (count <= 0)
            return count == 0 && contents.empty();
        const std::string_view part(block.data(), static_cast<size_t>(count));
        if (!contents.starts_with(part))
            return false;
        contents.remove_prefix(part.size());
    }
}

void syncFolderOf(const std::string& path)
{
    const std::string folder = std::filesystem::path(path).parent_path().string();
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

bool isFree(const std::string& path)
{
    struct stat there = {};
    return ::lstat(path.c_str(), &there) != 0;
}

} // namespace

std::string freePath(const std::string& path)
{
    constexpr int mostTries = 10'000;
    const std::filesystem::path wanted(path);
    std::string candidate = path;
    for (int number = 2; number < mostTries && !isFree(candidate); ++number)
        candidate = (wanted.parent_path() / wanted.stem()).native() + " " + std::to_string(number)
            + wanted.extension().native();
    return candidate;
}

NewFile writeNewFile(const std::string& path, std::string_view contents)
{
    const int descriptor = ::open(path.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return errno == EEXIST ? NewFile::exists : NewFile::failed;
    const bool written =
        writeWhole(descriptor, contents) && ::fsync(descriptor) == 0 && holds(descriptor, contents);
    if (::close(descriptor) == 0 && written) {
        syncFolderOf(path);
        return NewFile::written;
    }
    ::unlink(path.c_str());
    return NewFile::failed;
}

} // namespace platform
