#include "cli/Numbers.h"

#include "common/Log.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>

namespace cli {

namespace {

std::optional<std::string> shortestText(double number, std::chars_format format)
{
    if (!std::isfinite(number))
        return {};
    std::array<char, 1100> text; // the longest: 2^-1074 without an exponent
    const auto written = std::to_chars(text.data(), text.data() + text.size(), number, format);
    return std::string(text.data(), written.ptr);
}

} // namespace

std::optional<std::string> numberText(double number)
{
    return shortestText(number, std::chars_format::general);
}

std::optional<std::string> decimalText(double number)
{
    return shortestText(number, std::chars_format::fixed);
}

std::optional<std::string> utcText(int64_t milliseconds)
{
    using namespace std::chrono;
    constexpr sys_days first = year(1) / 1 / 1;
    constexpr sys_days afterLast = year(10000) / 1 / 1;
    const sys_time<std::chrono::milliseconds> moment{std::chrono::milliseconds(milliseconds)};
    if (moment < first || moment >= afterLast)
        return {};

    const auto midnight = floor<days>(moment);
    const year_month_day date(midnight);
    const hh_mm_ss time(moment - midnight);
    std::string text = formatted("%04d-%02u-%02uT%02d:%02d:%02d", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()),
        static_cast<int>(time.hours().count()), static_cast<int>(time.minutes().count()),
        static_cast<int>(time.seconds().count()));
    if (const auto fraction = time.subseconds().count())
        text += formatted(".%03d", static_cast<int>(fraction));
    return text + "Z";
}

} // namespace cli
