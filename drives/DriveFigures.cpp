#include "drives/DriveFigures.h"

#include "media/RecordingLength.h"
#include "telemetry/ZVKBlackBoxData.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

bool tellsNothing(const RecordingFigures& figures)
{
    return !figures.span;
}

/// A recording that tells something, and where it stands.
struct Told {
    RecordingFigures figures;
    std::string file;
};

/// What the take tells; nothing when neither recording can be read.
std::optional<Told> toldBy(const Take& take, std::vector<std::string>& unread, const FiguresReading& reading)
{
    std::optional<Told> best;
    const auto consider = [&](const ZVKMedia& media) {
        auto figures =
            reading.skipped.contains(media.path()) ? std::nullopt : figuresOfFile(media.path(), reading.stop);
        if (!figures)
            unread.push_back(media.path());
        else if (!best || tellsNothing(best->figures))
            best = Told{std::move(*figures), media.path()};
    };
    consider(take.first);
    if (take.rear && (!best || tellsNothing(best->figures)))
        consider(*take.rear);
    return best;
}

} // namespace

std::optional<RecordingFigures> figuresOfFile(const std::string& path, std::stop_token stop)
{
    ZVKBlackBoxData data;
    data.ExtractStreamInformation(path.c_str(), std::move(stop));
    switch (data.walkEnd()) {
    case WalkEnd::notWalked:
    case WalkEnd::cannotOpen:
    case WalkEnd::notAvi:
    case WalkEnd::readError:
    case WalkEnd::stopped:
    case WalkEnd::noMemory:
        return {};
    default:
        return figuresOf(data);
    }
}

double secondsOf(const std::optional<std::chrono::microseconds>& length, const RecordingFigures& figures)
{
    constexpr uint64_t longest = 24 * 60 * 60 * 1000;
    if (length)
        return std::chrono::duration<double>(*length).count();
    if (!figures.span)
        return 0;
    const uint64_t told =
        static_cast<uint64_t>(figures.span->second) - static_cast<uint64_t>(figures.span->first);
    return told <= longest ? static_cast<double>(told) / 1000 : 0;
}

double secondsOfFile(const Take& take, const std::string& file, const RecordingFigures& figures)
{
    const bool isRear = take.rear && take.rear->path() == file;
    return secondsOf(isRear ? recordingLengthOfFile(file) : take.length, figures);
}

DriveFigures figuresOf(const Drive& drive, const FiguresReading& reading)
{
    DriveFigures figures;
    TripFigures sum;
    for (size_t i = 0; i < drive.takes.size() && !reading.stop.stop_requested(); ++i) {
        const Take& take = drive.takes[i];
        auto told = toldBy(take, figures.unread, reading);
        if (reading.takesRead)
            ++*reading.takesRead;
        if (!told)
            continue;
        const double seconds = secondsOfFile(take, told->file, told->figures);
        for (const size_t fresh : sum.add(told->figures)) {
            const Moment& moment = told->figures.moments[fresh];
            figures.moments.push_back(
                {i, told->file, moment.seconds(seconds, told->figures.sampleCount), moment});
        }
        std::ranges::move(told->figures.track, std::back_inserter(figures.track));
    }
    if (sum.hasTrack()) {
        figures.distanceKm = sum.distanceKm();
        figures.topSpeedKmh = sum.topSpeedKmh();
    }
    if (sum.hasSamples())
        figures.strongestG = sum.strongestG();
    return figures;
}
