#pragma once

#include "tools/samplecard/Geometry.h"

#include <vector>

namespace samplecard {

/// Smooth noise from 0 to 1 that repeats after `period` cells along x.
inline float valueNoise(float x, float y, uint32_t period, uint32_t seed)
{
    const float fx = std::floor(x);
    const float fy = std::floor(y);
    const auto ease = [](float k) { return k * k * (3 - 2 * k); };
    const float kx = ease(x - fx);
    const float ky = ease(y - fy);
    const auto wrap = [period](int n) {
        const int p = int(period);
        return uint32_t((n % p + p) % p);
    };
    const auto corner = [&](int dx, int dy) {
        return hash01(wrap(int(fx) + dx) + seed * 977U, uint32_t(int(fy) + dy) + seed);
    };
    const float top = corner(0, 0) + (corner(1, 0) - corner(0, 0)) * kx;
    const float low = corner(0, 1) + (corner(1, 1) - corner(0, 1)) * kx;
    return top + (low - top) * ky;
}

/// Octaves of `valueNoise`, each twice as fine and half as strong; 0 to 1.
inline float fractalNoise(float x, float y, uint32_t period, uint32_t seed, int octaves)
{
    float sum = 0;
    float weight = 0.5F;
    float total = 0;
    for (int i = 0; i < octaves; ++i) {
        sum += weight * valueNoise(x, y, period, seed + uint32_t(i));
        total += weight;
        x *= 2;
        y *= 2;
        period *= 2;
        weight /= 2;
    }
    return sum / total;
}

/// A square of smooth noise bytes that repeats in both directions; its grains are about four cells wide.
class NoiseTile {
public:
    static constexpr uint32_t size = 512;
    NoiseTile();
    const uint8_t* row(uint32_t v) const { return cells.data() + (v & (size - 1)) * size_t(size); }

private:
    std::vector<uint8_t> cells;
};

} // namespace samplecard
