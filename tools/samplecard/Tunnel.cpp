#include "tools/samplecard/Tunnel.h"

#include "tools/samplecard/Ground.h"
#include "tools/samplecard/Mesh.h"
#include "tools/samplecard/Palette.h"

#include <array>

namespace samplecard {

namespace {

struct RingPoint {
    double across;
    double up;
};

// The tube from the foot of the left wall over the arch to the foot of the right one.
constexpr std::array lining{RingPoint{-5.3, 0}, RingPoint{-5.3, 0.9}, RingPoint{-5.3, 2.9},
    RingPoint{-4.8, 4.5}, RingPoint{-3.5, 5.8}, RingPoint{-1.4, 6.5}, RingPoint{1.4, 6.5},
    RingPoint{3.5, 5.8}, RingPoint{4.8, 4.5}, RingPoint{5.3, 2.9}, RingPoint{5.3, 0.9}, RingPoint{5.3, 0}};

constexpr std::array facetColours{Rgb{92, 90, 88}, Rgb{226, 220, 204}, Rgb{150, 142, 130}, Rgb{132, 126, 118},
    Rgb{116, 112, 108}, Rgb{108, 104, 102}, Rgb{112, 108, 104}, Rgb{126, 120, 112}, Rgb{142, 136, 124},
    Rgb{216, 210, 196}, Rgb{86, 84, 82}};

constexpr double lampEvery = 8;

} // namespace

Tunnel::Tunnel(const Road& road, const Plants& plants)
    : way(road),
      vegetation(plants)
{
}

void Tunnel::drawSlice(Canvas& canvas, const View& view, double along) const
{
    const double end = std::min(along + slice, Road::tunnelEnd);
    const double distance = std::max(0.0, view.toCamera(way.place(along, 0, 0)).z);
    const Rgb light = roadLight((along + end) / 2) * 1.25F;
    const float haze = palette::hazeShare(distance) * 0.4F;
    const Rgb smoke = palette::tunnelLamp * 0.6F;
    // Reach a little under the neighbouring slices and facets, so that no light shines through the seams.
    const double lap = 0.12;
    for (size_t i = 0; i + 1 < lining.size(); ++i) {
        const RingPoint& a = lining[i];
        const RingPoint& b = lining[i + 1];
        const std::array corners{way.place(along - lap, a.across, a.up),
            way.place(along - lap, b.across * 1.004, b.up * 1.004),
            way.place(end + lap, b.across * 1.004, b.up * 1.004), way.place(end + lap, a.across, a.up)};
        drawFace(canvas, view, corners, mix(facetColours[i] * light, smoke, haze));
    }
    // The joints between the wall's white panels.
    for (const int side : {-1, 1}) {
        const double x = side * 5.28;
        const std::array joint{way.place(along, x, 0.9), way.place(along + 0.06, x, 0.9),
            way.place(along + 0.06, x, 2.9), way.place(along, x, 2.9)};
        if (distance < 60)
            drawFace(canvas, view, joint, {mix(facetColours[2] * light, smoke, haze), 0.7F});
    }
    if (std::fmod(along - Road::tunnelStart, lampEvery) >= slice)
        return;
    for (const int side : {-1, 1}) {
        const std::array lamp{way.place(along + 0.4, side * 3.5, 5.68),
            way.place(along + 2.6, side * 3.5, 5.68), way.place(along + 2.6, side * 4.0, 5.22),
            way.place(along + 0.4, side * 4.0, 5.22)};
        drawFace(canvas, view, lamp, Rgb{255, 240, 206});
        const Vec3 middle = view.toCamera(way.place(along + 1.5, side * 3.7, 5.4));
        if (middle.z > 2)
            canvas.glow(view.toScreen(middle), std::min(160.0F, float(view.focal * 1.5 / middle.z)),
                palette::tunnelLamp, 0.45F);
    }
}

std::vector<Point> Tunnel::openingAt(const View& view, double along) const
{
    std::vector<Vec3> camera;
    for (const RingPoint& p : lining)
        camera.push_back(view.toCamera(way.place(along, p.across, p.up)));
    std::vector<Point> outline;
    view.project(camera, outline);
    return outline;
}

void Tunnel::drawHill(
    Canvas& canvas, const View& view, double along, int outward, std::span<const Point> hole) const
{
    std::vector<Vec3> camera;
    const double back = along - outward * 3;
    const auto ridge = [](double across) {
        const double x = across / 75;
        return 34 * std::exp(-x * x * 3.2) + 2.2 * std::sin(across * 0.21) + 1.2 * std::sin(across * 0.53);
    };
    for (double across = -88; across <= 88; across += 4)
        camera.push_back(view.toCamera(way.place(back, across, std::max(0.0, ridge(across)))));
    camera.push_back(view.toCamera(way.place(back, 95, 0)));
    camera.push_back(view.toCamera(way.place(back, -95, 0)));
    std::vector<Point> outline;
    view.project(camera, outline);
    const float haze = palette::hazeShare(std::max(1.0, view.toCamera(way.place(back, 0, 0)).z));
    canvas.fill(
        outline, {mix({98, 112, 60}, palette::haze, haze), mix({50, 66, 38}, palette::haze, haze), 1}, hole);
    constexpr uint32_t treeCount = 190;
    for (uint32_t i = 0; i < treeCount; ++i) {
        // From the ridge down, so that lower trees stand in front.
        const double k = double(i) / treeCount;
        const double across = (hash01(i, 91) * 2 - 1) * 66;
        const double up = ridge(across) * (1 - k);
        if (up < (std::abs(across) < 13 ? 10.5 : 0.5))
            continue;
        const PropKind kind = hash01(i, 92) < 0.6F ? PropKind::pine : PropKind::broadleaf;
        const Plants::Plant plant = vegetation.plant(kind, i * 7);
        const Vec3 foot = view.toCamera(way.place(back, across, up - 0.5));
        if (foot.z < 4)
            continue;
        const double height = 4.5 + 4 * hash01(i, 93);
        const Point low = view.toScreen(foot);
        const Point high = view.toScreen({foot.x, foot.y + height, foot.z});
        const float half = (low.y - high.y) * plant.widthPerHeight / 2;
        canvas.draw(*plant.sprite, {low.x - half, high.y}, {low.x + half, low.y},
            0.68F + 0.30F * hash01(i, 94), palette::haze, haze);
    }
}

void Tunnel::drawPortal(Canvas& canvas, const View& view, bool atStart) const
{
    const double along = atStart ? Road::tunnelStart : Road::tunnelEnd;
    const int outward = atStart ? -1 : 1;
    const std::vector<Point> opening = openingAt(view, along);
    if (opening.size() < 3)
        return;
    drawHill(canvas, view, along, -outward, opening);
    const float haze = palette::hazeShare(std::max(1.0, view.toCamera(way.place(along, 0, 0)).z));
    const auto shaded = [haze](float k) { return mix(palette::concrete * k, palette::haze, haze); };
    const auto facade = [&](double half, double top, double out) {
        std::vector<Vec3> camera;
        for (const auto& [x, y] :
            {std::pair{-half, 0.0}, std::pair{-half, top - 1.6}, std::pair{-half * 0.62, top},
                std::pair{half * 0.62, top}, std::pair{half, top - 1.6}, std::pair{half, 0.0}})
            camera.push_back(view.toCamera(way.place(along + outward * out, x, y)));
        std::vector<Point> outline;
        view.project(camera, outline);
        return outline;
    };
    canvas.fill(facade(10.4, 9.6, 0), {shaded(1.06F), shaded(0.80F), 1}, opening);
    // The lining: a lighter ring around the opening.
    std::vector<Vec3> ring;
    for (const RingPoint& p : lining)
        ring.push_back(view.toCamera(way.place(along, p.across * 1.09, p.up * 1.08)));
    std::vector<Point> outer;
    view.project(ring, outer);
    canvas.fill(outer, {shaded(1.28F), shaded(1.05F), 1}, opening);
}

} // namespace samplecard
