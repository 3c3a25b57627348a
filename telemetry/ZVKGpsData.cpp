#include "telemetry/ZVKGpsData.h"

namespace {

bool isChannel(int32_t index)
{
    return index >= 0 && index < ZVKGpsData::channelCount;
}

} // namespace

void ZVKGpsData::clear()
{
    *this = {};
}

void ZVKGpsData::updateFromObject(const ZVKGpsData& other)
{
    *this = other;
}

_PAIR ZVKGpsData::SVonChannelAtIndex(int32_t index) const
{
    return isChannel(index) ? svOnChannel[static_cast<size_t>(index)] : _PAIR{};
}

void ZVKGpsData::setSVonChannel(_PAIR pair, int32_t index)
{
    if (isChannel(index))
        svOnChannel[static_cast<size_t>(index)] = pair;
}

void ZVKGpsData::setSVonChannelWithFirst(uint8_t first, uint8_t second, int32_t index)
{
    setSVonChannel({first, second}, index);
}

void ZVKGpsData::setSVonChannelWithFirst(uint8_t first, int32_t index)
{
    setSVonChannel({first, SVonChannelAtIndex(index).second}, index);
}

void ZVKGpsData::setSVonChannelWithSecond(uint8_t second, int32_t index)
{
    setSVonChannel({SVonChannelAtIndex(index).first, second}, index);
}

uint8_t ZVKGpsData::SatelliteUsedAtIndex(int32_t index) const
{
    return isChannel(index) ? satelliteUsed[static_cast<size_t>(index)] : uint8_t{0};
}

void ZVKGpsData::setSatelliteUsed(uint8_t prn, int32_t index)
{
    if (isChannel(index))
        satelliteUsed[static_cast<size_t>(index)] = prn;
}
