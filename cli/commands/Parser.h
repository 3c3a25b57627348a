#pragma once

#include "cli/commands/Command.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace cli {

/// The words after a command's name, sorted; they fit the command's entry in the table.
struct Arguments {
    std::vector<std::string> operands;
    std::vector<std::pair<std::string_view, std::string>> options; // with their values, empty without one

    bool has(std::string_view option) const { return value(option).has_value(); }
    /// What was given to an option; nothing when it was not given.
    std::optional<std::string> value(std::string_view option) const;
};

/// A program that was asked for help, or asked wrongly, writes this instead of working.
struct Ending {
    bool isHelp;
    std::string text; // the help, or one line that says what is wrong
};

/// The words, sorted by the command's entry in the table.
std::variant<Arguments, Ending> parsed(const Program& program, const Command& command, Words words);

/// The help of a program that has commands, with one line for each.
std::string programHelp(const Program& program);

} // namespace cli
