#include "cli/Commands.h"
#include "cli/TelemetryFormats.h"
#include "media/ZVKMedia.h"

#include <string>

namespace cli {

namespace {

/// Why a file that the walk gave up on is no readable recording; empty when it is one.
std::string_view problem(WalkEnd end)
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
    const std::string path(arguments.operands.front());
    ZVKBlackBoxData data;
    data.ExtractStreamInformation(path.c_str());
    if (const auto why = problem(data.walkEnd()); !why.empty())
        return failure(streams, path, why);

    const ZVKMedia media = ZVKMedia::mediaWithPath(path);
    const std::string_view name = std::string_view(media.path()).substr(media.path().rfind('/') + 1);
    if (arguments.flag == "--json")
        writeTelemetryJson(streams.out, data);
    else if (arguments.flag == "--csv")
        writeTelemetryCsv(streams.out, data);
    else if (arguments.flag == "--gpx")
        writeTelemetryGpx(streams.out, data, name);
    else
        writeTelemetrySummary(streams.out, data, name);
    return ExitCode::Success;
}

constexpr std::string_view flags[] = {"--json", "--csv", "--gpx"};

} // namespace

const Command telemetryCommand = {
    .name = "telemetry",
    .synopsis = "FILE [--json|--csv|--gpx]",
    .summary = "Shows a recording's G-sensor samples and GPS records; a summary without a flag.",
    .details =
        "--json: {\"result\", \"gsensor\", \"gps\", \"fixes\"}; result is false when the recording has no "
        "side\n"
        "data or its last record is cut. Positions are NMEA ddmm.mmmm magnitudes as recorded, \"KM\" is the\n"
        "number of its character, \"Now\" is year, month, day of week, day, hour, minute, second, "
        "milliseconds.\n"
        "--csv: a row for each G-sensor sample, with the GPS header that is paired with it.\n"
        "--gpx: one GPX 1.1 track of the GPS records that have a position; decimal degrees, speeds in m/s.\n",
    .fewestOperands = 1,
    .mostOperands = 1,
    .flags = flags,
    .run = runTelemetry,
};

} // namespace cli
