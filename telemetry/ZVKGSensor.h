#pragma once

/// One G-sensor sample of a recording.
/// Axes are in g (1 g = 9.80665 m/s²); the camera stores 1/256 g steps.
struct ZVKGSensor {
    float x = 0;
    float y = 0;
    float z = 0;

    bool operator==(const ZVKGSensor&) const = default;
};
static_assert(sizeof(ZVKGSensor) == 12);
