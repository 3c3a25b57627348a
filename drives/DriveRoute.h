#pragma once

#include "media/Drives.h"

#include <cstddef>
#include <set>
#include <stop_token>
#include <string>
#include <vector>

/// A place of a drive's way, and where it is played.
struct RoutePoint {
    double latitude = 0; ///< decimal degrees, north positive
    double longitude = 0; ///< decimal degrees, east positive
    double seconds = 0; ///< into the take
};

/// A part of the way without a gap.
struct RoutePart {
    size_t take = 0; ///< index in the drive
    std::vector<RoutePoint> points; ///< never empty
};

/// The way of a whole drive, in the order in which it is played, read from its recordings; places that lie
/// closer together than some metres are one. The files of the skipped paths count as unread. Blocks as long
/// as the card; ends early when a stop is requested.
std::vector<RoutePart> routeOf(
    const Drive& drive, const std::set<std::string>& skipped = {}, std::stop_token stop = {});

/// "zavikDriveRoute([[take,longitude,latitude,...],...])" for the map page.
std::string driveRouteScript(const std::vector<RoutePart>& route);
