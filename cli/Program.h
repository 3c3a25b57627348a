#pragma once

#include "cli/Streams.h"
#include "cli/VolumesSource.h"
#include "cli/commands/Command.h"

namespace cli {

/// Runs the command that the words name (the program's own name left out). Help goes to `out`, what went
/// wrong to `err`; a write to `out` that fails is a failure. `volumes` is what "volumes" asks.
ExitCode run(Words words, Streams streams, const VolumesSource& volumes = {});

} // namespace cli
