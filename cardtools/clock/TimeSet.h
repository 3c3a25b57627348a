#pragma once

#include "common/FilePlace.h"

#include <optional>
#include <string>
#include <string_view>

/// A moment as the camera's clock is set to it: a valid day of the Gregorian calendar, years 1 to 9999, and a
/// time of that day, without a time zone. The file `timeset.cfg` in the card's root is exactly one such
/// moment, "yyyy/MM/dd HH:mm:ss" in ASCII, without a line end.
struct TimeSet {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;

    bool operator==(const TimeSet&) const = default;
};

/// The moment as 19 characters.
std::string timeSetText(const TimeSet& moment);

/// The moment that the 19 characters name; nothing for any other text or when there is no such moment.
std::optional<TimeSet> timeSetFromText(std::string_view text);

/// The moment in the file; one line end after it is accepted. Nothing when the file cannot be read, then with
/// the reason, or holds anything else.
std::optional<TimeSet> loadTimeSet(const FilePlace& place, FileError& why);

/// Writes the line to the file, creating or replacing it as replaceFile does.
[[nodiscard]] FileError saveTimeSet(const TimeSet& moment, const FilePlace& place);
