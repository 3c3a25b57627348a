#pragma once

#include "tools/samplecard/Geometry.h"

/// The colours of a clear evening in May.
namespace samplecard::palette {

inline constexpr Rgb zenith{58, 104, 168};
inline constexpr Rgb middleSky{132, 172, 208};
inline constexpr Rgb horizon{250, 222, 184};
inline constexpr Rgb sunGlow{255, 196, 112};
inline constexpr Rgb cloudLit{255, 236, 212};
inline constexpr Rgb cloudShade{168, 164, 186};
inline constexpr Rgb haze{214, 204, 192};
inline constexpr Rgb farHill{146, 160, 186};
inline constexpr Rgb middleHill{104, 130, 140};
inline constexpr Rgb nearHill{74, 104, 78};
inline constexpr Rgb grassDark{62, 84, 36};
inline constexpr Rgb grassLight{150, 152, 74};
inline constexpr Rgb gravelDark{112, 100, 82};
inline constexpr Rgb gravelLight{184, 168, 138};
inline constexpr Rgb asphaltDark{70, 70, 76};
inline constexpr Rgb asphaltLight{122, 118, 116};
inline constexpr Rgb whitePaint{236, 230, 216};
inline constexpr Rgb yellowPaint{240, 184, 56};
inline constexpr Rgb shadow{26, 30, 48};
inline constexpr Rgb steel{176, 178, 182};
inline constexpr Rgb concrete{172, 164, 150};
inline constexpr Rgb tunnelLamp{255, 204, 132};

/// The share of haze in front of something that far away (m).
inline float hazeShare(double distance)
{
    return 1 - std::exp(-float(distance) / 420.0F);
}

/// Where the low sun stands: clockwise from north, and the direction towards it (east, north, up).
inline constexpr double sunAzimuth = 4.86;
inline const Vec3 toSun = normalized({-0.93, 0.14, 0.38});

/// The light on a surface that looks along `normal`.
inline Rgb lightOn(Vec3 normal)
{
    const auto sun = float(std::max(0.0, dot(normal, toSun)));
    const auto up = float(0.5 + 0.5 * normal.z);
    return Rgb{0.76F, 0.78F, 0.86F} * (0.66F + 0.34F * up) + Rgb{0.56F, 0.44F, 0.26F} * sun;
}

} // namespace samplecard::palette
