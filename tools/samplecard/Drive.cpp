#include "tools/samplecard/Drive.h"

#include <cstddef>
#include <numbers>

namespace samplecard {

namespace {

struct SpeedKey {
    double seconds;
    double speed; // m/s
};

// Between two keys the speed follows a smooth step.
constexpr std::array profile{
    SpeedKey{0, 14},
    SpeedKey{9, 19.5},
    SpeedKey{16, 20.5},
    SpeedKey{21, 15},
    SpeedKey{28, 15.5},
    SpeedKey{36, 19.5},
    SpeedKey{46, 19.5},
    SpeedKey{52, 18},
    SpeedKey{57, 12.4},
    SpeedKey{67, 12.6},
    SpeedKey{74, 17.5},
    SpeedKey{90, 19},
    SpeedKey{380, 19.5},
    SpeedKey{393.2, 19.3},
    SpeedKey{Drive::impact - 0.1, 6.4},
    SpeedKey{Drive::impact + 0.3, 0},
    SpeedKey{440, 0},
    SpeedKey{452, 13},
    SpeedKey{600, 13},
    SpeedKey{612, 0},
    SpeedKey{100000, 0},
};

constexpr double gravity = 9.80665;
constexpr double pi = std::numbers::pi;
constexpr double latitudeAtStart = 37.4712;
constexpr double longitudeAtStart = 127.1935;
constexpr double metresPerDegree = 111320;

size_t keyBefore(double seconds)
{
    size_t i = 0;
    while (i + 2 < profile.size() && seconds >= profile[i + 1].seconds)
        ++i;
    return i;
}

// The body's height in metres `since` seconds after a joint of the road.
double bumpHeave(double since)
{
    return since < 0 ? 0 : 0.02 * std::exp(-since / 0.28) * std::sin(2 * pi * 2.1 * since);
}

double bumpAcceleration(double since)
{
    return since < 0 || since > 2 ? 0 : 0.30 * std::exp(-since / 0.22) * std::cos(2 * pi * 2.1 * since);
}

} // namespace

Drive::Drive()
{
    double distance = 0;
    distanceAtKey.push_back(distance);
    for (size_t i = 0; i + 1 < profile.size(); ++i) {
        distance +=
            (profile[i].speed + profile[i + 1].speed) / 2 * (profile[i + 1].seconds - profile[i].seconds);
        distanceAtKey.push_back(distance);
    }
    for (const Road::Bump& bump : Road::bumps())
        bumpTimes.push_back(timeAt(bump.along));
    entryTime = timeAt(Road::tunnelStart);
}

double Drive::distanceAt(double seconds) const
{
    const double t = std::max(0.0, seconds);
    const size_t i = keyBefore(t);
    const SpeedKey& a = profile[i];
    const SpeedKey& b = profile[i + 1];
    const double span = b.seconds - a.seconds;
    const double x = std::min(1.0, (t - a.seconds) / span);
    return distanceAtKey[i] + span * (a.speed * x + (b.speed - a.speed) * (x * x * x - x * x * x * x / 2));
}

double Drive::timeAt(double along) const
{
    double from = 0;
    double to = profile[profile.size() - 2].seconds;
    while (to - from > 1e-6) {
        const double middle = (from + to) / 2;
        (distanceAt(middle) < along ? from : to) = middle;
    }
    return to;
}

double Drive::impactShake(double seconds)
{
    const double since = seconds - impact;
    return since < 0 || since > 2 ? 0 : std::exp(-since / 0.25);
}

Motion Drive::motionAt(double seconds) const
{
    const size_t i = keyBefore(std::max(0.0, seconds));
    const SpeedKey& a = profile[i];
    const SpeedKey& b = profile[i + 1];
    const double span = b.seconds - a.seconds;
    const double x = std::clamp((seconds - a.seconds) / span, 0.0, 1.0);
    Motion motion;
    motion.along = distanceAt(seconds);
    motion.across = Road::laneCentre + 2.9 * smoothstep(603, 611, seconds);
    motion.speed = a.speed + (b.speed - a.speed) * x * x * (3 - 2 * x);
    motion.acceleration = (b.speed - a.speed) / span * 6 * x * (1 - x);
    const auto bumps = Road::bumps();
    for (size_t n = 0; n < bumps.size(); ++n)
        motion.heave += bumps[n].strength * bumpHeave(seconds - bumpTimes[n]);
    const double rumble = motion.speed / 20;
    motion.heave += 0.0016 * rumble * std::sin(seconds * 17.3) * std::sin(seconds * 5.1);
    const double shake = impactShake(seconds);
    motion.heave += 0.05 * shake * std::sin((seconds - impact) * 2 * pi * 5);
    const double lateral = motion.speed * motion.speed * way.at(motion.along).curvature / gravity;
    motion.roll = 0.075 * lateral + 0.02 * shake * std::sin((seconds - impact) * 2 * pi * 4.3);
    motion.pitch = -0.035 * motion.acceleration / gravity;
    return motion;
}

Acceleration Drive::accelerationAt(double seconds) const
{
    const Motion motion = motionAt(seconds);
    const auto tenth = uint32_t(std::lround(seconds * 10));
    const double noise = 0.006 + 0.016 * std::min(1.0, motion.speed / 20);
    const auto random = [tenth](
                            uint32_t axis) { return hash01(tenth, axis) + hash01(tenth, axis + 10) - 1.0; };
    Acceleration g;
    g.x = motion.speed * motion.speed * way.at(motion.along).curvature / gravity + noise * random(1);
    g.y = motion.acceleration / gravity + noise * random(2);
    g.z = 1 + 1.6 * noise * random(3);
    const auto bumps = Road::bumps();
    for (size_t n = 0; n < bumps.size(); ++n)
        g.z += bumps[n].strength * bumpAcceleration(seconds - bumpTimes[n]);
    const double shake = impactShake(seconds);
    g.x += 0.9 * shake * std::sin((seconds - impact) * 2 * pi * 2.3 + 0.8);
    g.z += 0.6 * shake * std::cos((seconds - impact) * 2 * pi * 2.1);
    return g;
}

Fix Drive::fixAt(int second) const
{
    const Motion motion = motionAt(second + 0.5);
    Fix fix;
    fix.utcMilliseconds = startUtcMilliseconds + int64_t(second) * 1000;
    fix.valid = !Road::inTunnel(motion.along);
    if (!fix.valid)
        return fix;
    const Vec3 place = way.place(motion.along, Road::laneCentre, 0);
    const double metresPerDegreeEast = metresPerDegree * std::cos(latitudeAtStart * pi / 180);
    fix.latitude = latitudeAtStart + place.y / metresPerDegree;
    fix.longitude = longitudeAtStart + place.x / metresPerDegreeEast;
    fix.kilometresPerHour = motion.speed * 3.6;
    const double course = std::fmod(way.at(motion.along).heading * 180 / pi, 360);
    fix.courseDegrees = course < 0 ? course + 360 : course;
    const auto seed = uint32_t(second / 4);
    // Trees take a few satellites away.
    fix.satellites = (Road::inVillage(motion.along) ? 9 : 7) + int(hash01(seed, 77) * 3);
    fix.hdop = 0.8 + 0.1 * (11 - fix.satellites) + 0.1 * int(hash01(seed, 78) * 3);
    return fix;
}

double Drive::gapAheadAt(double seconds) const
{
    const Motion motion = motionAt(seconds);
    const double following = 13 + 0.85 * motion.speed + 3 * std::sin(seconds / 7);
    const double touching = 2.35;
    if (seconds < impact - 6 || seconds > impact + 44)
        return following;
    // The car ahead stops for good; the gap is what the road still leaves.
    const double standing = distanceAt(impact + 0.3) - motion.along + touching;
    const double k = smoothstep(impact - 6, impact - 1.2, seconds);
    return following + (standing - following) * k;
}

} // namespace samplecard
