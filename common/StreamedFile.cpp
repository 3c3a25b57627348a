#include "common/StreamedFile.h"

#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <random>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

// Short, so that it fits wherever the file's own name does.
constexpr const char* temporaryName = ".zvk%08x.tmp";
constexpr size_t temporaryLength = 16;

bool isTemporaryName(std::string_view name)
{
    return name.size() == temporaryLength && name.starts_with(".zvk") && name.ends_with(".tmp")
        && name.find_first_not_of("0123456789abcdef", 4) == temporaryLength - 4;
}

/// The writer of such a file holds its lock; an unlocked one was left by a killed program.
void removeIfLeft(int folder, const char* name)
{
    const Descriptor left(::openat(folder, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status { };
    if (left && ::fstat(left.get(), &status) == 0 && S_ISREG(status.st_mode)
        && ::flock(left.get(), LOCK_EX | LOCK_NB) == 0)
        ::unlinkat(folder, name, 0);
}

void removeLeftovers(int folder)
{
    Descriptor listed(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    DIR* const entries = listed ? ::fdopendir(listed.get()) : nullptr;
    if (!entries)
        return;
    (void)listed.release();
    while (const dirent* const entry = ::readdir(entries)) {
        if (isTemporaryName(entry->d_name))
            removeIfLeft(folder, entry->d_name);
    }
    ::closedir(entries);
}

/// Some file systems have nothing to sync a folder with.
bool syncFolder(int folder)
{
    return ::fsync(folder) == 0 || errno == EINVAL || errno == ENOSYS || errno == EBADF;
}

} // namespace

StreamedFile::StreamedFile(FilePlace place, std::optional<int64_t> lengthBefore)
    : target(std::move(place)),
      failure(target.error())
{
    if (failure)
        return;
    const char* const name = target.name().c_str();
    struct stat there { };
    const bool exists = ::fstatat(target.folder(), name, &there, AT_SYMLINK_NOFOLLOW) == 0;
    if (exists && !S_ISREG(there.st_mode)) {
        failure.code = S_ISLNK(there.st_mode) ? FileError::link : FileError::noPlainFile;
        return;
    }
    if (exists && ::faccessat(target.folder(), name, W_OK, AT_EACCESS) != 0) {
        fail();
        return;
    }
    removeLeftovers(target.folder());
    if (createBeside()) {
        if (exists)
            ::fchmod(file.get(), there.st_mode & 07777);
        return;
    }
    const int why = errno;
    if (exists && lengthBefore && *lengthBefore != there.st_size && why != EROFS) {
        failure.code = why == ENOSPC || why == EDQUOT ? why : FileError::otherLength;
        return;
    }
    // Not truncated first: on a full disk the file's own blocks are the only free space.
    if (exists && lengthBefore)
        file = Descriptor(::openat(target.folder(), name, O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file)
        failure.code = why;
}

StreamedFile::~StreamedFile()
{
    if (!beside.empty())
        ::unlinkat(target.folder(), beside.c_str(), 0);
}

bool StreamedFile::createBeside()
{
    std::random_device random;
    constexpr int attempts = 20;
    for (int i = 0; i < attempts; ++i) {
        char hidden[temporaryLength + 1];
        std::snprintf(hidden, sizeof hidden, temporaryName, random());
        file = Descriptor(
            ::openat(target.folder(), hidden, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
        if (!file && errno != EEXIST)
            return false;
        struct stat status { };
        // Another program may have removed it as a leftover before it was locked.
        if (file && (::flock(file.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
            && ::fstat(file.get(), &status) == 0 && status.st_nlink > 0) {
            beside = hidden;
            return true;
        }
    }
    errno = EEXIST;
    return false;
}

bool StreamedFile::write(std::string_view piece)
{
    while (!failure && !piece.empty()) {
        const ssize_t count = ::write(file.get(), piece.data(), piece.size());
        if (count > 0) {
            piece.remove_prefix(static_cast<size_t>(count));
            length += count;
        } else if (count == 0 || errno != EINTR) {
            fail();
        }
    }
    return !failure;
}

FileError StreamedFile::finish()
{
    sync();
    if (!failure && !beside.empty()) {
        isRenamed = ::renameat(target.folder(), beside.c_str(), target.folder(), target.name().c_str()) == 0;
        if (isRenamed)
            beside.clear();
        else
            fail();
        // FAT stores a file's first cluster in its folder entry, but writes the entry with the file: without
        // this the entry on the medium still points to the old file's clusters, which are free now.
        sync();
    }
    close();
    if (!failure && !syncFolder(target.folder()))
        fail();
    return failure;
}

void StreamedFile::sync()
{
    if (!failure && ::fsync(file.get()) != 0)
        fail();
}

void StreamedFile::fail()
{
    failure.code = errno != 0 ? errno : EIO;
}

void StreamedFile::close()
{
    const int open = file.release();
    if (open >= 0 && ::close(open) != 0 && !failure)
        fail();
}
