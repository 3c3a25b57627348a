#include "cli/Commands.h"

namespace cli {

std::span<const Action> actions()
{
    static constexpr Action all[] = {
        {"list", runList},
        {"drives", runDrives},
        {"moments", runMoments},
        {"telemetry", runTelemetry},
        {"volumes", runVolumes},
        {"drive-log", runDriveLog},
        {"config", runConfig},
        {"size", runSize},
        {"clock", runClock},
    };
    return all;
}

} // namespace cli
