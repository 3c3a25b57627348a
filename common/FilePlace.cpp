#include "common/FilePlace.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace fs = std::filesystem;

namespace {

/// The path that a chain of links ends at, whether a file is there or not.
fs::path followed(fs::path place)
{
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

std::optional<struct stat> statusOf(const FilePlace& place)
{
    struct stat status { };
    if (place.error() || ::fstatat(place.folder(), place.name().c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return std::nullopt;
    return status;
}

} // namespace

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept
{
    std::swap(number, other.number);
    return *this;
}

Descriptor::~Descriptor()
{
    if (number >= 0)
        ::close(number);
}

int Descriptor::release()
{
    return std::exchange(number, -1);
}

std::string FileError::text() const
{
    switch (code) {
    case 0:
        return {};
    case link:
        return "it is a link, which is not followed";
    case noPlainFile:
        return "it is no plain file";
    case tooLarge:
        return "it is too large";
    case notReadBack:
        return "what was written does not read back";
    case otherLength:
        return "no file can be made beside it, and its length would change";
    case locked:
        return "another program is saving there";
    case tooShort:
        return "it is too short";
    default:
        return std::system_category().message(code);
    }
}

FilePlace::FilePlace(Descriptor folder, int error, std::string name, std::string path)
    : failure{error},
      fileName(std::move(name)),
      shown(std::move(path))
{
    if (folder)
        handle = std::make_shared<const Descriptor>(std::move(folder));
    else if (!failure)
        failure.code = ENOENT;
    if (!failure && (fileName.empty() || fileName == "." || fileName == ".."))
        failure.code = EISDIR;
}

FilePlace FilePlace::chosen(const std::string& path)
{
    const fs::path target = followed(path);
    const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
    Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // A folder that may be entered but not listed can hold files all the same.
    if (!opened && errno == EACCES)
        opened = Descriptor(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    const int error = opened ? 0 : errno;
    return {std::move(opened), error, target.filename().native(), target.native()};
}

FilePlace FilePlace::sibling(const std::string& otherName) const
{
    FilePlace other = *this;
    other.fileName = otherName;
    other.shown = (fs::path(shown).parent_path() / otherName).native();
    return other;
}

bool FilePlace::isThere() const
{
    return statusOf(*this).has_value();
}

std::optional<uint64_t> FilePlace::size() const
{
    const auto status = statusOf(*this);
    if (!status || !S_ISREG(status->st_mode))
        return std::nullopt;
    return static_cast<uint64_t>(status->st_size);
}

Descriptor FilePlace::open(FileError& why) const
{
    why = failure;
    if (why)
        return Descriptor();
    // Opening a pipe blocks until it has a writer, and opening a device may have effects: the type is checked
    // before opening, and again on the opened file.
    const auto before = statusOf(*this);
    if (before && !S_ISREG(before->st_mode)) {
        why.code = S_ISLNK(before->st_mode) ? FileError::link : FileError::noPlainFile;
        return Descriptor();
    }
    Descriptor file(
        ::openat(folder(), fileName.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status { };
    if (!file || ::fstat(file.get(), &status) != 0)
        why.code = errno == ELOOP ? FileError::link : errno;
    else if (!S_ISREG(status.st_mode))
        why.code = FileError::noPlainFile;
    return why ? Descriptor() : std::move(file);
}

std::optional<std::string> FilePlace::beginning(size_t most, FileError& why) const
{
    const Descriptor file = open(why);
    if (!file)
        return std::nullopt;
    std::string bytes;
    std::array<char, 16384> block;
    while (bytes.size() < most) {
        const ssize_t count = ::read(file.get(), block.data(), std::min(block.size(), most - bytes.size()));
        if (count == 0)
            break;
        if (count > 0) {
            bytes.append(block.data(), static_cast<size_t>(count));
        } else if (errno != EINTR) {
            why.code = errno;
            return std::nullopt;
        }
    }
    return bytes;
}

std::optional<std::string> FilePlace::contents(size_t most, FileError& why) const
{
    auto bytes = beginning(most + 1, why);
    if (bytes && bytes->size() > most) {
        why.code = FileError::tooLarge;
        bytes.reset();
    }
    return bytes;
}

std::optional<std::string> wholeFile(const std::string& path, FileError& why)
{
    constexpr size_t most = size_t{1} << 30;
    return FilePlace::chosen(path).contents(most, why);
}

std::optional<std::string> wholeFile(const std::string& path)
{
    FileError ignored;
    return wholeFile(path, ignored);
}

SaveLock::SaveLock(const FilePlace& place, std::chrono::milliseconds patience)
    : failure(place.error())
{
    using namespace std::chrono_literals;
    if (failure)
        return;
    // Opened anew: a lock belongs to the open file description, which the place's copies share.
    folder = Descriptor(::openat(place.folder(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    constexpr auto pause = 20ms;
    for (auto left = patience; folder && ::flock(folder.get(), LOCK_EX | LOCK_NB) != 0; left -= pause) {
        if (errno != EWOULDBLOCK && errno != EINTR)
            return;
        if (left <= 0ms) {
            failure.code = FileError::locked;
            return;
        }
        std::this_thread::sleep_for(pause);
    }
}
