#include "fuzz/Require.h"
#include "settings/record/ZVKValidator.h"

#include <cmath>

void fuzz(std::string_view text)
{
    std::string_view rest = text;
    const auto number = readNumber(rest);
    require(number.has_value() == (rest.size() < text.size()));
    require(!number || !std::isnan(*number));
    const std::string numeric = ZVKValidator::numericStringFromString(text.substr(0, 200));
    require(numeric.empty() || ZVKValidator::stringIsNumber(numeric));
    const auto message = ZVKValidator::validateGsensorThreshold(text);
    require(message.has_value() == (!text.empty() && (!number || *number < 0.05 || *number > 1.5)));
}
