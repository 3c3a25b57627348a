#include "cli/Commands.h"
#include "cli/FolderScan.h"
#include "cli/Json.h"
#include "cli/MomentJson.h"
#include "common/Log.h"
#include "common/Text.h"
#include "drives/DriveFigures.h"
#include "media/RecordingLength.h"

#include <cmath>
#include <ostream>

namespace cli {

namespace {

Json rounded(std::optional<double> value, double steps)
{
    return value ? Json(std::round(*value * steps) / steps) : Json();
}

Json json(const Drive& drive, const DriveFigures& figures)
{
    Json recordings = Json::array();
    for (const Take& take : drive.takes) {
        recordings.push_back(take.first.path());
        if (take.rear)
            recordings.push_back(take.rear->path());
    }
    Json moments = Json::array();
    for (const DriveMoment& moment : figures.moments)
        moments.push_back(momentJson(moment));
    return {{"start", cameraTimeText(drive.start())}, {"end", cameraTimeText(drive.end)},
        {"recordings", std::move(recordings)}, {"distance_km", rounded(figures.distanceKm, 1000)},
        {"top_speed_kmh", rounded(figures.topSpeedKmh, 10)},
        {"strongest_g", rounded(figures.strongestG, 100)}, {"moments", std::move(moments)}};
}

std::string columns(const Drive& drive, const DriveFigures& figures)
{
    const auto number = [](std::optional<double> value, const char* format) {
        return value ? formatted(format, *value) : std::string("-");
    };
    size_t recordings = 0;
    for (const Take& take : drive.takes)
        recordings += take.rear ? 2 : 1;
    return cameraTimeText(drive.start()) + ' ' + cameraTimeText(drive.end)
        + formatted(" %4zu recording%s %8s km %5s km/h %6s g %3zu moments", recordings,
            recordings == 1 ? " " : "s", number(figures.distanceKm, "%.1f").c_str(),
            number(figures.topSpeedKmh, "%.0f").c_str(), number(figures.strongestG, "%.2f").c_str(),
            figures.moments.size());
}

} // namespace

ExitCode runDrives(const Arguments& arguments, Streams streams)
{
    const std::string& folder = arguments.operands.front();
    const auto scan = scanFolder(folder, streams);
    if (!scan)
        return ExitCode::failure;
    const std::vector<Drive> drives =
        drivesOf(scan->medias, [](const ZVKMedia& media) { return recordingLengthOfFile(media.path()); });
    std::vector<std::string> unread;
    const auto figures = [&](const Drive& drive) {
        DriveFigures read = figuresOf(drive);
        unread.insert(unread.end(), read.unread.begin(), read.unread.end());
        return read;
    };
    if (arguments.has("--json")) {
        writeJsonArray(streams.out, drives, [&](const Drive& drive) { return json(drive, figures(drive)); })
            << '\n';
    } else {
        for (const Drive& drive : drives)
            streams.out << columns(drive, figures(drive)) << '\n';
    }
    return scanResult(*scan, folder, streams, unread);
}

} // namespace cli
