#include "cli/Escapes.h"

#include "common/Log.h"
#include "common/Text.h"

#include <algorithm>
#include <cstddef>

namespace cli {

namespace {

/// The length of the well-formed UTF-8 sequence at the beginning; 0 when there is none.
size_t sequenceLength(std::string_view bytes)
{
    for (size_t length = 1; length <= std::min<size_t>(4, bytes.size()); ++length)
        if (isValidUtf8(bytes.substr(0, length)))
            return length;
    return 0;
}

/// Letters, digits and the usual characters of paths.
bool isPlain(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '-' && c <= ':') || c == '_' || c == ' ';
}

/// The text with every character replaced by what `escape` makes of its bytes; the second argument tells
/// whether they are well-formed. What is plain stays as it is.
template <typename Escape> std::string escaped(std::string_view bytes, Escape escape)
{
    std::string text;
    while (!bytes.empty()) {
        const auto plainLength =
            static_cast<size_t>(std::ranges::find_if_not(bytes, isPlain) - bytes.begin());
        text += bytes.substr(0, plainLength);
        bytes.remove_prefix(plainLength);
        if (bytes.empty())
            break;
        const size_t length = sequenceLength(bytes);
        text += escape(bytes.substr(0, std::max<size_t>(length, 1)), length > 0);
        bytes.remove_prefix(std::max<size_t>(length, 1));
    }
    return text;
}

std::string jsonCharacter(std::string_view character, bool isWellFormed)
{
    const auto first = static_cast<unsigned char>(character.front());
    if (!isWellFormed)
        return formatted("\\udc%02x", first);
    if (first < 0x20 || first == 0x7F)
        return formatted("\\u%04x", first);
    if (first == '"' || first == '\\')
        return std::string("\\").append(character);
    return std::string(character);
}

std::string xmlCharacter(std::string_view character, bool isWellFormed)
{
    constexpr std::string_view replacement = "\xEF\xBF\xBD";
    const auto first = static_cast<unsigned char>(character.front());
    const bool isSpace = first == '\t' || first == '\n' || first == '\r';
    const bool isNoCharacter = character == "\xEF\xBF\xBE" || character == "\xEF\xBF\xBF"; // U+FFFE, U+FFFF
    if (!isWellFormed || (first < 0x20 && !isSpace) || isNoCharacter)
        return std::string(replacement);
    // Written as they stand, white space would be changed by the reader, and ">" may not end "]]>".
    if (isSpace || std::string_view("<>&\"'").find(character) != std::string_view::npos)
        return formatted("&#%u;", first);
    return std::string(character);
}

} // namespace

std::string jsonString(std::string_view bytes)
{
    return '"' + escaped(bytes, jsonCharacter) + '"';
}

std::string xmlText(std::string_view bytes)
{
    return escaped(bytes, xmlCharacter);
}

} // namespace cli
