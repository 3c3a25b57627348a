#pragma once

#include "tools/samplecard/Canvas.h"
#include "tools/samplecard/Plants.h"
#include "tools/samplecard/Road.h"
#include "tools/samplecard/View.h"

namespace samplecard {

/// The tunnel's walls, lamps and portals, in pieces that the scene draws from far to near.
class Tunnel {
public:
    static constexpr double slice = 4; // metres of road

    Tunnel(const Road& road, const Plants& plants);

    /// The walls from `along` to `along` + slice.
    void drawSlice(Canvas& canvas, const View& view, double along) const;
    /// The front with its hill. `atStart` names the end of the tunnel; it must be seen from outside.
    void drawPortal(Canvas& canvas, const View& view, bool atStart) const;

private:
    void drawHill(
        Canvas& canvas, const View& view, double along, int outward, std::span<const Point> hole) const;
    std::vector<Point> openingAt(const View& view, double along) const;

    const Road& way;
    const Plants& vegetation;
};

} // namespace samplecard
