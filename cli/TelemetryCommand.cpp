#include "cli/Commands.h"
#include "cli/TelemetryFormats.h"
#include "media/ZVKMedia.h"

#include <string>

namespace cli {

std::string_view walkProblem(WalkEnd end)
{
    switch (end) {
    case WalkEnd::cannotOpen:
        return "cannot be opened";
    case WalkEnd::notAvi:
        return "is no AVI recording";
    case WalkEnd::readError:
        return "could not be read";
    case WalkEnd::noMemory:
        return "needs more memory than there is";
    default:
        return {};
    }
}

ExitCode runTelemetry(const Arguments& arguments, Streams streams)
{
    const std::string& path = arguments.operands.front();
    ZVKBlackBoxData data;
    data.ExtractStreamInformation(path.c_str());
    if (const auto why = walkProblem(data.walkEnd()); !why.empty())
        return failure(streams, path, why);

    const ZVKMedia media = ZVKMedia::mediaWithPath(path);
    const std::string_view name = std::string_view(media.path()).substr(media.path().rfind('/') + 1);
    if (arguments.has("--json"))
        writeTelemetryJson(streams.out, data);
    else if (arguments.has("--csv"))
        writeTelemetryCsv(streams.out, data);
    else if (arguments.has("--gpx"))
        writeTelemetryGpx(streams.out, data, name);
    else
        writeTelemetrySummary(streams.out, data, name);
    return ExitCode::success;
}

} // namespace cli
