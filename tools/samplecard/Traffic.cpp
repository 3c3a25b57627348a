#include "tools/samplecard/Traffic.h"

namespace samplecard {

namespace {

constexpr double passingPeriod = 7;
constexpr double passingSpeed = 16;

constexpr std::array colours{Rgb{232, 232, 228}, Rgb{54, 58, 66}, Rgb{168, 44, 40}, Rgb{60, 92, 150},
    Rgb{150, 154, 158}, Rgb{214, 190, 140}};

Rgb colourOf(uint32_t car)
{
    return colours[size_t(hash01(car, 21) * colours.size())];
}

// Cars that meet ours once every few seconds, wherever it is then.
void addPassing(const Drive& drive, double seconds, bool oncoming, std::vector<Vehicle>& traffic)
{
    const double phase = oncoming ? 0 : passingPeriod / 2;
    const int latest = int((seconds + 20) / passingPeriod);
    for (int car = std::max(0, latest - 6); car <= latest; ++car) {
        const auto seed = uint32_t(car) * 2 + (oncoming ? 1U : 0U);
        const double meeting = car * passingPeriod + phase + 3 * hash01(seed, 20);
        const double travelled = (seconds - meeting) * passingSpeed * (oncoming ? -1 : 1);
        const double along = drive.motionAt(meeting).along + travelled;
        const double across = oncoming ? -Road::laneCentre : Road::laneCentre;
        traffic.push_back({along, across, oncoming, false, colourOf(seed)});
    }
}

} // namespace

std::vector<Vehicle> trafficAt(const Drive& drive, double seconds)
{
    std::vector<Vehicle> traffic;
    addPassing(drive, seconds, true, traffic);
    const Motion own = drive.motionAt(seconds);
    if (seconds > 600) {
        addPassing(drive, seconds, false, traffic);
        return traffic;
    }
    const bool emergency = seconds > Drive::impact - 4.2 && seconds < Drive::impact + 40;
    const bool braking = emergency || own.acceleration < -0.35;
    traffic.push_back({own.along + drive.gapAheadAt(seconds), Road::laneCentre, false, braking,
        emergency || seconds > 300 ? colours[2] : colours[0]});
    const double lag = 14 + 0.7 * own.speed + 3 * std::sin(seconds / 9);
    traffic.push_back({own.along - lag - 4.4, Road::laneCentre, false, false, colours[3]});
    return traffic;
}

} // namespace samplecard
