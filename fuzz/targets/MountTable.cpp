#include "platform/disks/MountTable.h"
#include "fuzz/Require.h"

using namespace platform;

void fuzz(std::string_view text)
{
    const auto lines = static_cast<size_t>(std::ranges::count(text, '\n')) + 1;
    const auto mounts = parsedMounts(text);
    require(mounts.size() <= lines && parsedSwaps(text).size() <= lines);
    for (const Mount& mount : mounts) {
        require(isWithin(mount.path, mount.path) && isWithin(mount.path, "/") == mount.path.starts_with('/'));
        // What lies below a system's own folder is the system's, too.
        require(isSystemMount(mount.path) || mount.path.starts_with('/'));
        require(isSystemMount("/usr" + mount.path) || !mount.path.starts_with('/'));
    }
}
