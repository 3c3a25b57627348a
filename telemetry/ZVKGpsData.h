#pragma once

#include "telemetry/SystemTime.h"

#include <array>
#include <cstddef>
#include <cstdint>

/// A satellite on a receiver channel: its PRN number and its signal-to-noise ratio in dB-Hz.
struct _PAIR {
    uint8_t first = 0;
    uint8_t second = 0;

    bool operator==(const _PAIR&) const = default;
};
static_assert(sizeof(_PAIR) == 2);

/// A GPS fix; each sentence updates only the fields that it carries. Numbers have single precision.
class ZVKGpsData {
public:
    static constexpr int channelCount = 12;

    char NS = 'N'; ///< latitude hemisphere, 'N' or 'S'
    char EW = 'E'; ///< longitude hemisphere, 'E' or 'W'
    uint32_t SatelliteCount = 0; ///< in view
    uint32_t SatelliteUsedCount = 0; ///< used in the fix
    double PDOP = 0;
    double HDOP = 0;
    double VDOP = 0;
    double Latitude = 0; ///< ddmm.mmmm, a magnitude
    double Longitude = 0; ///< dddmm.mmmm, a magnitude
    double SpeedOverGround = 0; ///< as written in the sentence (knots in "$GPRMC")
    double CourseOverGround = 0; ///< degrees
    _SYSTEMTIME Now; ///< UTC

    /// Back to a new record: zeros, 'N' and 'E'.
    void clear();
    void updateFromObject(const ZVKGpsData& other);
    ZVKGpsData duplicate() const { return *this; }

    // Indices run from 0 to 11. Others read as zero; writing to them does nothing.
    _PAIR SVonChannelAtIndex(int32_t index) const;
    void setSVonChannel(_PAIR pair, int32_t index);
    void setSVonChannelWithFirst(uint8_t first, uint8_t second, int32_t index);
    void setSVonChannelWithFirst(uint8_t first, int32_t index);
    void setSVonChannelWithSecond(uint8_t second, int32_t index);
    uint8_t SatelliteUsedAtIndex(int32_t index) const;
    void setSatelliteUsed(uint8_t prn, int32_t index);

    bool operator==(const ZVKGpsData&) const = default;

private:
    std::array<_PAIR, channelCount> svOnChannel;
    std::array<uint8_t, channelCount> satelliteUsed{};
};
