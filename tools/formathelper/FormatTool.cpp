#include "tools/formathelper/FormatTool.h"

#include <sstream>

platform::ToolResult runFormatTool(
    const std::vector<std::string>& command, std::chrono::milliseconds limit, ToolOutput output)
{
    return platform::runTool({command, limit, output == ToolOutput::all,
        {"PATH=/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL=C"}, true});
}

std::string errorLine(std::string_view tool, const std::string& words)
{
    std::string named;
    std::string first;
    std::istringstream lines(words);
    for (std::string line; std::getline(lines, line);) {
        const size_t at = line.find(tool);
        const std::string_view after =
            at == std::string::npos ? std::string_view() : std::string_view(line).substr(at + tool.size());
        // The system's loader names it with its folder.
        if (after.starts_with(": ") && (at == 0 || line.front() == '/'))
            named = line;
        else if (first.empty() && !line.empty() && !(at == 0 && after.starts_with(' ')))
            first = line;
    }
    return named.empty() ? first : named;
}
