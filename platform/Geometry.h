#pragma once

namespace platform {

struct Point {
    double x = 0;
    double y = 0;
};

struct Size {
    double width = 0;
    double height = 0;
};

/// A rectangle in points with y growing upwards: (x, y) is its lower-left corner.
struct Rect {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;

    double maxX() const { return x + width; }
    double maxY() const { return y + height; }
    Size size() const { return {width, height}; }
    friend bool operator==(const Rect&, const Rect&) = default;
};

} // namespace platform
