#pragma once

#include <optional>
#include <span>
#include <string>

/// What the program was asked to do when it was started.
struct CommandLine {
    /// Recordings to open at once; a path in the file system's bytes.
    std::optional<std::string> folder;
    /// A folder used as the camera's card; a path in the file system's bytes.
    std::optional<std::string> card;
    /// "en", "ko" or "auto".
    std::string language;
    /// The camera's card is opened, and not a folder.
    bool opensCard = false;
    bool opensSettings = false;
    /// Runs one file panel, started by the program itself; not for users.
    bool isFilePanel = false;
    /// Set when the program should print `message` and end with this code.
    std::optional<int> exitCode;
    std::string message;

    /// `arguments` without the program's name; `language` is the one that the build carries.
    static CommandLine parsed(std::span<const char* const> arguments, std::string language);
};
