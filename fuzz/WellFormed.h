#pragma once

#include "common/Text.h"

#include <string>
#include <string_view>
#include <vector>

/// How long the JSON string is that the text begins with; 0 when it is none.
inline size_t jsonStringLength(std::string_view text)
{
    for (size_t i = 1; i < text.size() && static_cast<unsigned char>(text[i]) >= ' '; ++i) {
        if (text[i] == '"')
            return i + 1;
        if (text[i] != '\\')
            continue;
        const std::string_view escaped = text.substr(++i, 5);
        const bool isCode = escaped.size() == 5 && escaped.front() == 'u'
            && escaped.find_first_not_of("0123456789abcdef", 1) == escaped.npos;
        if (!isCode
            && (escaped.empty() || std::string_view("\"\\/bfnrt").find(escaped.front()) == escaped.npos))
            return 0;
    }
    return 0;
}

/// Whether strings are closed and escaped, brackets in pairs, and nothing else but numbers and JSON's words.
inline bool isJson(std::string_view rest)
{
    std::string open;
    for (size_t length = 1; !rest.empty() && length > 0; rest.remove_prefix(length)) {
        const char next = rest.front();
        const std::string_view signs = "-+.0123456789eE,: \n";
        length = rest.starts_with("false") ? 5 : rest.starts_with("true") || rest.starts_with("null") ? 4 : 1;
        if (next == '{' || next == '[')
            open.push_back(next == '{' ? '}' : ']');
        else if (!open.empty() && next == open.back())
            open.pop_back();
        else if (next == '"')
            length = jsonStringLength(rest);
        else if (length == 1 && signs.find(next) == signs.npos)
            return false;
        if (length == 0)
            return false;
    }
    return open.empty();
}

/// Whether the text can stand in an element, or in an attribute.
inline bool isXmlText(std::string_view text)
{
    for (size_t i = 0; i < text.size(); ++i) {
        if (static_cast<unsigned char>(text[i]) < ' ' && text[i] != '\n' && text[i] != '\t'
            && text[i] != '\r')
            return false;
        const std::string_view name = text.substr(i, text.substr(i).find(';') + 1);
        if (text[i] == '<'
            || (text[i] == '&' && name != "&amp;" && name != "&lt;" && name != "&gt;" && name != "&quot;"
                && name != "&apos;" && !name.starts_with("&#")))
            return false;
    }
    return isValidUtf8(text);
}

/// Whether elements are closed in turn and everything between them is text.
inline bool isXml(std::string_view rest)
{
    std::vector<std::string_view> open;
    rest.remove_prefix(rest.find("?>") + 2);
    for (size_t tag = rest.find('<'); tag != rest.npos; tag = rest.find('<')) {
        const std::string_view name = rest.substr(tag + 1, rest.find_first_of(" \n>", tag) - tag - 1);
        if (!isXmlText(rest.substr(0, tag)) || rest.find('>', tag) == rest.npos)
            return false;
        if (!name.starts_with('/'))
            open.push_back(name);
        else if (open.empty() || open.back() != name.substr(1))
            return false;
        else
            open.pop_back();
        rest.remove_prefix(rest.find('>', tag) + 1);
    }
    return open.empty() && isXmlText(rest);
}
