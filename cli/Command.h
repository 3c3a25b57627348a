#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace cli {

enum class ExitCode : int {
    Success = 0,
    Failure = 1, ///< one line on the error stream tells why
    WrongUsage = 2,
};

/// Where a command writes. `out` is checked for failed writes after the command.
struct Streams {
    std::ostream& out;
    std::ostream& err;
};

/// The words after a command's name, sorted into operands and flags; both fit the command's table entry.
struct Arguments {
    std::vector<std::string_view> operands;
    std::string_view flag; ///< empty: none was given
    std::vector<std::pair<std::string_view, std::string_view>> values; ///< options with their values

    /// The value that was given last to an option; nothing when it was not given.
    std::optional<std::string_view> value(std::string_view option) const;
};

/// A flag that is followed by a value.
struct Option {
    std::string_view name;
    std::span<const std::string_view> choices = {}; ///< the values that fit; any when empty
};

/// One command of the program, as data.
struct Command {
    std::string_view name;
    std::string_view synopsis; ///< what follows the name in the usage line
    std::string_view summary; ///< one line
    std::string_view details; ///< further lines of the help, each ended by a line feed
    size_t fewestOperands;
    size_t mostOperands;
    std::span<const std::string_view> flags; ///< alternatives: at most one of them may be given
    ExitCode (*run)(const Arguments& arguments, Streams streams);
    std::span<const Option> options = {};
};

/// Writes the one line that goes with `ExitCode::Failure`, and returns that.
ExitCode failure(Streams streams, std::string_view subject, std::string_view reason);

} // namespace cli
