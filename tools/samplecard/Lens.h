#pragma once

#include "tools/samplecard/Canvas.h"

#include <cstdint>
#include <vector>

namespace samplecard {

/// How the camera's body movements and its exposure show in one picture.
struct Lens {
    float down = 0; // pixels by which the picture moves downwards
    float tilt = 0; // pixels downwards per pixel to the right
    float gain = 1; // brightness, below 2
    int margin = 0; // rows that the scene has above the frame
};

/// Copies the scene into the frame, shifted, tilted and exposed. Rows beyond the scene repeat its border.
void expose(const Canvas& scene, Canvas& frame, const Lens& lens);

/// The frame as planar 4:2:0 in the limited range of BT.709: a plane of Y, then U, then V. Width and height
/// even.
void toYuv420(const Canvas& frame, std::vector<uint8_t>& planes);

} // namespace samplecard
