#pragma once

#include "tools/samplecard/Geometry.h"

#include <span>
#include <vector>

namespace samplecard {

/// What fills a shape: a vertical gradient over the shape's height, and how much of it covers what was there.
struct Paint {
    Rgb top;
    Rgb bottom;
    float alpha = 1;

    Paint(Rgb colour, float cover = 1)
        : // NOLINT(google-explicit-constructor): a colour is a paint
          top(colour),
          bottom(colour),
          alpha(cover)
    {
    }
    Paint(Rgb from, Rgb to, float cover)
        : top(from),
          bottom(to),
          alpha(cover)
    {
    }
};

/// A picture with its smaller versions, for drawing at any size. Pixels are R, G, B, coverage.
struct Sprite {
    struct Level {
        int width = 0;
        int height = 0;
        std::vector<uint32_t> pixels;
    };
    std::vector<Level> levels; // the largest first, each half of the one before
    /// Adds the smaller levels to the one given.
    static Sprite fromLevel(Level largest);
};

/// A raster of R, G, B, 255 pixels with anti-aliased drawing; y runs downwards. Shapes are cut at the
/// borders.
class Canvas {
public:
    Canvas(int width, int height);

    int width() const { return columns; }
    int height() const { return rows; }
    uint32_t* row(int y) { return picture.data() + size_t(y) * size_t(columns); }
    const uint32_t* row(int y) const { return picture.data() + size_t(y) * size_t(columns); }

    /// Fills an outline, even-odd, with an optional hole.
    void fill(std::span<const Point> outline, const Paint& paint, std::span<const Point> hole = {});
    /// Covers x from `from` to `to` of one row, the end pixels in part.
    void blendSpan(int y, float from, float to, Rgb colour, float alpha);
    /// A soft round spot of light, added.
    void glow(Point centre, float radius, Rgb colour, float strength);
    /// Draws the sprite into a box, mixed with `haze` by `hazeShare` after multiplying with `light`, at
    /// most 1.
    void draw(const Sprite& sprite, Point topLeft, Point bottomRight, float light, Rgb haze, float hazeShare);

private:
    struct Edge {
        float x0, y0, x1, y1;
    };
    void addEdges(std::span<const Point> outline);
    void coverRow(int y, float& from, float& to);
    void blendCovered(int y, float from, float to, Rgb colour, float alpha);

    int columns;
    int rows;
    std::vector<uint32_t> picture;
    std::vector<Edge> edges; // of the shape being filled
    std::vector<float> crossings;
    std::vector<float> coverage; // of one row, as differences between neighbours
};

/// `share` of 256 of `over`, the rest of `under`.
inline uint32_t blended(uint32_t under, uint32_t over, uint32_t share)
{
    const uint32_t rest = 256 - share;
    const uint32_t rb = ((under & 0xFF00FF) * rest + (over & 0xFF00FF) * share) >> 8 & 0xFF00FF;
    const uint32_t g = ((under & 0x00FF00) * rest + (over & 0x00FF00) * share) >> 8 & 0x00FF00;
    return rb | g | 0xFF000000U;
}

} // namespace samplecard
