#pragma once

#include <string>
#include <utility>

/// The copy of a card's config.bin among the user's own files. A file, so that it outlives a program that is
/// killed; kept until it is dropped.
class ConfigCopy {
public:
    /// `copies`: the folder for it, made when it is needed.
    explicit ConfigCopy(std::string copies)
        : folder(std::move(copies))
    {
    }
    ConfigCopy(const ConfigCopy&) = delete;
    ConfigCopy& operator=(const ConfigCopy&) = delete;

    /// Copies the file config.bin of the card's root, whatever is in it, and compares the two. Empty on
    /// success and when the card has no such file; otherwise why not, and there is no copy.
    [[nodiscard]] std::string take(const std::string& cardRoot);
    /// Where it is; empty when the card had none, or when it was dropped.
    const std::string& path() const { return file; }
    /// Puts it on the card again and compares the two. Empty on success; otherwise why not.
    [[nodiscard]] std::string putBack(const std::string& cardRoot) const;
    /// Whether the card still has it, or has it again, byte for byte.
    bool isOn(const std::string& cardRoot) const;
    /// The card has it: the copy goes away, and its folder with it when it was made for it.
    void drop();

private:
    std::string folder;
    std::string file;
    std::string contents;
    bool madeFolder = false;
};
