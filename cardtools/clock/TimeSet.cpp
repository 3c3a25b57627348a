#include "cardtools/clock/TimeSet.h"

#include "common/ReplaceFile.h"

#include <array>
#include <chrono>
#include <cstdio>

namespace {

constexpr std::string_view pattern = "0000/00/00 00:00:00";

bool fitsPattern(std::string_view text)
{
    if (text.size() != pattern.size())
        return false;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool isDigit = text[i] >= '0' && text[i] <= '9';
        if (pattern[i] == '0' ? !isDigit : text[i] != pattern[i])
            return false;
    }
    return true;
}

int digits(std::string_view text)
{
    int value = 0;
    for (const char c : text)
        value = value * 10 + (c - '0');
    return value;
}

bool isMoment(const TimeSet& moment)
{
    const std::chrono::year_month_day day{std::chrono::year(moment.year),
        std::chrono::month(unsigned(moment.month)), std::chrono::day(unsigned(moment.day))};
    return moment.year >= 1 && day.ok() && moment.hour < 24 && moment.minute < 60 && moment.second < 60;
}

} // namespace

std::string timeSetText(const TimeSet& moment)
{
    std::array<char, 80> text;
    std::snprintf(text.data(), text.size(), "%04d/%02d/%02d %02d:%02d:%02d", moment.year, moment.month,
        moment.day, moment.hour, moment.minute, moment.second);
    return text.data();
}

std::optional<TimeSet> timeSetFromText(std::string_view text)
{
    if (!fitsPattern(text))
        return std::nullopt;
    const auto two = [&](size_t at) { return digits(text.substr(at, 2)); };
    const TimeSet moment{digits(text.substr(0, 4)), two(5), two(8), two(11), two(14), two(17)};
    return isMoment(moment) ? std::optional(moment) : std::nullopt;
}

std::optional<TimeSet> loadTimeSet(const FilePlace& place, FileError& why)
{
    const auto contents = place.beginning(pattern.size() + 3, why); // a line, its end, and one too many
    if (!contents)
        return std::nullopt;
    std::string_view text = *contents;
    for (const std::string_view end : {"\r\n", "\n"}) {
        if (text.size() == pattern.size() + end.size() && text.ends_with(end))
            text.remove_suffix(end.size());
    }
    return timeSetFromText(text);
}

FileError saveTimeSet(const TimeSet& moment, const FilePlace& place)
{
    return replaceFile(place, timeSetText(moment));
}
