#pragma once

#include "tools/samplecard/Canvas.h"
#include "tools/samplecard/Noise.h"
#include "tools/samplecard/Road.h"
#include "tools/samplecard/View.h"

#include <array>

namespace samplecard {

/// A place on the centre line as the camera sees it.
struct TracePoint {
    double along = 0;
    Vec3 camera; // x right, y up, z forward
    double across = 1; // metres to the road's right per metre to the picture's right
};

/// The road as far as the camera can follow it, from near to far.
/// `direction` is +1 for a camera that looks along the drive and -1 for one that looks back.
std::vector<TracePoint> traceRoad(const Road& road, const View& view, double along, int direction);

/// How bright it is at a place on the road: 1 in the open, less and warmer in the tunnel.
Rgb roadLight(double along);

/// Draws road, marks and meadows row by row.
class Ground {
public:
    void draw(Canvas& canvas, const View& view, const std::vector<TracePoint>& trace) const;

private:
    struct Row {
        int y;
        double depth;
        double along;
        double length; // of road within the row
        double across; // of the row's leftmost pixel
        double perPixel; // metres across, negative when looking back
    };
    enum Surface { grass, gravel, asphalt };
    using Shades = std::array<uint32_t, 64>;

    void drawRow(Canvas& canvas, const Row& row) const;
    void drawTexture(Canvas& canvas, const Row& row, int from, int to, const Shades& shades) const;
    void drawMarks(Canvas& canvas, const Row& row, Rgb light, float haze) const;

    NoiseTile noise;
};

} // namespace samplecard
