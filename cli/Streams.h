#pragma once

#include <iosfwd>
#include <string_view>

namespace cli {

enum class ExitCode : int {
    success = 0,
    failure = 1, ///< one line on the error stream tells why
    wrongUsage = 2,
};

/// Where a command writes. `out` is checked for failed writes after the command.
struct Streams {
    std::ostream& out;
    std::ostream& err;
};

/// Writes the one line that goes with `ExitCode::failure`, and returns that.
ExitCode failure(Streams streams, std::string_view subject, std::string_view reason);

} // namespace cli
