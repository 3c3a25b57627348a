#include "telemetry/Readouts.h"

#include "common/Log.h"

#include <cmath>

namespace {

/// Whether the number is one and lies within the limits.
bool isWithin(double value, double lowest, double highest)
{
    return value >= lowest && value <= highest;
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
    const double place = std::trunc(position * static_cast<double>(n));
    if (std::isnan(place))
        return 0;
    return isWithin(place, 0, static_cast<double>(n - 1)) ? static_cast<size_t>(place) : n - 1;
}

std::string gsensorText(char axis, float value)
{
    constexpr double strongest = 200;
    if (!isWithin(double(value), -strongest, strongest))
        return {axis, '='};
    return formatted("%c=%s%.2f", axis, value > 0 ? "+" : "", double(value));
}

std::string speedText(double fSpeed, uint8_t KM, bool showMiles)
{
    constexpr double fastest = 1000; // km/h
    if (!isWithin(fSpeed * speedFactor(KM, false), 0, fastest))
        return {};
    const auto speed = static_cast<int>(fSpeed * speedFactor(KM, showMiles));
    return formatted("%d %s", speed, showMiles ? "Mi/h" : "Km/h");
}

std::string degreesText(double degrees, double largest)
{
    return isWithin(degrees, -largest, largest) ? formatted("%.4f", degrees) : std::string();
}

std::string hdopText(double hdop)
{
    return hdop >= 0 && hdop < 1000 ? formatted("%.1f", hdop) : std::string();
}

std::string satelliteText(uint32_t count)
{
    return count < 100 ? std::to_string(count) : std::string();
}

std::string setLatLagScript(double longitude, double latitude)
{
    if (!isWithin(longitude, -180, 180) || !isWithin(latitude, -90, 90))
        longitude = latitude = 0;
    return formatted("setLatLag('%f','%f')", longitude, latitude);
}
