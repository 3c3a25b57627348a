#include "telemetry/Readouts.h"

#include "common/Log.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

/// Cut toward zero; a number that does not fit gives the nearest that does, no number gives 0.
template <typename Whole> Whole cut(double value)
{
    if (std::isnan(value))
        return 0;
    constexpr double lowest = static_cast<double>(std::numeric_limits<Whole>::min());
    constexpr double beyond = -lowest;
    if (value >= beyond)
        return std::numeric_limits<Whole>::max();
    return static_cast<Whole>(std::max(value, lowest));
}

double speedFactor(uint8_t KM, bool showMiles)
{
    if (showMiles)
        return KM == '9' ? 1.609344 : 1;
    return KM == '1' ? 0.621371192 : 1;
}

} // namespace

size_t proportionalIndex(double position, size_t n)
{
    const auto index = static_cast<uint64_t>(cut<int64_t>(position * static_cast<double>(n)));
    return index < n ? index : n - 1;
}

std::string gsensorText(char axis, float value)
{
    return formatted("%c=%s%.2f", axis, value > 0 ? "+" : "", double(value));
}

std::string speedText(double fSpeed, uint8_t KM, bool showMiles)
{
    const int32_t speed = cut<int32_t>(fSpeed * speedFactor(KM, showMiles));
    return formatted("%d %s", speed, showMiles ? "Mi/h" : "Km/h");
}

std::string setLatLagScript(double longitude, double latitude)
{
    return formatted("setLatLag('%f','%f')", longitude, latitude);
}
