#include "tools/samplecard/WorkFolder.h"

#include <cstdlib>

namespace fs = std::filesystem;

namespace samplecard {

WorkFolder::WorkFolder(const fs::path& target)
    : place(target)
{
    std::error_code failure;
    fs::create_directories(target.parent_path(), failure);
    std::string name = (target.parent_path() / ("." + target.filename().string() + ".XXXXXX")).string();
    if (!mkdtemp(name.data()))
        return;
    root = name;
    fs::create_directory(card(), failure);
    fs::create_directory(scratch(), failure);
}

WorkFolder::~WorkFolder()
{
    std::error_code failure;
    if (isThere())
        fs::remove_all(root, failure);
}

std::optional<std::string> WorkFolder::publish()
{
    std::error_code failure;
    const fs::path before = root / "before";
    const bool replaces = fs::exists(place, failure);
    if (replaces)
        fs::rename(place, before, failure);
    if (!failure)
        fs::rename(card(), place, failure);
    if (!failure)
        return std::nullopt;
    std::error_code ignored;
    if (replaces && !fs::exists(place, ignored))
        fs::rename(before, place, ignored);
    return "cannot put the card at " + place.string() + ": " + failure.message();
}

} // namespace samplecard
