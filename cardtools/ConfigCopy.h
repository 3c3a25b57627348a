#pragma once

#include <string>

/// The copy of a card's config.bin in a private folder of the system's temporary one. It goes away with this
/// object, unless it was told to stay.
class ConfigCopy {
public:
    ConfigCopy() = default;
    ~ConfigCopy();
    ConfigCopy(const ConfigCopy&) = delete;
    ConfigCopy& operator=(const ConfigCopy&) = delete;

    /// Copies the file config.bin of the card's root, whatever is in it, and compares the two. Empty on
    /// success and when the card has no such file; otherwise why not.
    [[nodiscard]] std::string take(const std::string& cardRoot);
    /// Whether the card had one.
    bool isThere() const { return !file.empty(); }
    /// Puts it on the card again and compares the two. Empty on success; otherwise why not.
    [[nodiscard]] std::string putBack(const std::string& cardRoot) const;
    /// Whether the card still has it, or has it again, byte for byte.
    bool isOn(const std::string& cardRoot) const;
    /// The copy stays for the user; returns its path, or nothing when there is no copy.
    std::string keep();

private:
    std::string folder;
    std::string file;
    std::string contents;
    bool stays = false;
};
