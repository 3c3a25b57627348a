#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace samplecard {

/// A fresh folder beside the card's place, in which the card is made; it vanishes with this object.
class WorkFolder {
public:
    explicit WorkFolder(const std::filesystem::path& target);
    WorkFolder(const WorkFolder&) = delete;
    WorkFolder& operator=(const WorkFolder&) = delete;
    ~WorkFolder();

    bool isThere() const { return !root.empty(); }
    std::filesystem::path card() const { return root / "card"; }
    /// For files that are not part of the card.
    std::filesystem::path scratch() const { return root / "scratch"; }

    /// Moves the card to its place in one step; a folder that is there is replaced.
    /// Returns why not; the old folder is then where it was.
    std::optional<std::string> publish();

private:
    std::filesystem::path place;
    std::filesystem::path root;
};

} // namespace samplecard
