#pragma once

#include "tools/samplecard/Canvas.h"
#include "tools/samplecard/View.h"

#include <vector>

namespace samplecard {

/// Flat faces in the order in which they are to be drawn; faces that look away are left out, so a body of
/// convex parts, the lower before the upper, needs no sorting.
struct Mesh {
    struct Face {
        std::vector<Vec3> corners; // x right, y ahead, z up; counter-clockwise seen from outside
        Rgb colour;
        bool shines = false; // keeps its colour in any light
    };
    std::vector<Face> faces;

    void add(std::vector<Vec3> corners, Rgb colour, bool shines = false);
    /// A box whose top may be smaller than its bottom: half widths, rear and front ends, heights.
    struct Frustum {
        double halfBottom, rearBottom, frontBottom, bottom;
        double halfTop, rearTop, frontTop, top;
    };
    void addFrustum(const Frustum& f, Rgb sides, Rgb roof);
};

/// Where a mesh stands in the world.
struct Stand {
    Vec3 place; // east, north, height of its origin
    double heading = 0; // of its y axis
};

/// How much light reaches it and how far it is.
struct Air {
    Rgb light{1, 1, 1};
    float haze = 0;
};

/// Draws the mesh, lit by the sun.
void drawMesh(Canvas& canvas, const View& view, const Mesh& mesh, const Stand& stand, const Air& air);

/// Draws one polygon given in world coordinates.
void drawFace(Canvas& canvas, const View& view, std::span<const Vec3> corners, const Paint& paint);

Mesh carMesh(Rgb colour, bool braking);
Mesh houseMesh(uint32_t variant);

} // namespace samplecard
