#include "common/SyncFileSystem.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

std::string syncFileSystem(const std::string& folder)
{
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const int error = descriptor < 0 || ::syncfs(descriptor) != 0 ? errno : 0;
    if (descriptor >= 0)
        ::close(descriptor);
    return error == 0 ? std::string() : std::strerror(error);
}
