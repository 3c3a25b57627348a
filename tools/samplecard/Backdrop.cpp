#include "tools/samplecard/Backdrop.h"

#include "tools/samplecard/Noise.h"
#include "tools/samplecard/Palette.h"

#include <array>
#include <cstring>
#include <numbers>

namespace samplecard {

namespace {

constexpr double fullTurn = 2 * std::numbers::pi;
constexpr int rowsBelow = 70; // rows under the horizon

struct Ridge {
    float lowest; // radians above the horizon
    float range; // from the lowest to the highest summit
    uint32_t cells; // around the horizon
    int octaves;
    Rgb colour;
    float veil; // haze at its foot
};

constexpr std::array ridges{
    Ridge{0.030F, 0.125F, 14, 5, palette::farHill, 0.55F},
    Ridge{0.016F, 0.085F, 22, 6, palette::middleHill, 0.60F},
    Ridge{0.004F, 0.048F, 40, 7, palette::nearHill, 0.45F},
};

// How high a ridge stands (radians) at a share of the whole turn.
float ridgeHeight(const Ridge& ridge, float turn, uint32_t seed)
{
    const float n = fractalNoise(turn * float(ridge.cells), 0.5F, ridge.cells, seed, ridge.octaves);
    return ridge.lowest + ridge.range * float(smoothstep(0.22, 0.80, n));
}

// Where the horizon lies in the panorama, and pixels per radian.
struct Horizon {
    int row;
    float focal;
};

void paintRidge(Canvas& panorama, const Horizon& horizon, const Ridge& ridge, uint32_t seed, float woods)
{
    const int width = panorama.width();
    std::vector<float> heights;
    for (int x = 0; x < width; ++x)
        heights.push_back(ridgeHeight(ridge, float(x) / float(width), seed));
    for (int x = 0; x < width; ++x) {
        const float height = heights[size_t(x)] * horizon.focal;
        const float top = float(horizon.row) - height;
        for (int y = std::max(0, int(top)); y < panorama.height(); ++y) {
            const float below = std::max(0.0F, float(y) - top);
            const float cover = std::clamp(float(y) + 1 - top, 0.0F, 1.0F);
            const float depth = std::min(1.0F, below / std::max(8.0F, height));
            // Spurs run down aslant from the ridge; the sides that turn to the sun are lighter.
            const auto spur = size_t(x + int(below * 1.3F)) % size_t(width);
            const float slope = heights[(spur + 12) % size_t(width)] - heights[spur];
            const float grain = hash01(uint32_t(x / 2), uint32_t(y / 2)) - 0.5F;
            const float lit = 1 + std::clamp(slope * 14, -0.13F, 0.16F) + grain * woods;
            const Rgb colour = mix(ridge.colour * lit, palette::haze, ridge.veil * depth * depth);
            uint32_t& pixel = panorama.row(y)[x];
            pixel = blended(pixel, packed(colour), uint32_t(cover * 256));
        }
    }
}

} // namespace

Backdrop::Backdrop(float focal, int above)
    : focalLength(focal),
      rowsAbove(above),
      panorama(int(focal * float(fullTurn)), above + rowsBelow)
{
    paintSky();
    paintClouds();
    paintHills();
}

double Backdrop::azimuth(int x) const
{
    return fullTurn * x / panorama.width();
}

void Backdrop::paintSky()
{
    constexpr double sunHeight = 0.36;
    for (int y = 0; y < panorama.height(); ++y) {
        const double up = elevation(y);
        Rgb base = mix(palette::horizon, palette::middleSky, float(smoothstep(-0.02, 0.17, up)));
        base = mix(base, palette::zenith, float(smoothstep(0.08, 0.62, up)));
        uint32_t* pixels = panorama.row(y);
        for (int x = 0; x < panorama.width(); ++x) {
            const double aside = std::remainder(azimuth(x) - palette::sunAzimuth, fullTurn) * 0.8;
            const double away = std::hypot(aside, up - sunHeight);
            const auto glow = float(0.75 * std::exp(-away * away / 0.10) + 0.35 * std::exp(-away / 0.6));
            pixels[x] = packed(mix(base, palette::sunGlow, std::min(0.9F, glow))
                + Rgb{255, 240, 210} * float(std::exp(-away * away / 0.004)));
        }
    }
}

void Backdrop::paintClouds()
{
    constexpr int step = 4; // clouds are soft: one sample for a block, blended in between
    constexpr uint32_t cloudCells = 26;
    struct Sample {
        float cover;
        float shade;
    };
    const int columns = panorama.width() / step;
    const int lines = rowsAbove / step + 2;
    std::vector<Sample> samples(size_t(columns) * size_t(lines));
    for (int line = 0; line < lines; ++line) {
        const auto up = float(elevation(line * step));
        const auto band = float(smoothstep(0.03, 0.12, up));
        // Clouds flatten towards the horizon.
        const float v = 9.0F * std::log(0.06F + std::max(0.0F, up));
        for (int column = 0; column < columns; ++column) {
            const float u = float(column) * float(cloudCells) / float(columns);
            const float here = fractalNoise(u, v, cloudCells, 41, 5);
            const float sunward = fractalNoise(u, v + 0.35F, cloudCells, 41, 4);
            samples[size_t(line * columns + column)] = {
                band * 0.88F * float(smoothstep(0.50, 0.72, here)), float(smoothstep(0.40, 0.72, sunward))};
        }
    }
    for (int y = 0; y < rowsAbove; ++y) {
        uint32_t* pixels = panorama.row(y);
        const Sample* upper = samples.data() + size_t(y / step) * size_t(columns);
        const Sample* lower = upper + columns;
        const float ky = float(y % step) / step;
        for (int x = 0; x < panorama.width(); ++x) {
            const auto left = size_t(std::min(x / step, columns - 1));
            const size_t right = (left + 1) % size_t(columns);
            const float kx = float(x % step) / step;
            const auto between = [&](auto part) {
                const float top = upper[left].*part + (upper[right].*part - upper[left].*part) * kx;
                const float low = lower[left].*part + (lower[right].*part - lower[left].*part) * kx;
                return top + (low - top) * ky;
            };
            const float cover = between(&Sample::cover);
            if (cover < 0.004F)
                continue;
            const Rgb colour = mix(palette::cloudLit, palette::cloudShade, between(&Sample::shade) * 0.75F);
            pixels[x] = blended(pixels[x], packed(colour), uint32_t(cover * 256));
        }
    }
}

void Backdrop::paintHills()
{
    for (size_t n = 0; n < ridges.size(); ++n) {
        const Ridge& ridge = ridges[n];
        if (n == 2)
            paintTown();
        paintRidge(panorama, {rowsAbove, focalLength}, ridge, uint32_t(60 + 20 * n), 0.05F * float(n));
    }
}

void Backdrop::paintTown()
{
    const Rgb lit = mix({236, 214, 190}, palette::haze, 0.35F);
    const Rgb shade = mix({120, 126, 148}, palette::haze, 0.35F);
    for (uint32_t i = 0; i < 46; ++i) {
        const double at = (i < 26 ? 5.25 : 1.1) + 0.62 * hash01(i, 1);
        const float left = float(at / fullTurn * panorama.width());
        const float width = (0.010F + 0.012F * hash01(i, 2)) * focalLength;
        const float top = float(rowsAbove) - (0.026F + 0.034F * hash01(i, 3)) * focalLength;
        const float bottom = float(rowsAbove) + 4;
        const std::array face{
            Point{left, top}, Point{left + width, top}, Point{left + width, bottom}, Point{left, bottom}};
        panorama.fill(face, {lit, mix(lit, palette::haze, 0.6F), 1});
        const float corner = left + width * 0.68F;
        const std::array side{
            Point{corner, top}, Point{left + width, top}, Point{left + width, bottom}, Point{corner, bottom}};
        panorama.fill(side, {shade, mix(shade, palette::haze, 0.6F), 1});
        for (float y = top + 3; y < bottom; y += 4)
            panorama.blendSpan(int(y), left + 1, corner - 1, shade, 0.35F);
    }
}

int Backdrop::draw(Canvas& canvas, const View& view) const
{
    const int width = panorama.width();
    const double turns = view.heading / fullTurn;
    const int centre = int((turns - std::floor(turns)) * width);
    const int left = ((centre - int(view.centreX)) % width + width) % width;
    // A climb under the car lowers the far horizon in its picture.
    const int horizon = int(std::lround(view.horizonY + view.slope * focalLength));
    const int end = std::min(canvas.height(), horizon + rowsBelow);
    for (int y = 0; y < end; ++y) {
        const uint32_t* source = panorama.row(std::max(0, rowsAbove + y - horizon));
        uint32_t* to = canvas.row(y);
        const int whole = std::min(canvas.width(), width - left);
        std::memcpy(to, source + left, size_t(whole) * 4);
        std::memcpy(to + whole, source, size_t(canvas.width() - whole) * 4);
    }
    return end;
}

} // namespace samplecard
