#include "cli/Commands.h"

#include <utility>

namespace cli {

std::vector<Action> actions(VolumesSource volumes)
{
    return {
        {"list", runList},
        {"drives", runDrives},
        {"moments", runMoments},
        {"telemetry", runTelemetry},
        {"volumes", std::bind_front(runVolumes, std::move(volumes))},
        {"drive-log", runDriveLog},
        {"config", runConfig},
        {"size", runSize},
        {"clock", runClock},
    };
}

} // namespace cli
