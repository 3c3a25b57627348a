#pragma once

#include "common/Text.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

/// Whether a text is one JSON value (RFC 8259), told without the writer's own code.
class JsonCheck {
public:
    static bool passes(std::string_view text)
    {
        JsonCheck check{text};
        return isValidUtf8(text) && check.value() && (check.spaces(), check.rest.empty());
    }

private:
    explicit JsonCheck(std::string_view text)
        : rest(text)
    {
    }
    bool take(std::string_view what)
    {
        const bool isNext = rest.starts_with(what);
        rest.remove_prefix(isNext ? what.size() : 0);
        return isNext;
    }
    void spaces() { rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n"), rest.size())); }
    bool digits()
    {
        const size_t count = std::min(rest.find_first_not_of("0123456789"), rest.size());
        rest.remove_prefix(count);
        return count > 0;
    }
    bool number()
    {
        take("-");
        if (!take("0") && !digits())
            return false;
        if (take(".") && !digits())
            return false;
        if (!take("e") && !take("E"))
            return true;
        take("+") || take("-");
        return digits();
    }
    bool string()
    {
        if (!take("\""))
            return false;
        for (;;) {
            if (rest.empty() || static_cast<unsigned char>(rest.front()) < ' ')
                return false;
            if (take("\""))
                return true;
            if (!take("\\")) {
                rest.remove_prefix(1);
                continue;
            }
            const bool isCode = take("u");
            const std::string_view code = rest.substr(0, isCode ? 4 : 1);
            if (code.size() < (isCode ? 4 : 1)
                || code.find_first_not_of(isCode ? "0123456789abcdefABCDEF" : "\"\\/bfnrt") != code.npos)
                return false;
            rest.remove_prefix(code.size());
        }
    }
    bool members(std::string_view end, bool areNamed)
    {
        spaces();
        if (take(end))
            return true;
        do {
            spaces();
            if (areNamed && !(string() && (spaces(), take(":"))))
                return false;
            if (!value())
                return false;
            spaces();
        } while (take(","));
        return take(end);
    }
    bool value()
    {
        spaces();
        if (take("{"))
            return members("}", true);
        if (take("["))
            return members("]", false);
        return take("true") || take("false") || take("null") || string() || number();
    }

    std::string_view rest;
};

/// Whether a text is a well-formed XML document of elements, attributes and text alone.
inline bool isXml(std::string_view rest)
{
    if (!isValidUtf8(rest) || !rest.starts_with("<?xml "))
        return false;
    rest.remove_prefix(rest.find("?>") + 2);
    std::vector<std::string_view> open;
    while (!rest.empty()) {
        const std::string_view text = rest.substr(0, rest.find('<'));
        for (size_t i = 0; i < text.size(); ++i) {
            const auto byte = static_cast<unsigned char>(text[i]);
            const std::string_view here = text.substr(i);
            const bool isEntity = here.starts_with("&amp;") || here.starts_with("&lt;")
                || here.starts_with("&gt;") || here.starts_with("&quot;") || here.starts_with("&apos;")
                || here.starts_with("&#");
            if ((byte < ' ' && byte != '\n' && byte != '\t' && byte != '\r') || (byte == '&' && !isEntity)
                || here.starts_with("]]>") || here.starts_with("\xEF\xBF\xBE")
                || here.starts_with("\xEF\xBF\xBF"))
                return false;
        }
        rest.remove_prefix(text.size());
        if (rest.empty())
            break;
        const size_t end = rest.find('>');
        if (end == rest.npos)
            return false;
        const std::string_view tag = rest.substr(1, end - 1);
        rest.remove_prefix(end + 1);
        if (tag.starts_with("/")) {
            if (open.empty() || open.back() != tag.substr(1))
                return false;
            open.pop_back();
        } else {
            if (std::ranges::count(tag, '"') % 2 != 0)
                return false;
            open.push_back(tag.substr(0, tag.find_first_of(" \n")));
        }
    }
    return open.empty();
}
