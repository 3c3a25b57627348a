#pragma once

#include <string>
#include <string_view>

namespace cli {

/// The bytes as a JSON string, quotes included. A byte that belongs to no well-formed UTF-8 sequence becomes
/// the lone surrogate \udcXX, which no well-formed text contains.
std::string jsonString(std::string_view bytes);

/// The bytes as the text of an XML element or attribute; what XML 1.0 cannot hold becomes U+FFFD.
std::string xmlText(std::string_view bytes);

} // namespace cli
