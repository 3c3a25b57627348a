#include "platform/mpv/OwnMemory.h"

#include <fstream>
#include <unistd.h>

namespace platform {

size_t ownMemory()
{
    std::ifstream statistics("/proc/self/statm");
    size_t reserved = 0;
    size_t resident = 0;
    statistics >> reserved >> resident;
    return resident * static_cast<size_t>(::sysconf(_SC_PAGESIZE));
}

} // namespace platform
