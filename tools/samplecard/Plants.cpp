#include "tools/samplecard/Plants.h"

#include <numbers>

namespace samplecard {

namespace {

Sprite::Level emptyLevel(int width, int height)
{
    return {width, height, std::vector<uint32_t>(size_t(width) * size_t(height))};
}

void paintDisc(Sprite::Level& level, float x, float y, float radius, Rgb colour)
{
    const uint32_t opaque = packed(colour);
    for (int v = std::max(0, int(y - radius)); v <= std::min(level.height - 1, int(y + radius)); ++v) {
        for (int u = std::max(0, int(x - radius)); u <= std::min(level.width - 1, int(x + radius)); ++u) {
            const float away = std::hypot(float(u) - x, float(v) - y);
            if (away < radius)
                level.pixels[size_t(v * level.width + u)] = opaque;
        }
    }
}

void paintTrunk(Sprite::Level& level, float x, float top, float bottom, float halfWidth)
{
    for (int v = int(top); v < int(bottom); ++v) {
        const float k = (float(v) - top) / (bottom - top);
        const float half = halfWidth * (0.55F + 0.45F * k);
        for (int u = int(x - half); u <= int(x + half); ++u) {
            const float across = (float(u) - x) / half;
            const Rgb bark = mix({122, 94, 66}, {52, 42, 36}, 0.5F + 0.5F * across);
            if (u >= 0 && u < level.width)
                level.pixels[size_t(v * level.width + u)] = packed(bark);
        }
    }
}

struct Greens {
    Rgb shade;
    Rgb leaf;
    Rgb sunlit;
};

// A leaf's colour by its place in the crown: light comes from the upper left.
Rgb leafColour(const Greens& greens, float x, float y, float random)
{
    const float light = std::clamp(0.45F - 0.38F * x - 0.42F * y + 0.34F * (random - 0.5F), 0.0F, 1.0F);
    constexpr Rgb evening{1.10F, 1.06F, 1.0F};
    return evening
        * (light < 0.5F ? mix(greens.shade, greens.leaf, light * 2)
                        : mix(greens.leaf, greens.sunlit, light * 2 - 1));
}

Sprite paintCrown(uint32_t seed, bool bush)
{
    Sprite::Level level = emptyLevel(256, bush ? 160 : 320);
    const auto width = float(level.width);
    const auto height = float(level.height);
    const float crownHeight = bush ? height * 0.96F : height * (0.70F + 0.08F * hash01(seed, 1));
    if (!bush)
        paintTrunk(level, width / 2, crownHeight * 0.6F, height, width * 0.035F);
    const float warm = hash01(seed, 2);
    const Greens greens{mix({24, 42, 26}, {36, 42, 22}, warm), mix({62, 98, 42}, {88, 104, 40}, warm),
        mix({158, 176, 82}, {196, 178, 84}, warm)};
    constexpr uint32_t lumps = 9;
    const uint32_t leaves = bush ? 700 : 1500;
    for (uint32_t i = 0; i < leaves; ++i) {
        const uint32_t lump = i % lumps;
        const float spin = 2 * std::numbers::pi_v<float> * float(lump) / lumps + hash01(seed, lump + 50);
        const float lumpOut = lump == 0 ? 0 : 0.58F;
        const float angle = 2 * std::numbers::pi_v<float> * hash01(i, seed);
        const float out = 0.42F * std::sqrt(hash01(i, seed + 1));
        const float x = lumpOut * std::cos(spin) * 0.95F + out * std::cos(angle);
        const float y = lumpOut * std::sin(spin) * 0.95F + out * std::sin(angle);
        // Later leaves lie in front and are lighter, so the crown has depth.
        const float front = 0.25F * (float(i) / float(leaves) - 0.5F);
        const Rgb colour = leafColour(greens, x, y - front, hash01(i, seed + 2));
        paintDisc(level, width / 2 + x * width * 0.47F, crownHeight / 2 + y * crownHeight * 0.47F,
            width * (0.014F + 0.022F * hash01(i, seed + 3)), colour);
    }
    return Sprite::fromLevel(std::move(level));
}

Sprite paintPine(uint32_t seed)
{
    Sprite::Level level = emptyLevel(192, 384);
    const auto width = float(level.width);
    const auto height = float(level.height);
    paintTrunk(level, width / 2, height * 0.2F, height, width * 0.03F);
    const Greens greens{{16, 34, 30}, {42, 74, 46}, {132, 146, 84}};
    constexpr uint32_t needles = 2600;
    for (uint32_t i = 0; i < needles; ++i) {
        const float down = 0.02F + 0.88F * std::sqrt(hash01(i, seed));
        const float tier = down * 8 + 0.5F * hash01(seed, 9);
        const float droop = tier - std::floor(tier);
        const float reach = 0.46F * down * (0.55F + 0.45F * droop);
        const float x = (2 * hash01(i, seed + 1) - 1) * reach;
        const float fall = 0.05F * std::abs(x) / std::max(0.05F, reach);
        const Rgb colour = leafColour(greens, 2.1F * x, 1.1F * (0.75F - droop) * -1, hash01(i, seed + 2));
        paintDisc(level, width / 2 + x * width, (down + fall) * height * 0.97F,
            width * (0.010F + 0.016F * hash01(i, seed + 3)), colour);
    }
    return Sprite::fromLevel(std::move(level));
}

} // namespace

Plants::Plants()
{
    for (uint32_t i = 0; i < variants; ++i) {
        broadleaves[i] = paintCrown(100 + 17 * i, false);
        pines[i] = paintPine(300 + 17 * i);
        bushes[i] = paintCrown(500 + 17 * i, true);
    }
}

Plants::Plant Plants::plant(PropKind kind, uint32_t variant) const
{
    const size_t n = variant / 7 % variants;
    switch (kind) {
    case PropKind::pine:
        return {&pines[n], 0.5F};
    case PropKind::bush:
        return {&bushes[n], 1.6F};
    default:
        return {&broadleaves[n], 0.8F};
    }
}

} // namespace samplecard
