#pragma once

#include "tools/samplecard/Geometry.h"

/// The colours of a clear evening in May.
namespace samplecard::palette {

inline constexpr Rgb kZenith{58, 104, 168};
inline constexpr Rgb kMiddleSky{132, 172, 208};
inline constexpr Rgb kHorizon{250, 222, 184};
inline constexpr Rgb kSunGlow{255, 196, 112};
inline constexpr Rgb kCloudLit{255, 236, 212};
inline constexpr Rgb kCloudShade{168, 164, 186};
inline constexpr Rgb kHaze{214, 204, 192};
inline constexpr Rgb kFarHill{146, 160, 186};
inline constexpr Rgb kMiddleHill{104, 130, 140};
inline constexpr Rgb kNearHill{74, 104, 78};
inline constexpr Rgb kGrassDark{62, 84, 36};
inline constexpr Rgb kGrassLight{150, 152, 74};
inline constexpr Rgb kGravelDark{112, 100, 82};
inline constexpr Rgb kGravelLight{184, 168, 138};
inline constexpr Rgb kAsphaltDark{70, 70, 76};
inline constexpr Rgb kAsphaltLight{122, 118, 116};
inline constexpr Rgb kWhitePaint{236, 230, 216};
inline constexpr Rgb kYellowPaint{240, 184, 56};
inline constexpr Rgb kShadow{26, 30, 48};
inline constexpr Rgb kSteel{176, 178, 182};
inline constexpr Rgb kConcrete{172, 164, 150};
inline constexpr Rgb kTunnelLamp{255, 204, 132};

/// The share of haze in front of something that far away (m).
inline float hazeShare(double distance)
{
    return 1 - std::exp(-float(distance) / 420.0F);
}

/// Where the low sun stands: clockwise from north, and the direction towards it (east, north, up).
inline constexpr double kSunAzimuth = 4.86;
inline const Vec3 kToSun = normalized({-0.93, 0.14, 0.38});

/// The light on a surface that looks along `normal`.
inline Rgb lightOn(Vec3 normal)
{
    const auto sun = float(std::max(0.0, dot(normal, kToSun)));
    const auto up = float(0.5 + 0.5 * normal.z);
    return Rgb{0.76F, 0.78F, 0.86F} * (0.66F + 0.34F * up) + Rgb{0.56F, 0.44F, 0.26F} * sun;
}

} // namespace samplecard::palette
