#include "cli/Commands.h"

namespace cli {

std::span<const Command* const> commands()
{
    static constexpr const Command* all[] = {
        &listCommand,
        &telemetryCommand,
        &volumesCommand,
        &driveLogCommand,
        &configCommand,
        &sizeCommand,
        &clockCommand,
    };
    return all;
}

} // namespace cli
