#include "cardtools/TimeSet.h"

#include "platform/ReplaceFile.h"
#include "telemetry/FileByteSource.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <span>

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

std::optional<TimeSet> loadTimeSet(const std::string& path)
{
    const auto source = FileByteSource::open(path.c_str());
    if (!source)
        return std::nullopt;
    std::array<char, pattern.size() + 3> bytes; // a line, its end, and one too many
    std::span<std::byte> rest = std::as_writable_bytes(std::span(bytes));
    while (!rest.empty()) {
        const auto count = source->read(rest);
        if (!count)
            return std::nullopt;
        if (*count == 0)
            break;
        rest = rest.subspan(*count);
    }
    std::string_view text(bytes.data(), bytes.size() - rest.size());
    for (const std::string_view end : {"\r\n", "\n"}) {
        if (text.size() == pattern.size() + end.size() && text.ends_with(end))
            text.remove_suffix(end.size());
    }
    return timeSetFromText(text);
}

std::string saveTimeSet(const TimeSet& moment, const std::string& path)
{
    return platform::replaceFile(path, timeSetText(moment));
}
