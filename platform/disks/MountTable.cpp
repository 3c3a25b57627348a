#include "platform/disks/MountTable.h"

#include <algorithm>
#include <array>
#include <sstream>

namespace platform {

namespace {

/// Blanks and backslashes are written as a backslash and three octal digits.
std::string unescaped(std::string_view text)
{
    const auto isOctal = [](char c) { return c >= '0' && c <= '7'; };
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        const std::string_view digits = text.substr(i).substr(0, 4).substr(1);
        if (text[i] == '\\' && digits.size() == 3 && std::ranges::all_of(digits, isOctal)) {
            result += static_cast<char>((digits[0] - '0') * 64 + (digits[1] - '0') * 8 + (digits[2] - '0'));
            i += 3;
        } else {
            result += text[i];
        }
    }
    return result;
}

bool hasOption(const std::string& options, std::string_view option)
{
    std::istringstream list(options);
    for (std::string one; std::getline(list, one, ',');) {
        if (one == option)
            return true;
    }
    return false;
}

} // namespace

std::vector<Mount> parsedMounts(std::string_view mountinfo)
{
    std::vector<Mount> mounts;
    std::istringstream lines{std::string(mountinfo)};
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string id, parent, number, root, path, options, word, type, source, superOptions;
        words >> id >> parent >> number >> root >> path >> options;
        while (words >> word && word != "-")
            continue;
        if (words >> type >> source >> superOptions)
            mounts.push_back({unescaped(path), unescaped(source),
                hasOption(options, "ro") || hasOption(superOptions, "ro"), number});
    }
    return mounts;
}

std::vector<std::string> parsedSwaps(std::string_view swaps)
{
    std::vector<std::string> result;
    std::istringstream lines{std::string(swaps)};
    for (std::string line; std::getline(lines, line);) {
        const std::string name = line.substr(0, line.find_first_of(" \t"));
        if (name.starts_with('/'))
            result.push_back(unescaped(name));
    }
    return result;
}

bool isWithin(std::string_view path, std::string_view folder)
{
    if (folder == "/")
        return path.starts_with('/');
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

bool isSystemMount(std::string_view path)
{
    // Everything in /run counts as the system's, except the folders where cards are mounted.
    constexpr std::array<std::string_view, 21> trees = {"/boot", "/efi", "/usr", "/var", "/etc", "/opt",
        "/srv", "/bin", "/sbin", "/lib", "/lib32", "/lib64", "/nix", "/gnu", "/snap", "/ostree", "/sysroot",
        "/proc", "/sys", "/dev", "/cdrom"};
    constexpr std::array<std::string_view, 3> folders = {"/", "/home", "/root"};
    if (!path.starts_with('/') || path.find("/..") != std::string_view::npos)
        return true;
    const auto holds = [&](std::string_view tree) { return isWithin(path, tree); };
    if (std::ranges::any_of(trees, holds) || std::ranges::find(folders, path) != folders.end())
        return true;
    if (isWithin(path, "/run"))
        return !isWithin(path, "/run/media");
    // A card may be mounted inside a home, but not as the home itself nor in its hidden folders.
    const bool isBelowHome = path.starts_with("/home/") || path.starts_with("/root/");
    const bool isHome = path.starts_with("/home/") && path.find('/', 6) == std::string_view::npos;
    return isHome || (isBelowHome && path.find("/.") != std::string_view::npos);
}

} // namespace platform
