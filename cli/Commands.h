#pragma once

#include "cli/Streams.h"
#include "cli/VolumesSource.h"
#include "cli/commands/Parser.h"

#include <functional>
#include <string_view>
#include <vector>

namespace cli {

ExitCode runClock(const Arguments& arguments, Streams streams);
ExitCode runConfig(const Arguments& arguments, Streams streams);
ExitCode runDriveLog(const Arguments& arguments, Streams streams);
ExitCode runDrives(const Arguments& arguments, Streams streams);
ExitCode runList(const Arguments& arguments, Streams streams);
ExitCode runMoments(const Arguments& arguments, Streams streams);
ExitCode runSize(const Arguments& arguments, Streams streams);
ExitCode runTelemetry(const Arguments& arguments, Streams streams);
ExitCode runVolumes(const VolumesSource& source, const Arguments& arguments, Streams streams);

/// What carries out one of zavikctl's commands, by its name in the table.
struct Action {
    std::string_view command;
    std::function<ExitCode(const Arguments& arguments, Streams streams)> run;
};

/// All of them; "volumes" asks the source.
std::vector<Action> actions(VolumesSource volumes);

} // namespace cli
