#pragma once

#include "tools/samplecard/Canvas.h"
#include "tools/samplecard/View.h"

namespace samplecard {

/// Sky, clouds, hills and a far town, painted once all around the horizon and then copied by heading.
class Backdrop {
public:
    /// For a camera of that focal length that sees `above` rows above a level line of sight.
    Backdrop(float focal, int above);

    /// Fills every row of the canvas down to a little below the horizon; returns the first row left empty.
    int draw(Canvas& canvas, const View& view) const;

private:
    void paintSky();
    void paintClouds();
    void paintHills();
    void paintTown();
    double azimuth(int x) const;
    double elevation(int y) const { return double(rowsAbove - y) / focalLength; }

    float focalLength;
    int rowsAbove;
    Canvas panorama;
};

} // namespace samplecard
