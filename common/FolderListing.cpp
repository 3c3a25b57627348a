#include "common/FolderListing.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

DIR* folderOf(void* handle)
{
    return static_cast<DIR*>(handle);
}

} // namespace

void FolderListing::Close::operator()(void* folder) const
{
    closedir(folderOf(folder));
}

FolderListing::FolderListing(const std::string& path, Links links)
{
    const int flags = O_RDONLY | O_DIRECTORY | O_CLOEXEC | (links == Links::refuse ? O_NOFOLLOW : 0);
    const int file = open(path.c_str(), flags);
    struct stat facts;
    if (file < 0) {
        trouble = lastError();
        device = lstat(path.c_str(), &facts) == 0 ? facts.st_dev : 0;
    } else if (fstat(file, &facts) != 0) {
        trouble = lastError();
    } else {
        device = facts.st_dev;
        handle.reset(fdopendir(file));
        if (!handle)
            trouble = lastError();
    }
    if (!handle && file >= 0)
        close(file);
}

std::optional<FolderListing::Entry> FolderListing::next()
{
    while (handle) {
        errno = 0;
        const dirent* entry = readdir(folderOf(handle.get()));
        if (!entry) {
            if (errno != 0)
                trouble = lastError();
            return {};
        }
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            return Entry{name, kindOf(entry->d_name, entry->d_type)};
    }
    return {};
}

FolderListing::Kind FolderListing::kindOf(const char* name, unsigned char listed)
{
    if (listed == DT_UNKNOWN) { // a file system whose listings carry no kinds
        struct stat facts;
        if (fstatat(dirfd(folderOf(handle.get())), name, &facts, AT_SYMLINK_NOFOLLOW) == 0)
            listed = IFTODT(facts.st_mode);
        else if (errno != ENOENT)
            trouble = lastError();
    }
    switch (listed) {
    case DT_REG:
        return Kind::file;
    case DT_DIR:
        return Kind::folder;
    case DT_LNK:
        return Kind::link;
    default:
        return Kind::other;
    }
}

bool FolderListing::isFile(const std::string& path, uint64_t volume)
{
    struct stat facts;
    return stat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode) && facts.st_dev == volume;
}
