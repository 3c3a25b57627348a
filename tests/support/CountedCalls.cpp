#include "tests/support/CountedCalls.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>
#include <map>
#include <mutex>

namespace {

struct Counter {
    std::mutex mutex;
    bool counts = false;
    std::vector<std::string> names;
    std::map<std::string, int> errors;
};

Counter& counter()
{
    // Never destroyed: what runs after main may still call.
    static Counter* const only = new Counter;
    return *only;
}

template <typename... Words> int counted(const char* name, long number, Words... words)
{
    {
        const std::lock_guard lock(counter().mutex);
        if (counter().counts) {
            counter().names.emplace_back(name);
            if (const int error = counter().errors[name]; error != 0) {
                errno = error;
                return -1;
            }
        }
    }
    return static_cast<int>(syscall(number, words...));
}

} // namespace

// In place of the C library's, for every library of the program.
extern "C" {
int fsync(int file)
{
    struct stat status { };
    const bool isFolder = ::fstat(file, &status) == 0 && S_ISDIR(status.st_mode);
    return counted(isFolder ? "fsync folder" : "fsync", SYS_fsync, file);
}
int syncfs(int file) noexcept
{
    return counted("syncfs", SYS_syncfs, file);
}
int rename(const char* from, const char* to) noexcept
{
    return counted("rename", SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0U);
}
int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept
{
    return counted("rename", SYS_renameat2, fromFolder, from, toFolder, to, 0U);
}
int kill(pid_t process, int signal) noexcept
{
    return counted("kill", SYS_kill, process, signal);
}
}

CountedCalls::CountedCalls()
{
    const std::lock_guard lock(counter().mutex);
    counter().names.clear();
    counter().errors.clear();
    counter().counts = true;
}

CountedCalls::~CountedCalls()
{
    const std::lock_guard lock(counter().mutex);
    counter().counts = false;
}

std::vector<std::string> CountedCalls::names() const
{
    const std::lock_guard lock(counter().mutex);
    return counter().names;
}

void CountedCalls::fail(const std::string& name, int error)
{
    const std::lock_guard lock(counter().mutex);
    counter().errors[name] = error;
}
