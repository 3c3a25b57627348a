#include "cli/Json.h"

#include "cli/Escapes.h"
#include "cli/Numbers.h"

namespace cli {

// The library's own `dump` writes 1 as 1.0, some numbers longer than needed, and only UTF-8.
std::string jsonText(const Json& value)
{
    if (value.is_string())
        return jsonString(value.get_ref<const std::string&>());
    if (value.is_number_float())
        return numberText(value.get<double>()).value_or("null");
    if (!value.is_structured())
        return value.dump();
    std::string text;
    for (const auto& [key, member] : value.items()) {
        text += text.empty() ? "" : ",";
        text += (value.is_object() ? jsonString(key) + ':' : "") + jsonText(member);
    }
    return value.is_object() ? '{' + text + '}' : '[' + text + ']';
}

} // namespace cli
