#include "platform/disks/OpenFiles.h"

#include "platform/disks/MountTable.h"

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace platform {

std::vector<std::string> openFilesBelow(const std::string& folder, const std::string& proc)
{
    std::vector<std::string> open;
    std::error_code none;
    for (const auto& descriptor : fs::directory_iterator(proc + "/self/fd", none)) {
        std::error_code closed;
        const fs::path file = fs::read_symlink(descriptor.path(), closed);
        if (!closed && isWithin(file.native(), folder))
            open.push_back(file.native());
    }
    return open;
}

void leaveFolder(const std::string& folder)
{
    std::error_code gone;
    const fs::path here = fs::current_path(gone);
    if (!gone && isWithin(here.native(), folder))
        fs::current_path("/", gone);
}

} // namespace platform
