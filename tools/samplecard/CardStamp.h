#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace samplecard {

/// The hidden file ".samplecard" in a card's root: how the card was made and its files. A folder without it
/// was not made here.
struct CardStamp {
    std::string recipe; // one line
    std::map<std::string, uintmax_t> files; // relative path with "/", size in bytes

    /// Nothing when the folder has no stamp that can be read.
    static std::optional<CardStamp> read(const std::filesystem::path& folder);
    /// Stamps a folder with all the files that are in it. False when that cannot be written.
    static bool write(const std::filesystem::path& folder, const std::string& recipe);

    /// Whether every file is still there with its size.
    bool isIntact(const std::filesystem::path& folder) const;
    /// Files in the folder that the stamp does not know.
    std::vector<std::string> strangers(const std::filesystem::path& folder) const;
};

} // namespace samplecard
