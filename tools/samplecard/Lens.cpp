#include "tools/samplecard/Lens.h"

namespace samplecard {

namespace {

// Neighbouring columns that take their pixels from the same pair of rows.
struct Columns {
    int from;
    int to;
    int row; // above the frame's row
};

// What every byte of a row takes from the upper and the lower row, in 1/128.
struct Weights {
    std::vector<uint16_t> upper;
    std::vector<uint16_t> lower;
};

std::vector<Columns> planColumns(int width, const Lens& lens, Weights& weights)
{
    weights.upper.resize(size_t(width) * 4);
    weights.lower.resize(size_t(width) * 4);
    std::vector<Columns> blocks;
    for (int x = 0; x < width; ++x) {
        const float source = float(lens.margin) - lens.down - lens.tilt * (float(x) - float(width) / 2);
        const int row = int(std::floor(source));
        const float part = source - float(row);
        for (size_t channel = 0; channel < 4; ++channel) {
            weights.upper[size_t(x) * 4 + channel] = uint16_t((1 - part) * lens.gain * 128 + 0.5F);
            weights.lower[size_t(x) * 4 + channel] = uint16_t(part * lens.gain * 128);
        }
        if (blocks.empty() || blocks.back().row != row)
            blocks.push_back({x, x, row});
        blocks.back().to = x + 1;
    }
    return blocks;
}

// Plain pointers and one simple loop, which compilers turn into vector code.
template <bool mayClip>
void blendRows(
    const uint8_t* a, const uint8_t* b, const uint16_t* upper, const uint16_t* lower, uint8_t* to, int n)
{
    for (int i = 0; i < n; ++i) {
        const auto sum = uint16_t(uint16_t(a[i] * upper[i]) + uint16_t(b[i] * lower[i]));
        if constexpr (mayClip)
            to[i] = uint8_t(std::min<uint16_t>(255, uint16_t(sum >> 7)));
        else
            to[i] = uint8_t(sum >> 7);
    }
}

uint16_t redOf(uint32_t pixel)
{
    return uint16_t(uint16_t(pixel) & 255);
}
uint16_t greenOf(uint32_t pixel)
{
    return uint16_t(uint16_t(pixel) >> 8);
}
uint16_t blueOf(uint32_t pixel)
{
    return uint16_t(uint16_t(pixel >> 16) & 255);
}

void lumaRow(const uint32_t* pixels, uint8_t* to, size_t width)
{
    for (size_t x = 0; x < width; ++x) {
        const uint32_t p = pixels[x];
        // At most 60324: sixteen bits are enough, and twice as quick.
        const auto sum = uint16_t(
            uint16_t(47 * redOf(p)) + uint16_t(157 * greenOf(p)) + uint16_t(16 * blueOf(p)) + uint16_t(4224));
        to[x] = uint8_t(sum >> 8);
    }
}

} // namespace

void expose(const Canvas& scene, Canvas& frame, const Lens& lens)
{
    Weights weights;
    const std::vector<Columns> blocks = planColumns(frame.width(), lens, weights);
    const auto blend = lens.gain > 1 ? blendRows<true> : blendRows<false>;
    for (int y = 0; y < frame.height(); ++y) {
        for (const Columns& block : blocks) {
            const auto source = [&](int row) {
                const uint32_t* pixels = scene.row(std::clamp(row, 0, scene.height() - 1));
                return reinterpret_cast<const uint8_t*>(pixels + block.from);
            };
            const auto first = size_t(block.from) * 4;
            blend(source(y + block.row), source(y + block.row + 1), weights.upper.data() + first,
                weights.lower.data() + first, reinterpret_cast<uint8_t*>(frame.row(y) + block.from),
                (block.to - block.from) * 4);
        }
    }
}

void toYuv420(const Canvas& frame, std::vector<uint8_t>& planes)
{
    const auto width = size_t(frame.width());
    const auto height = size_t(frame.height());
    planes.resize(width * height * 3 / 2);
    uint8_t* luma = planes.data();
    uint8_t* blue = luma + width * height;
    uint8_t* red = blue + width * height / 4;
    for (size_t y = 0; y < height; ++y)
        lumaRow(frame.row(int(y)), luma + y * width, width);
    for (size_t y = 0; y < height / 2; ++y) {
        const uint32_t* upper = frame.row(int(y) * 2);
        const uint32_t* lower = frame.row(int(y) * 2 + 1);
        for (size_t x = 0; x < width / 2; ++x) {
            const auto mean = [&](auto channel) {
                const int sum = channel(upper[2 * x]) + channel(upper[2 * x + 1]) + channel(lower[2 * x])
                    + channel(lower[2 * x + 1]);
                return uint16_t(sum >> 2);
            };
            const uint16_t r = mean(redOf), g = mean(greenOf), b = mean(blueOf);
            blue[y * (width / 2) + x] = uint8_t(uint16_t(32896 + 112 * b - 26 * r - 86 * g) >> 8);
            red[y * (width / 2) + x] = uint8_t(uint16_t(32896 + 112 * r - 102 * g - 10 * b) >> 8);
        }
    }
}

} // namespace samplecard
