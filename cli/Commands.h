#pragma once

#include "cli/Command.h"

#include <span>

namespace cli {

extern const Command configCommand;
extern const Command driveLogCommand;
extern const Command listCommand;
extern const Command sizeCommand;
extern const Command telemetryCommand;
extern const Command volumesCommand;
extern const Command clockCommand;

/// All commands, in the order of the help.
std::span<const Command* const> commands();

} // namespace cli
