#include "tools/samplecard/WorkFolder.h"

#include <cstdlib>

namespace fs = std::filesystem;

namespace samplecard {

WorkFolder::WorkFolder(const fs::path& target)
    : m_target(target)
{
    std::error_code failure;
    fs::create_directories(target.parent_path(), failure);
    std::string name = (target.parent_path() / ("." + target.filename().string() + ".XXXXXX")).string();
    if (!mkdtemp(name.data()))
        return;
    m_root = name;
    fs::create_directory(card(), failure);
    fs::create_directory(scratch(), failure);
}

WorkFolder::~WorkFolder()
{
    std::error_code failure;
    if (isThere())
        fs::remove_all(m_root, failure);
}

std::optional<std::string> WorkFolder::publish()
{
    std::error_code failure;
    const fs::path before = m_root / "before";
    const bool replaces = fs::exists(m_target, failure);
    if (replaces)
        fs::rename(m_target, before, failure);
    if (!failure)
        fs::rename(card(), m_target, failure);
    if (!failure)
        return std::nullopt;
    std::error_code ignored;
    if (replaces && !fs::exists(m_target, ignored))
        fs::rename(before, m_target, ignored);
    return "cannot put the card at " + m_target.string() + ": " + failure.message();
}

} // namespace samplecard
