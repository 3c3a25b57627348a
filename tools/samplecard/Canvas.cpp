#include "tools/samplecard/Canvas.h"

namespace samplecard {

namespace {

constexpr int rowSamples = 4;

} // namespace

Canvas::Canvas(int width, int height)
    : columns(width),
      rows(height),
      picture(size_t(width) * size_t(height), 0xFF000000U),
      coverage(size_t(width) + 2)
{
}

void Canvas::addEdges(std::span<const Point> outline)
{
    for (size_t i = 0; i < outline.size(); ++i) {
        const Point a = outline[i];
        const Point b = outline[(i + 1) % outline.size()];
        if (a.y < b.y)
            edges.push_back({a.x, a.y, b.x, b.y});
        else if (b.y < a.y)
            edges.push_back({b.x, b.y, a.x, a.y});
    }
}

void Canvas::coverRow(int y, float& from, float& to)
{
    const auto right = float(columns);
    for (int sample = 0; sample < rowSamples; ++sample) {
        const float at = float(y) + (float(sample) + 0.5F) / rowSamples;
        crossings.clear();
        for (const Edge& e : edges) {
            if (at >= e.y0 && at < e.y1)
                crossings.push_back(e.x0 + (e.x1 - e.x0) * (at - e.y0) / (e.y1 - e.y0));
        }
        std::sort(crossings.begin(), crossings.end());
        for (size_t i = 0; i + 1 < crossings.size(); i += 2) {
            const float a = std::clamp(crossings[i], 0.0F, right);
            const float b = std::clamp(crossings[i + 1], 0.0F, right);
            if (b <= a)
                continue;
            from = std::min(from, a);
            to = std::max(to, b);
            const auto start = [this](float x, float weight) {
                const auto pixel = size_t(x);
                const float part = x - float(pixel);
                coverage[pixel] += weight * (1 - part);
                coverage[pixel + 1] += weight * part;
            };
            start(a, 1.0F / rowSamples);
            start(b, -1.0F / rowSamples);
        }
    }
}

void Canvas::blendCovered(int y, float from, float to, Rgb colour, float alpha)
{
    const uint32_t over = packed(colour);
    uint32_t* pixels = row(y);
    const int last = std::min(columns - 1, int(to));
    float cover = 0;
    uint32_t share = 0;
    for (int x = int(from); x <= last; ++x) {
        float& change = coverage[size_t(x)];
        if (change != 0) {
            cover += change;
            change = 0;
            share = uint32_t(std::clamp(cover * alpha * 256 + 0.5F, 0.0F, 256.0F));
        }
        pixels[x] = share == 256 ? over : blended(pixels[x], over, share);
    }
    // A span that ends at the border leaves its last difference just behind it.
    coverage[size_t(last) + 1] = 0;
}

void Canvas::fill(std::span<const Point> outline, const Paint& paint, std::span<const Point> hole)
{
    edges.clear();
    addEdges(outline);
    float top = float(rows);
    float bottom = 0;
    for (const Edge& e : edges) {
        top = std::min(top, e.y0);
        bottom = std::max(bottom, e.y1);
    }
    addEdges(hole);
    const int first = int(std::clamp(top, 0.0F, float(rows)));
    const int end = int(std::clamp(std::ceil(bottom), 0.0F, float(rows)));
    for (int y = first; y < end; ++y) {
        float from = float(columns);
        float to = 0;
        coverRow(y, from, to);
        if (to > from) {
            const float k = std::clamp((float(y) - top) / std::max(1.0F, bottom - top), 0.0F, 1.0F);
            blendCovered(y, from, to, mix(paint.top, paint.bottom, k), paint.alpha);
        }
    }
}

void Canvas::blendSpan(int y, float from, float to, Rgb colour, float alpha)
{
    const float a = std::clamp(from, 0.0F, float(columns));
    const float b = std::clamp(to, 0.0F, float(columns));
    if (b <= a || y < 0 || y >= rows)
        return;
    const uint32_t over = packed(colour);
    uint32_t* pixels = row(y);
    const auto blend = [&](int x, float cover) {
        pixels[x] = blended(pixels[x], over, uint32_t(cover * alpha * 256));
    };
    const int first = int(a);
    const int last = std::min(int(b), columns - 1);
    if (first == last) {
        blend(first, b - a);
        return;
    }
    blend(first, float(first + 1) - a);
    const auto share = uint32_t(alpha * 256);
    for (int x = first + 1; x < last; ++x)
        pixels[x] = blended(pixels[x], over, share);
    blend(last, std::min(1.0F, b - float(last)));
}

void Canvas::glow(Point centre, float radius, Rgb colour, float strength)
{
    const int top = std::max(0, int(centre.y - radius));
    const int bottom = std::min(rows - 1, int(centre.y + radius));
    const int left = std::max(0, int(centre.x - radius));
    const int right = std::min(columns - 1, int(centre.x + radius));
    for (int y = top; y <= bottom; ++y) {
        const float dy = (float(y) - centre.y) / radius;
        uint32_t* pixels = row(y);
        for (int x = left; x <= right; ++x) {
            const float dx = (float(x) - centre.x) / radius;
            const float rest = 1 - dx * dx - dy * dy;
            if (rest > 0)
                pixels[x] = packed(unpacked(pixels[x]) + colour * (strength * rest * rest * rest));
        }
    }
}

Sprite Sprite::fromLevel(Level largest)
{
    Sprite sprite;
    sprite.levels.push_back(std::move(largest));
    while (sprite.levels.back().width >= 16 && sprite.levels.back().height >= 16) {
        const Level& from = sprite.levels.back();
        Level to{from.width / 2, from.height / 2, {}};
        to.pixels.resize(size_t(to.width) * size_t(to.height));
        for (int y = 0; y < to.height; ++y) {
            for (int x = 0; x < to.width; ++x) {
                Rgb sum;
                float cover = 0;
                for (int n = 0; n < 4; ++n) {
                    const uint32_t p = from.pixels[size_t((2 * y + n / 2) * from.width + 2 * x + n % 2)];
                    const auto a = float(p >> 24);
                    sum = sum + unpacked(p) * a;
                    cover += a;
                }
                const uint32_t colour = packed(sum * (1 / std::max(1.0F, cover))) & 0xFFFFFFU;
                to.pixels[size_t(y * to.width + x)] = colour | uint32_t(cover / 4) << 24;
            }
        }
        sprite.levels.push_back(std::move(to));
    }
    return sprite;
}

void Canvas::draw(
    const Sprite& sprite, Point topLeft, Point bottomRight, float light, Rgb haze, float hazeShare)
{
    const float width = bottomRight.x - topLeft.x;
    const float height = bottomRight.y - topLeft.y;
    if (width < 1 || height < 1 || topLeft.x >= float(columns) || bottomRight.x <= 0)
        return;
    size_t n = 0;
    while (n + 1 < sprite.levels.size() && float(sprite.levels[n + 1].width) >= width)
        ++n;
    const Sprite::Level& level = sprite.levels[n];
    const auto gain = uint32_t(std::clamp(light * (1 - hazeShare), 0.0F, 1.0F) * 256);
    const uint32_t veil = packed(haze * hazeShare) & 0xFFFFFF;
    const int first = std::max(0, int(std::ceil(topLeft.x)));
    const int last = std::min(columns, int(bottomRight.x));
    const auto step = uint32_t(float(level.width) / width * 65536);
    const auto start = uint32_t((float(first) - topLeft.x) * float(level.width) / width * 65536);
    const int end = std::min(rows, int(bottomRight.y));
    for (int y = std::max(0, int(std::ceil(topLeft.y))); y < end; ++y) {
        const auto v = std::min(level.height - 1, int((float(y) - topLeft.y) * float(level.height) / height));
        const uint32_t* source = level.pixels.data() + size_t(v) * size_t(level.width);
        uint32_t* pixels = row(y);
        uint32_t u = start;
        const auto limit = uint32_t(level.width - 1);
        for (int x = first; x < last; ++x, u += step) {
            const uint32_t p = source[std::min(u >> 16, limit)];
            const uint32_t cover = p >> 24;
            if (cover == 0)
                continue;
            const uint32_t redAndBlue = (p & 0xFF00FF) * gain >> 8 & 0xFF00FF;
            const uint32_t green = (p & 0x00FF00) * gain >> 8 & 0x00FF00;
            const uint32_t lit = (redAndBlue | green) + veil;
            pixels[x] = blended(pixels[x], lit, cover + (cover >> 7));
        }
    }
}

} // namespace samplecard
