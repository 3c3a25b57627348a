#include "common/CardRoot.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

bool isPlainName(std::string_view name)
{
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string_view::npos
        && name.find('\0') == std::string_view::npos;
}

Descriptor openedFolder(int parent, const std::string& name)
{
    Descriptor folder(::openat(parent, name.c_str(), folderFlags));
    struct stat status { };
    // A link in a folder's place reads as "not a folder".
    if (!folder && errno == ENOTDIR && ::fstatat(parent, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0)
        errno = S_ISLNK(status.st_mode) ? ELOOP : ENOTDIR;
    return folder;
}

/// Opens one folder after the other. Refuses ".." and follows no link.
Descriptor openedStepByStep(int root, std::string_view way)
{
    Descriptor folder(::openat(root, ".", folderFlags));
    while (folder && !way.empty()) {
        const std::string name(way.substr(0, way.find('/')));
        way.remove_prefix(std::min(way.size(), name.size() + 1));
        if (!isPlainName(name)) {
            errno = EXDEV;
            return Descriptor();
        }
        folder = openedFolder(folder.get(), name);
    }
    return folder;
}

Descriptor openedByKernel(int root, const std::string& way)
{
    open_how how = {};
    // With RESOLVE_NO_SYMLINKS a link gives another error than a file; with O_NOFOLLOW both give the same.
    how.flags = folderFlags & ~O_NOFOLLOW;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS | RESOLVE_NO_MAGICLINKS;
    int opened = -1;
    // The kernel asks to try again when something was renamed on the way.
    for (int attempt = 0; attempt < 10; ++attempt) {
        opened =
            static_cast<int>(::syscall(SYS_openat2, root, way.empty() ? "." : way.c_str(), &how, sizeof how));
        if (opened >= 0 || errno != EAGAIN)
            break;
    }
    return Descriptor(opened);
}

Descriptor openedBelow(int root, const std::string& way, CardRoot::Walk walk)
{
    if (walk == CardRoot::Walk::byKernel) {
        Descriptor folder = openedByKernel(root, way);
        // Older kernels do not know the call, and sandboxes forbid it.
        if (folder || (errno != ENOSYS && errno != EPERM && errno != EINVAL))
            return folder;
    }
    return openedStepByStep(root, way);
}

/// Both refusals of a link read the same, whichever way was walked.
int linkOr(int error)
{
    return error == ELOOP ? FileError::link : error;
}

} // namespace

CardRoot::CardRoot(const std::string& folder, Walk walk)
    : path(folder),
      way(walk)
{
    Descriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    failure.code = opened ? 0 : errno;
    root = std::make_shared<const Descriptor>(std::move(opened));
}

FilePlace CardRoot::file(std::string_view relative) const
{
    const std::string shown = (std::filesystem::path(path) / relative).native();
    const size_t slash = relative.rfind('/');
    const bool isInRoot = slash == std::string_view::npos;
    const std::string name(isInRoot ? relative : relative.substr(slash + 1));
    Descriptor folder;
    int error = failure.code;
    if (error == 0 && !isPlainName(name))
        error = EINVAL;
    if (error == 0) {
        folder = openedBelow(root->get(), std::string(isInRoot ? "" : relative.substr(0, slash)), way);
        error = folder ? 0 : linkOr(errno);
    }
    return {std::move(folder), error, name, shown};
}

FileError CardRoot::makeFolder(const std::string& name) const
{
    if (failure)
        return failure;
    if (!isPlainName(name))
        return {EINVAL};
    if (::mkdirat(root->get(), name.c_str(), 0777) != 0 && errno != EEXIST)
        return {errno};
    if (openedFolder(root->get(), name))
        return {};
    return {errno == ENOTDIR ? FileError::noPlainFile : linkOr(errno)};
}

FileError CardRoot::sync() const
{
    if (failure)
        return failure;
    return {::syncfs(root->get()) == 0 ? 0 : errno};
}
