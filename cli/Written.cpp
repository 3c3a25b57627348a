#include "cli/Written.h"

#include "common/CardRoot.h"

#include <filesystem>
#include <system_error>

namespace cli {

namespace fs = std::filesystem;

ExitCode writtenTo(const std::string& path, bool followsLink, Streams streams,
    const std::function<ExitCode(const FilePlace&)>& work)
{
    std::error_code none;
    const fs::path target = fs::read_symlink(path, none);
    if (!none && !followsLink)
        return failure(streams, path,
            "is a link to " + target.native() + "; with " + std::string(followLink)
                + " the file that it leads to is written");
    const fs::path named(path);
    const auto place = followsLink
        ? FilePlace::chosen(path)
        : CardRoot(named.has_parent_path() ? named.parent_path() : ".").file(named.filename().native());
    if (place.error())
        return failure(streams, path, place.error().text());
    const SaveLock lock(place);
    return lock.error() ? failure(streams, path, lock.error().text()) : work(place);
}

} // namespace cli
