#pragma once

#include "tools/samplecard/Geometry.h"

#include <cstdint>
#include <span>
#include <vector>

namespace samplecard {

/// A point of the road's centre line. East, north and height are metres from the start of the road;
/// the heading is clockwise from north, a positive curvature (1/m) bends to the right, a positive slope
/// climbs.
struct RoadPoint {
    double east = 0;
    double north = 0;
    double height = 0;
    double heading = 0;
    double curvature = 0;
    double slope = 0;
};

enum class PropKind { broadleaf, pine, bush, lampPost, house, marker, chevronSign };

/// Something beside the road, `along` metres from its start and `across` metres right of its centre line.
struct Prop {
    double along = 0;
    double across = 0;
    PropKind kind = PropKind::bush;
    float size = 1;
    uint32_t variant = 0;
};

/// A two-lane country road with a tunnel, the same in every run. Immutable after construction.
class Road {
public:
    static constexpr double length = 10500;
    static constexpr double tunnelStart = 690;
    static constexpr double tunnelEnd = 842;
    static constexpr double laneCentre = 1.85;
    static constexpr double edgeLine = 3.6;
    static constexpr double halfAsphalt = 4.5;
    static constexpr double halfGravel = 5.6;
    static constexpr double rail = 5.3;

    Road();

    RoadPoint at(double along) const;
    /// The place `across` metres right of the centre line and `up` metres above the road: east, north,
    /// height.
    Vec3 place(double along, double across, double up) const;
    static bool inTunnel(double along) { return along >= tunnelStart && along < tunnelEnd; }
    /// Whether a guard rail stands on that side (+1 right, -1 left).
    bool hasRail(double along, int side) const;
    /// Whether houses and lamps line the road here.
    static bool inVillage(double along);
    /// Sorted by `along`.
    std::span<const Prop> props() const { return beside; }
    /// Where the wheels meet a joint or a pothole, with its strength (1 is a plain joint).
    struct Bump {
        double along;
        double strength;
    };
    static std::span<const Bump> bumps();

private:
    void layOut();
    void plant();

    std::vector<RoadPoint> points; // one every metre
    std::vector<Prop> beside;
};

} // namespace samplecard
