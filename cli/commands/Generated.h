#pragma once

#include "cli/commands/Command.h"

#include <string>

namespace cli {

/// The program's page of the manual, for man(1).
std::string manPage(const Program& program, std::string_view release);

/// What a shell needs to complete the program's command line.
std::string bashCompletion(const Program& program);
std::string zshCompletion(const Program& program);
std::string fishCompletion(const Program& program);

} // namespace cli
