#include "tools/samplecard/Noise.h"

namespace samplecard {

NoiseTile::NoiseTile()
    : cells(size_t(size) * size)
{
    constexpr uint32_t grains = size / 4;
    const auto grain = [](uint32_t x, uint32_t y) { return hash01(x % grains + 11, y % grains + 3); };
    for (uint32_t y = 0; y < size; ++y) {
        for (uint32_t x = 0; x < size; ++x) {
            const float kx = float(smoothstep(0, 4, x % 4 + 0.5));
            const float ky = float(smoothstep(0, 4, y % 4 + 0.5));
            const float top = grain(x / 4, y / 4) * (1 - kx) + grain(x / 4 + 1, y / 4) * kx;
            const float low = grain(x / 4, y / 4 + 1) * (1 - kx) + grain(x / 4 + 1, y / 4 + 1) * kx;
            cells[y * size + x] = uint8_t((top * (1 - ky) + low * ky) * 255);
        }
    }
}

} // namespace samplecard
