#include "tools/samplecard/Ground.h"

#include "tools/samplecard/Palette.h"

namespace samplecard {

namespace {

constexpr double farthestSeen = 420;

// One layer of grain: metres across and along, and the share of the whole contrast.
struct Grain {
    double across;
    double along;
};
constexpr std::array grains{Grain{0.05, 0.14}, Grain{0.32, 0.9}, Grain{1.7, 5.0}, Grain{7.0, 24.0}};

struct SurfaceColours {
    Rgb dark;
    Rgb light;
};
constexpr std::array surfaces{
    SurfaceColours{palette::grassDark, palette::grassLight},
    SurfaceColours{palette::gravelDark, palette::gravelLight},
    SurfaceColours{palette::asphaltDark, palette::asphaltLight},
};

// The painted share of the stretch of road from `from` to `to`.
float dashCover(double from, double to, double dash, double period)
{
    const auto painted = [=](double x) {
        const double whole = std::floor(x / period);
        return whole * dash + std::min(dash, x - whole * period);
    };
    return float((painted(to) - painted(from)) / std::max(1e-6, to - from));
}

} // namespace

std::vector<TracePoint> traceRoad(const Road& road, const View& view, double along, int direction)
{
    std::vector<TracePoint> trace;
    double ahead = 1.5;
    while (ahead < farthestSeen) {
        const double at = along + direction * ahead;
        if (at < 0 || at > Road::length)
            break;
        const RoadPoint p = road.at(at);
        const Vec3 camera = view.toCamera({p.east, p.north, p.height});
        const double turn = std::cos(p.heading - view.heading);
        if (!trace.empty() && camera.z < trace.back().camera.z + 0.05)
            break; // the road turns back
        trace.push_back({at, camera, direction * std::max(0.18, std::abs(turn))});
        ahead += 0.5 + ahead * 0.03;
    }
    return trace;
}

Rgb roadLight(double along)
{
    if (!Road::inTunnel(along))
        return {1, 1, 1};
    const double inside = std::min(along - Road::tunnelStart, Road::tunnelEnd - along);
    const auto day = float(std::exp(-inside / 7));
    const auto pool = float(0.5 + 0.5 * std::cos(along * 2 * 3.14159265 / 10));
    return mix(Rgb{0.56F, 0.46F, 0.33F} * (0.78F + 0.34F * pool), {1, 1, 1}, day);
}

void Ground::draw(Canvas& canvas, const View& view, const std::vector<TracePoint>& trace) const
{
    int filled = canvas.height(); // the uppermost row that is done
    for (size_t i = 0; i + 1 < trace.size() && filled > 0; ++i) {
        const TracePoint& a = trace[i];
        const TracePoint& b = trace[i + 1];
        const float farRow = view.toScreen(b.camera).y;
        const Vec3 run = b.camera - a.camera;
        for (int y = filled - 1; y >= 0 && float(y) + 0.5F >= farRow; --y) {
            // Where the line of sight through the row meets the straight piece from a to b.
            const auto meet = [&](double at) {
                const double drop = (view.horizonY - at) / view.focal;
                return (drop * a.camera.z - a.camera.y) / (run.y - drop * run.z);
            };
            const double k = std::clamp(meet(y + 0.5), 0.0, 1.0);
            const double step = std::min(20.0, std::abs(meet(y) - meet(y + 1.0)));
            const double depth = a.camera.z + run.z * k;
            const double centre = a.camera.x + run.x * k;
            const double turn = a.across + (b.across - a.across) * k;
            const double perPixel = depth / view.focal * turn;
            const double left = -view.centreX * depth / view.focal;
            drawRow(canvas,
                {y, depth, a.along + (b.along - a.along) * k, step * std::abs(b.along - a.along),
                    (left - centre) * turn, perPixel});
            filled = y;
        }
    }
}

void Ground::drawRow(Canvas& canvas, const Row& row) const
{
    const Rgb light = roadLight(row.along);
    const float haze = palette::hazeShare(row.depth);
    std::array<Shades, surfaces.size()> shades;
    for (size_t s = 0; s < surfaces.size(); ++s) {
        for (size_t i = 0; i < shades[s].size(); ++i) {
            const Rgb plain = mix(surfaces[s].dark, surfaces[s].light, float(i) / 63.0F);
            shades[s][i] = packed(mix(plain * light, palette::haze, haze));
        }
    }
    struct Stretch {
        double until; // metres across, seen from the left
        Surface surface;
    };
    const bool tunnel = Road::inTunnel(row.along);
    const double gravelEnd = tunnel ? 5.6 : Road::halfGravel;
    const double asphaltEnd = tunnel ? 5.5 : Road::halfAsphalt;
    const std::array stretches{Stretch{-gravelEnd, grass}, Stretch{-asphaltEnd, gravel},
        Stretch{asphaltEnd, asphalt}, Stretch{gravelEnd, gravel}, Stretch{1e9, grass}};
    // The cross-section is the same on both sides, so looking back only mirrors it.
    const double first = row.perPixel > 0 ? row.across : -row.across;
    const double perPixel = std::abs(row.perPixel);
    int from = 0;
    for (const Stretch& stretch : stretches) {
        const int end = int(std::clamp((stretch.until - first) / perPixel, 0.0, double(canvas.width())));
        drawTexture(canvas, row, from, end, shades[stretch.surface]);
        from = std::max(from, end);
    }
    drawMarks(canvas, row, light, haze);
}

void Ground::drawTexture(Canvas& canvas, const Row& row, int from, int to, const Shades& shades) const
{
    if (to <= from)
        return;
    size_t fine = 0;
    while (fine + 2 < grains.size() && row.length > grains[fine].along * 1.1)
        ++fine;
    struct Layer {
        const uint8_t* cells;
        uint32_t at;
        uint32_t step;
        int weight;
    };
    const auto layer = [&](size_t n, double contrast) {
        const Grain& grain = grains[n];
        const double scale = 4 / grain.across; // cells per metre
        const double start = (row.across + row.perPixel * from + 4000) * scale;
        return Layer{noise.row(uint32_t(row.along * 4 / grain.along) + uint32_t(n) * 97U),
            uint32_t(std::fmod(start, NoiseTile::size) * 65536),
            uint32_t(int64_t(row.perPixel * scale * 65536)), int(contrast * 64)};
    };
    const double fading = 1 - smoothstep(0.35, 1.1, row.length / grains[fine].along);
    Layer a = layer(fine, 0.42 * fading);
    Layer b = layer(fine + 1, 0.58);
    const int offset = 32 * 256 - 128 * (a.weight + b.weight);
    constexpr uint32_t mask = NoiseTile::size - 1;
    uint32_t* pixels = canvas.row(row.y);
    for (int x = from; x < to; ++x) {
        const int n =
            (offset + a.weight * a.cells[a.at >> 16 & mask] + b.weight * b.cells[b.at >> 16 & mask]) >> 8;
        pixels[x] = shades[size_t(n & 63)];
        a.at += a.step;
        b.at += b.step;
    }
}

void Ground::drawMarks(Canvas& canvas, const Row& row, Rgb light, float haze) const
{
    const auto stripe = [&](double across, double width, Rgb colour, float alpha) {
        const double middle = (across - row.across) / row.perPixel;
        const double half = width / 2 / std::abs(row.perPixel);
        const Rgb seen = mix(colour * light, palette::haze, haze);
        canvas.blendSpan(row.y, float(middle - half), float(middle + half), seen, alpha);
    };
    for (const double track : {-2.6, -1.1, 1.1, 2.6})
        stripe(track, 0.55, palette::asphaltDark * 0.8F, 0.16F);
    // The border between asphalt and gravel is broken, not drawn with a ruler.
    const double ragged = 0.25 + 0.2 * hash01(uint32_t(row.along * 3));
    for (const int side : {-1, 1}) {
        if (!Road::inTunnel(row.along))
            stripe(side * Road::halfAsphalt, ragged, palette::gravelDark, 0.5F);
        stripe(side * Road::edgeLine, 0.15, palette::whitePaint, 0.92F);
    }
    const double from = row.along - row.length / 2;
    const bool noOvertaking = row.along > Road::tunnelStart - 60 && row.along < Road::tunnelEnd + 20;
    if (noOvertaking) {
        stripe(-0.13, 0.12, palette::yellowPaint, 0.92F);
        stripe(0.13, 0.12, palette::yellowPaint, 0.92F);
    } else {
        stripe(0, 0.15, palette::yellowPaint, 0.92F * dashCover(from, from + row.length, 3, 8));
    }
}

} // namespace samplecard
