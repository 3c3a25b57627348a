#pragma once

#include "telemetry/ZVKGpsData.h"

#include <cstring>

/// The fields of a fix that the camera's own sentences carry, in their precision: a third of the whole
/// record's size.
class KeptFix {
public:
    explicit KeptFix(const ZVKGpsData& fix)
        : latitude(static_cast<float>(fix.Latitude)),
          longitude(static_cast<float>(fix.Longitude)),
          speed(static_cast<float>(fix.SpeedOverGround)),
          course(static_cast<float>(fix.CourseOverGround)),
          hdop(static_cast<float>(fix.HDOP)),
          satellitesUsed(fix.SatelliteUsedCount),
          now(fix.Now),
          hemispheres{fix.NS, fix.EW}
    {
    }

    explicit operator ZVKGpsData() const
    {
        ZVKGpsData fix;
        fix.Latitude = double{latitude};
        fix.Longitude = double{longitude};
        fix.SpeedOverGround = double{speed};
        fix.CourseOverGround = double{course};
        fix.HDOP = double{hdop};
        fix.SatelliteUsedCount = satellitesUsed;
        fix.Now = now;
        fix.NS = hemispheres[0];
        fix.EW = hemispheres[1];
        return fix;
    }

    /// Bit for bit: -0 is another number than 0.
    bool operator==(const KeptFix& other) const { return std::memcmp(this, &other, sizeof *this) == 0; }

private:
    float latitude;
    float longitude;
    float speed;
    float course;
    float hdop;
    uint32_t satellitesUsed;
    _SYSTEMTIME now;
    char hemispheres[4]; // N or S, E or W; the rest is zero, so that records can be compared as bytes
};
static_assert(sizeof(KeptFix) == 44);
