#include "settings/record/ZVKValidator.h"

#include <charconv>
#include <cstdlib>

namespace {

constexpr std::string_view whiteSpace = " \t\n\v\f\r";

std::string_view withoutLeadingSpace(std::string_view text)
{
    const size_t start = text.find_first_not_of(whiteSpace);
    return start == std::string_view::npos ? std::string_view() : text.substr(start);
}

} // namespace

std::optional<double> readNumber(std::string_view& text)
{
    std::string_view rest = withoutLeadingSpace(text);
    const bool negative = rest.starts_with('-');
    if (negative || rest.starts_with('+'))
        rest.remove_prefix(1);
    // Only digits may follow: no second sign, no words such as "inf".
    if (rest.empty() || rest.find_first_of("0123456789.") != 0)
        return std::nullopt;
    double value = 0;
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), value);
    if (error == std::errc::invalid_argument)
        return std::nullopt;
    const auto length = static_cast<size_t>(end - rest.data());
    if (error == std::errc::result_out_of_range)
        value = std::strtod(std::string(rest.substr(0, length)).c_str(), nullptr);
    text = rest.substr(length);
    return negative ? -value : value;
}

bool ZVKValidator::stringIsNumber(std::string_view text)
{
    return readNumber(text) && withoutLeadingSpace(text).empty();
}

std::string ZVKValidator::numericStringFromString(std::string_view text)
{
    while (!text.empty() && !stringIsNumber(text)) {
        text.remove_suffix(1);
        // A multi-byte character is removed whole.
        while (!text.empty() && (static_cast<unsigned char>(text.back()) & 0xC0) == 0x80)
            text.remove_suffix(1);
    }
    return std::string(text);
}

std::optional<ValidationMessage> ZVKValidator::validateGsensorThreshold(std::string_view text)
{
    if (text.empty())
        return std::nullopt;
    const auto value = readNumber(text);
    if (!value)
        return ValidationMessage{"msg.input_value_invalid_format"};
    if (*value < smallestThreshold || *value > largestThreshold)
        return ValidationMessage{
            "msg.gsensor_outofrange_fmt", std::pair(smallestThreshold, largestThreshold)};
    return std::nullopt;
}

std::optional<ValidationMessage> ZVKValidator::validateSDCardSizeRatio(int percent)
{
    if (percent < smallestShare)
        return ValidationMessage{"msg.sdcard_ratio_too_low"};
    return std::nullopt;
}
