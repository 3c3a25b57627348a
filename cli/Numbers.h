#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace cli {

/// The shortest text that reads back as the same number; nothing for infinities and NaN.
std::optional<std::string> numberText(double number);

/// The same without an exponent.
std::optional<std::string> decimalText(double number);

/// "2015-03-21T14:25:30Z", with ".250" before the "Z" when there are milliseconds, for milliseconds since
/// 1970-01-01 00:00 UTC; nothing outside the years 1 to 9999.
std::optional<std::string> utcText(int64_t milliseconds);

} // namespace cli
