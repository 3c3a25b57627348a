#pragma once

#include "cardtools/drivelog/DriveLogFormat.h"

#include <vector>

/// A column title from the text tables, for programs that do not load them.
struct DriveLogTitle {
    std::string_view language; // "en" or "ko"
    std::string_view key;
    std::string_view text;
};

/// All of them, made when the program is built; ended by an empty one.
extern const DriveLogTitle driveLogTitles[];

/// The titles of the format's columns in that language, English where the language is unknown.
std::vector<std::string> driveLogColumnNames(const DriveLogFormat& format, std::string_view language);
