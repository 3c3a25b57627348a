#pragma once

#include "platform/disks/ToolRun.h"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

/// What of a tool's output is gathered.
enum class ToolOutput {
    errors,
    all,
};

/// Runs a file system tool with an empty environment; it is killed when this program ends.
platform::ToolResult runFormatTool(
    const std::vector<std::string>& command, std::chrono::milliseconds limit, ToolOutput output);

/// The line of a tool's words that says what went wrong: the last that it begins with its name, else the
/// first that is not its banner ("mkfs.fat 4.2 (2021-01-31)").
std::string errorLine(std::string_view tool, const std::string& words);
