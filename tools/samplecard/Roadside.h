#pragma once

#include "tools/samplecard/Canvas.h"
#include "tools/samplecard/Mesh.h"
#include "tools/samplecard/Plants.h"
#include "tools/samplecard/Road.h"
#include "tools/samplecard/Traffic.h"
#include "tools/samplecard/View.h"

namespace samplecard {

/// Draws what stands beside the road and what drives on it.
class Roadside {
public:
    Roadside(const Road& road, const Plants& plants);

    void drawProp(Canvas& canvas, const View& view, const Prop& prop) const;
    void drawVehicle(Canvas& canvas, const View& view, const Vehicle& vehicle) const;
    /// The guard rail on one side (+1 right, -1 left) between two places.
    void drawRail(Canvas& canvas, const View& view, double from, double to, int side) const;
    /// The long shadow that a tree throws over the ground.
    void drawShadow(Canvas& canvas, const View& view, const Prop& prop) const;

private:
    void drawPlant(Canvas& canvas, const View& view, const Prop& prop) const;
    void drawLampPost(Canvas& canvas, const View& view, const Prop& prop) const;
    void drawMarker(Canvas& canvas, const View& view, const Prop& prop) const;
    void drawChevron(Canvas& canvas, const View& view, const Prop& prop) const;
    void drawUpright(
        Canvas& canvas, const View& view, Vec3 foot, double width, double height, Rgb colour) const;
    float hazeAt(const View& view, Vec3 world) const;

    const Road& way;
    const Plants& vegetation;
};

} // namespace samplecard
