#pragma once

#include <string>
#include <string_view>

namespace cli {

/// The text in lines of at most that many characters, as far as its words allow; its own lines stay.
inline std::string wrapped(std::string_view text, size_t width)
{
    std::string lines(text);
    size_t start = 0;
    size_t space = std::string::npos;
    for (size_t at = 0; at < lines.size(); ++at) {
        if (lines[at] == '\n') {
            start = at + 1;
            space = std::string::npos;
        } else if (lines[at] == ' ') {
            space = at;
        }
        if (at - start >= width && space != std::string::npos) {
            lines[space] = '\n';
            start = space + 1;
            space = std::string::npos;
        }
    }
    return lines;
}

} // namespace cli
