#pragma once

#include "cli/Streams.h"
#include "cli/commands/Parser.h"

#include <span>
#include <string_view>

namespace cli {

ExitCode runClock(const Arguments& arguments, Streams streams);
ExitCode runConfig(const Arguments& arguments, Streams streams);
ExitCode runDriveLog(const Arguments& arguments, Streams streams);
ExitCode runDrives(const Arguments& arguments, Streams streams);
ExitCode runList(const Arguments& arguments, Streams streams);
ExitCode runMoments(const Arguments& arguments, Streams streams);
ExitCode runSize(const Arguments& arguments, Streams streams);
ExitCode runTelemetry(const Arguments& arguments, Streams streams);
ExitCode runVolumes(const Arguments& arguments, Streams streams);

/// What carries out one of zavikctl's commands, by its name in the table.
struct Action {
    std::string_view command;
    ExitCode (*run)(const Arguments& arguments, Streams streams);
};

std::span<const Action> actions();

} // namespace cli
