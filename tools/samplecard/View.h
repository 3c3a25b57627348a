#pragma once

#include "tools/samplecard/Geometry.h"

#include <span>
#include <vector>

namespace samplecard {

/// A pinhole camera that looks along a heading. The slope under the car tilts it, so the road at hand stays
/// where it was; the smaller movements of the body are applied to the finished picture.
struct View {
    Vec3 eye; // east, north, height
    double heading = 0; // radians clockwise from north
    double slope = 0; // climb per metre along the heading
    float focal = 1; // pixels
    float centreX = 0;
    float horizonY = 0; // the row of a level line of sight when the slope is 0

    static constexpr double nearest = 0.6;

    /// World (east, north, height) to camera: x right, y up, z forward.
    Vec3 toCamera(Vec3 world) const
    {
        const double dx = world.x - eye.x;
        const double dy = world.y - eye.y;
        const double s = std::sin(heading);
        const double c = std::cos(heading);
        const double ahead = dx * s + dy * c;
        return {dx * c - dy * s, world.z - eye.z - slope * ahead, ahead};
    }
    Point toScreen(Vec3 camera) const
    {
        const double k = focal / camera.z;
        return {centreX + float(camera.x * k), horizonY - float(camera.y * k)};
    }

    /// Cuts a polygon in camera space at the nearest visible depth and projects the rest; empty behind the
    /// camera.
    void project(std::span<const Vec3> camera, std::vector<Point>& outline) const;
};

} // namespace samplecard
