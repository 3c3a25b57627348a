#include "tools/samplecard/Traffic.h"

namespace samplecard {

namespace {

constexpr double kPassingPeriod = 7;
constexpr double kPassingSpeed = 16;

constexpr std::array kColours{Rgb{232, 232, 228}, Rgb{54, 58, 66}, Rgb{168, 44, 40}, Rgb{60, 92, 150},
    Rgb{150, 154, 158}, Rgb{214, 190, 140}};

Rgb colourOf(uint32_t car)
{
    return kColours[size_t(hash01(car, 21) * kColours.size())];
}

// Cars that meet ours once every few seconds, wherever it is then.
void addPassing(const Drive& drive, double seconds, bool oncoming, std::vector<Vehicle>& traffic)
{
    const double phase = oncoming ? 0 : kPassingPeriod / 2;
    const int latest = int((seconds + 20) / kPassingPeriod);
    for (int car = std::max(0, latest - 6); car <= latest; ++car) {
        const auto seed = uint32_t(car) * 2 + (oncoming ? 1U : 0U);
        const double meeting = car * kPassingPeriod + phase + 3 * hash01(seed, 20);
        const double travelled = (seconds - meeting) * kPassingSpeed * (oncoming ? -1 : 1);
        const double along = drive.motionAt(meeting).along + travelled;
        const double across = oncoming ? -Road::kLaneCentre : Road::kLaneCentre;
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
    const bool emergency = seconds > Drive::kImpact - 4.2 && seconds < Drive::kImpact + 40;
    const bool braking = emergency || own.acceleration < -0.35;
    traffic.push_back({own.along + drive.gapAheadAt(seconds), Road::kLaneCentre, false, braking,
        emergency || seconds > 300 ? kColours[2] : kColours[0]});
    const double lag = 14 + 0.7 * own.speed + 3 * std::sin(seconds / 9);
    traffic.push_back({own.along - lag - 4.4, Road::kLaneCentre, false, false, kColours[3]});
    return traffic;
}

} // namespace samplecard
