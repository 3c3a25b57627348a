#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

/// Small value types of the drawn drive. Lengths in metres, angles in radians.
namespace samplecard {

struct Point {
    float x = 0;
    float y = 0;
};

struct Vec3 {
    double x = 0;
    double y = 0;
    double z = 0;
};

inline Vec3 operator+(Vec3 a, Vec3 b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vec3 operator-(Vec3 a, Vec3 b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vec3 operator*(Vec3 a, double k)
{
    return {a.x * k, a.y * k, a.z * k};
}
inline double dot(Vec3 a, Vec3 b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vec3 cross(Vec3 a, Vec3 b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline Vec3 normalized(Vec3 a)
{
    return a * (1.0 / std::max(1e-9, std::sqrt(dot(a, a))));
}

/// A colour with channels from 0 to 255; arithmetic may leave the range, `packed` clamps.
struct Rgb {
    float r = 0;
    float g = 0;
    float b = 0;
};

inline Rgb operator*(Rgb c, float k)
{
    return {c.r * k, c.g * k, c.b * k};
}
inline Rgb operator*(Rgb a, Rgb b)
{
    return {a.r * b.r, a.g * b.g, a.b * b.b};
}
inline Rgb operator+(Rgb a, Rgb b)
{
    return {a.r + b.r, a.g + b.g, a.b + b.b};
}
inline Rgb mix(Rgb a, Rgb b, float k)
{
    return {a.r + (b.r - a.r) * k, a.g + (b.g - a.g) * k, a.b + (b.b - a.b) * k};
}

/// The colour as a canvas pixel: bytes R, G, B, 255 in memory order.
inline uint32_t packed(Rgb c)
{
    const auto byte = [](float v) { return uint32_t(std::clamp(v, 0.0F, 255.0F)); };
    return byte(c.r) | byte(c.g) << 8 | byte(c.b) << 16 | 0xFF000000U;
}

inline Rgb unpacked(uint32_t p)
{
    return {float(p & 255), float(p >> 8 & 255), float(p >> 16 & 255)};
}

inline double smoothstep(double from, double to, double x)
{
    const double k = std::clamp((x - from) / (to - from), 0.0, 1.0);
    return k * k * (3 - 2 * k);
}

/// A repeatable pseudo-random number from 0 (inclusive) to 1 (exclusive) for a lattice point.
inline float hash01(uint32_t a, uint32_t b = 0)
{
    uint32_t h = a * 0x9E3779B1U ^ (b + 0x7F4A7C15U) * 0x85EBCA6BU;
    h = (h ^ h >> 15) * 0x2C1B3C6DU;
    h = (h ^ h >> 12) * 0x297A2D39U;
    return float((h ^ h >> 15) >> 8) * (1.0F / 16777216.0F);
}

} // namespace samplecard
