#include "cli/Commands.h"
#include "cli/FolderScan.h"
#include "cli/MomentJson.h"
#include "cli/TelemetryFormats.h"
#include "common/Log.h"
#include "common/Text.h"
#include "media/MediaPath.h"
#include "media/RecordingLength.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iterator>
#include <ostream>
#include <system_error>

namespace cli {

namespace {

/// The moments of recordings, and those that could not be read.
struct Found {
    std::vector<DriveMoment> moments;
    std::vector<std::string> unread;

    void addFile(const std::string& path)
    {
        if (const auto figures = figuresOfFile(path))
            add(path, *figures);
        else
            unread.push_back(path);
    }

    void add(const std::string& path, const RecordingFigures& figures)
    {
        const double length = secondsOf(recordingLengthOfFile(path), figures);
        for (const Moment& moment : figures.moments)
            moments.push_back({0, path, moment.seconds(length, figures.sampleCount), moment});
    }

    void addDrive(const Drive& drive)
    {
        DriveFigures figures = figuresOf(drive);
        std::ranges::move(figures.unread, std::back_inserter(unread));
        std::ranges::move(figures.moments, std::back_inserter(moments));
    }
};

void writeColumns(std::ostream& out, const std::vector<DriveMoment>& moments)
{
    for (const auto& [take, file, seconds, moment] : moments)
        out << formatted("%9.3f s  %-8s %5.2f g  %-6s ", seconds, momentKindText(moment.kind).data(),
            moment.g, momentDirectionText(moment.direction).data())
            << visibleText(file) << '\n';
}

} // namespace

Json momentJson(const DriveMoment& found)
{
    const auto& [take, file, seconds, moment] = found;
    return {{"file", file}, {"seconds", std::round(seconds * 1000) / 1000},
        {"kind", momentKindText(moment.kind)}, {"g", std::round(moment.g * 100) / 100},
        {"direction", momentDirectionText(moment.direction)}};
}

ExitCode runMoments(const Arguments& arguments, Streams streams)
{
    const std::string& named = arguments.operands.front();
    Found found;
    std::optional<MediaScan> scan;
    std::error_code error;
    if (std::filesystem::is_directory(named, error)) {
        scan = scanFolder(named, streams);
        if (!scan)
            return ExitCode::failure;
        for (const ZVKMedia& media : scan->medias) {
            if (!cameraTimeOf(media))
                found.addFile(media.path());
        }
        for (const Drive& drive :
            drivesOf(scan->medias, [](const ZVKMedia& media) { return recordingLengthOfFile(media.path()); }))
            found.addDrive(drive);
    } else {
        ZVKBlackBoxData data;
        data.ExtractStreamInformation(named.c_str());
        if (const auto why = walkProblem(data.walkEnd()); !why.empty())
            return failure(streams, named, why);
        found.add(standardizedPath(named), figuresOf(data));
    }
    if (arguments.has("--json"))
        writeJsonArray(streams.out, found.moments, momentJson) << '\n';
    else
        writeColumns(streams.out, found.moments);
    return scan ? scanResult(*scan, named, streams, found.unread) : ExitCode::success;
}

} // namespace cli
