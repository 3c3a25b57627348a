#include "drives/DriveRoute.h"

#include "common/Log.h"
#include "drives/DriveFigures.h"

#include <algorithm>

namespace {

constexpr double closest = 0.005; // km

RoutePoint routePoint(const TrackPoint& point, double length, size_t sampleCount)
{
    const double share =
        sampleCount == 0 ? 0 : static_cast<double>(point.sample) / static_cast<double>(sampleCount);
    return {point.latitude, point.longitude, length * std::min(share, 1.0)};
}

void addParts(std::vector<RoutePart>& route, size_t take, const RecordingFigures& figures, double length)
{
    for (const TrackSegment& segment : figures.track) {
        RoutePart part{take, {}};
        const TrackPoint* before = nullptr;
        for (const TrackPoint& point : segment) {
            if (before && &point != &segment.back() && distanceInKm(*before, point) < closest)
                continue;
            part.points.push_back(routePoint(point, length, figures.sampleCount));
            before = &point;
        }
        route.push_back(std::move(part));
    }
}

} // namespace

std::vector<RoutePart> routeOf(const Drive& drive, const std::set<std::string>& skipped, std::stop_token stop)
{
    const auto read = [&](const std::string& path) {
        return skipped.contains(path) ? std::nullopt : figuresOfFile(path, stop);
    };
    std::vector<RoutePart> route;
    for (size_t i = 0; i < drive.takes.size() && !stop.stop_requested(); ++i) {
        const Take& take = drive.takes[i];
        const std::string* file = &take.first.path();
        auto figures = read(*file);
        if ((!figures || figures->track.empty()) && take.rear) {
            file = &take.rear->path();
            figures = read(*file);
        }
        if (figures)
            addParts(route, i, *figures, secondsOfFile(take, *file, *figures));
    }
    return route;
}

std::string driveRouteScript(const std::vector<RoutePart>& route)
{
    std::string script = "zavikDriveRoute([";
    for (const RoutePart& part : route) {
        script += (&part == route.data() ? "[" : ",[") + std::to_string(part.take);
        for (const RoutePoint& point : part.points)
            script += formatted(",%.6f,%.6f", point.longitude, point.latitude);
        script += "]";
    }
    return script + "])";
}
