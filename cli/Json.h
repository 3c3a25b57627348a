#pragma once

#include <nlohmann/json.hpp>

#include <ostream>
#include <ranges>
#include <string>

namespace cli {

/// Members stay in the order in which they are given.
using Json = nlohmann::ordered_json;

/// The value on one line. Strings as `jsonString`, numbers as `numberText` write them; null for infinities
/// and NaN.
std::string jsonText(const Json& value);

/// An array with a line for each member, `member` of whatever is in the list. A long one is never in memory.
template <std::ranges::input_range List, typename Member>
std::ostream& writeJsonArray(std::ostream& out, List&& list, Member member)
{
    const char* separator = "[";
    for (const auto& item : list) {
        out << separator << jsonText(member(item));
        separator = ",\n";
    }
    return out << (*separator == '[' ? "[]" : "]");
}

} // namespace cli
