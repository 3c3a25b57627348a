#include "tools/samplecard/Road.h"

#include <array>
#include <cstddef>

namespace samplecard {

namespace {

struct Bend {
    double start;
    double length;
    double radius; // positive bends to the right
};

constexpr std::array allBends{
    Bend{30, 110, -260},
    Bend{160, 150, 170},
    Bend{385, 130, -82},
    Bend{535, 130, 240},
    Bend{730, 130, 420},
    Bend{880, 120, -190},
    Bend{1048, 78, 58},
    Bend{1136, 88, -62},
    Bend{1250, 160, 210},
    Bend{1450, 200, -300},
};

constexpr double firstPlainMetre = 1700;
constexpr double headingAtStart = 5.75;

double bendCurvature(const Bend& bend, double along)
{
    const double x = (along - bend.start) / bend.length;
    if (x <= 0 || x >= 1)
        return 0;
    return smoothstep(0, 0.3, x) * smoothstep(1, 0.7, x) / bend.radius;
}

double curvature(double along)
{
    double sum = 0;
    for (const Bend& bend : allBends)
        sum += bendCurvature(bend, along);
    const bool straight = (along > 7150 && along < 7650) || along > 9300;
    if (along > firstPlainMetre && !straight) {
        const auto block = uint32_t(along / 300);
        const double radius = (block % 2 ? 1 : -1) * (220 + 300 * hash01(block, 5));
        sum += bendCurvature({block * 300.0 + 20, 260, radius}, along);
    }
    return sum;
}

double slope(double along)
{
    return 0.013 * std::sin(along / 110) + 0.004 * std::sin(along / 47 + 1);
}

} // namespace

Road::Road()
{
    layOut();
    plant();
}

void Road::layOut()
{
    points.resize(size_t(length) + 1);
    RoadPoint point;
    point.heading = headingAtStart;
    for (size_t i = 0; i < points.size(); ++i) {
        point.curvature = curvature(double(i));
        point.slope = slope(double(i));
        points[i] = point;
        const double middle = point.heading + point.curvature / 2;
        point.east += std::sin(middle);
        point.north += std::cos(middle);
        point.height += slope(double(i) + 0.5);
        point.heading += (point.curvature + curvature(double(i) + 1)) / 2;
    }
}

RoadPoint Road::at(double along) const
{
    const double clamped = std::clamp(along, 0.0, length - 1.001);
    const auto i = size_t(clamped);
    const double k = clamped - double(i);
    const RoadPoint& a = points[i];
    const RoadPoint& b = points[i + 1];
    const auto between = [k](double from, double to) { return from + (to - from) * k; };
    return {between(a.east, b.east), between(a.north, b.north), between(a.height, b.height),
        between(a.heading, b.heading), between(a.curvature, b.curvature), between(a.slope, b.slope)};
}

Vec3 Road::place(double along, double across, double up) const
{
    const RoadPoint p = at(along);
    return {p.east + std::cos(p.heading) * across, p.north - std::sin(p.heading) * across, p.height + up};
}

bool Road::inVillage(double along)
{
    return along < 330 || (along > 1290 && along < 1900) || (along > 7250 && along < 7700) || along > 9300;
}

bool Road::hasRail(double along, int side) const
{
    if (inTunnel(along) || inVillage(along))
        return false;
    // Rails stand on the outer side of bends and along the approach to the tunnel.
    const bool nearTunnel = along > tunnelStart - 50 && along < tunnelEnd + 40;
    return nearTunnel || at(along).curvature * side < -0.0015 || (side > 0 && along > 900 && along < 1290);
}

std::span<const Road::Bump> Road::bumps()
{
    static constexpr std::array all{
        Bump{58, 0.7},
        Bump{127, 1.0},
        Bump{215, 0.6},
        Bump{338, 1.5},
        Bump{455, 0.7},
        Bump{604, 1.0},
        Bump{690, 1.2},
        Bump{842, 1.3},
        Bump{936, 0.7},
        Bump{1012, 1.9},
        Bump{1120, 0.6},
        Bump{1236, 1.2},
        Bump{1390, 1.0},
        Bump{7215, 0.8},
        Bump{7330, 0.9},
        Bump{9200, 1.0},
    };
    return all;
}

void Road::plant()
{
    for (uint32_t step = 0; step * 4.0 < length; ++step) {
        const double along = step * 4.0 + hash01(step, 1) * 3;
        const bool village = inVillage(along);
        const bool portal = along > tunnelStart - 14 && along < tunnelEnd + 14;
        for (const int side : {-1, 1}) {
            const uint32_t seed = step * 2 + (side > 0 ? 1U : 0U);
            const auto random = [seed](uint32_t n) { return hash01(seed, n); };
            if (!portal && random(2) < (village ? 0.16F : 0.78F)) {
                const double out = (village ? 11.0 : 8.0) + std::pow(random(3), 1.6) * (village ? 40 : 34);
                const bool pine = random(4) < (village ? 0.2F : 0.45F);
                beside.push_back({along, side * out, pine ? PropKind::pine : PropKind::broadleaf,
                    5.5F + 5.5F * random(5), seed * 7919U});
            }
            if (!portal && random(6) < (village ? 0.15F : 0.40F))
                beside.push_back({along + 1.5, side * (6.6 + 5 * random(7)), PropKind::bush,
                    0.8F + 1.1F * random(8), seed * 104729U});
            if (village && step % 6 == (side > 0 ? 0U : 3U) && random(9) < 0.85F)
                beside.push_back({along, side * (14.5 + 5 * random(10)), PropKind::house, 1.0F, seed * 31U});
            const bool parkingPlace = along > 9460 && along < 9505;
            if (village && step % 9 == 4 && side > 0 && !parkingPlace)
                beside.push_back({along, side * 6.0, PropKind::lampPost, 7.5F, seed});
            if (!village && !portal && step % 5 == 0)
                beside.push_back({along, side * 4.95, PropKind::marker, 1.0F, seed});
            const double bend = at(along).curvature;
            if (!village && !portal && step % 4 == 2 && std::abs(bend) > 0.009 && bend * side < 0)
                beside.push_back({along, side * 6.1, PropKind::chevronSign, 1.0F, bend > 0 ? 1U : 0U});
        }
    }
    std::stable_sort(
        beside.begin(), beside.end(), [](const Prop& a, const Prop& b) { return a.along < b.along; });
}

} // namespace samplecard
