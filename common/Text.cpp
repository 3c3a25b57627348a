#include "common/Text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

struct Decoded {
    char32_t codePoint = 0;
    size_t length = 0; // 0: not well-formed
};

Decoded decodeFirst(std::string_view bytes)
{
    const auto byteAt = [&](size_t i) { return static_cast<uint8_t>(bytes[i]); };
    const uint8_t lead = byteAt(0);
    if (lead < 0x80)
        return {lead, 1};
    const size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || bytes.size() < length)
        return {};
    char32_t codePoint = lead & (0x7Fu >> length);
    for (size_t i = 1; i < length; ++i) {
        if ((byteAt(i) & 0xC0) != 0x80)
            return {};
        codePoint = (codePoint << 6) | (byteAt(i) & 0x3Fu);
    }
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    if (codePoint < smallest[length] || codePoint > 0x10FFFF || isSurrogate)
        return {};
    return {codePoint, length};
}

bool isControl(char32_t c)
{
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || (c >= 0x202A && c <= 0x202E)
        || (c >= 0x2066 && c <= 0x2069);
}

void appendEscape(std::string& text, char kind, uint32_t value, int digits)
{
    (text += '\\') += kind;
    while (digits-- > 0)
        text += "0123456789abcdef"[value >> (4 * digits) & 0xF];
}

} // namespace

bool isValidUtf8(std::string_view bytes)
{
    while (!bytes.empty()) {
        const Decoded decoded = decodeFirst(bytes);
        if (decoded.length == 0)
            return false;
        bytes.remove_prefix(decoded.length);
    }
    return true;
}

std::u16string utf16Units(std::string_view bytes)
{
    std::u16string units;
    units.reserve(bytes.size());
    while (!bytes.empty()) {
        const Decoded decoded = decodeFirst(bytes);
        if (decoded.length == 0) {
            units.push_back(u'\uFFFD');
        } else if (decoded.codePoint >= 0x10000) {
            units.push_back(static_cast<char16_t>(0xD7C0 + (decoded.codePoint >> 10)));
            units.push_back(static_cast<char16_t>(0xDC00 + (decoded.codePoint & 0x3FF)));
        } else {
            units.push_back(static_cast<char16_t>(decoded.codePoint));
        }
        bytes.remove_prefix(std::max<size_t>(decoded.length, 1));
    }
    return units;
}

std::string asciiLower(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

std::string visibleText(std::string_view bytes)
{
    std::string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const Decoded decoded = decodeFirst(bytes);
        const size_t length = std::max<size_t>(decoded.length, 1);
        if (decoded.length == 0)
            appendEscape(text, 'x', static_cast<uint8_t>(bytes.front()), 2);
        else if (isControl(decoded.codePoint))
            appendEscape(text, length == 1 ? 'x' : 'u', decoded.codePoint, length == 1 ? 2 : 4);
        else
            text += bytes.substr(0, length);
        bytes.remove_prefix(length);
    }
    return text;
}
