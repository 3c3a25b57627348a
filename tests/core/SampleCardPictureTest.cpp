#include "tools/samplecard/Canvas.h"
#include "tools/samplecard/Lens.h"

#include <gtest/gtest.h>

#include <array>

namespace samplecard {

TEST(SampleCanvas, CoversPixelsByTheirShare)
{
    struct Row {
        std::vector<Point> outline;
        std::vector<Point> hole;
        double area;
    };
    const Row rows[] = {
        {{{2, 2}, {6, 2}, {6, 5}, {2, 5}}, {}, 12},
        {{{2.5F, 2}, {4.25F, 2}, {4.25F, 4}, {2.5F, 4}}, {}, 3.5},
        {{{-9, -9}, {4, -9}, {4, 4}, {-9, 4}}, {}, 16},
        {{{6, 6}, {90, 6}, {90, 90}, {6, 90}}, {}, 60},
        {{{0, 0}, {10, 0}, {0, 8}}, {}, 40},
        {{{1, 1}, {9, 1}, {9, 9}, {1, 9}}, {{3, 3}, {6, 3}, {6, 6}, {3, 6}}, 55},
        {{{20, 1}, {30, 1}, {30, 9}}, {}, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        Canvas canvas(16, 12);
        for (int pass = 0; pass < 2; ++pass) // what one shape leaves behind must not show in the next
            canvas.fill(row.outline, Rgb{0, 0, 0}, row.hole);
        canvas.fill(row.outline, Rgb{255, 255, 255}, row.hole);
        double sum = 0;
        for (int y = 0; y < canvas.height(); ++y) {
            for (int x = 0; x < canvas.width(); ++x)
                sum += (canvas.row(y)[x] >> 8 & 255) / 255.0;
        }
        EXPECT_NEAR(sum, row.area, 0.02 * row.area + 0.3);
    }
}

TEST(SampleLens, MovesAndTiltsThePicture)
{
    Canvas scene(8, 12);
    for (int x = 0; x < 8; ++x)
        scene.row(6)[x] = 0xFFFFFFFF;
    Canvas frame(8, 8);
    const auto bright = [&](int x, int y) { return int(frame.row(y)[x] & 255); };
    expose(scene, frame, {0, 0, 1, 2});
    EXPECT_EQ(bright(3, 4), 255);
    expose(scene, frame, {1.5F, 0, 1, 2});
    EXPECT_NEAR(bright(3, 5), 128, 2);
    EXPECT_NEAR(bright(3, 6), 128, 2);
    expose(scene, frame, {0, 0.5F, 1, 2});
    EXPECT_EQ(bright(0, 2), 255);
    EXPECT_EQ(bright(6, 5), 255);
    expose(scene, frame, {0, 0, 1.9F, 2});
    EXPECT_EQ(bright(3, 4), 255); // too much light stays white
}

TEST(SampleLens, WritesTheLimitedRange)
{
    struct Row {
        Rgb colour;
        std::array<int, 3> yuv;
    };
    const Row rows[] = {{{0, 0, 0}, {16, 128, 128}}, {{255, 255, 255}, {235, 128, 128}},
        {{255, 0, 0}, {63, 102, 240}}, {{0, 255, 0}, {173, 42, 26}}, {{0, 0, 255}, {32, 240, 118}}};
    for (const Row& row : rows) {
        Canvas frame(4, 2);
        const std::array everything{Point{0, 0}, Point{4, 0}, Point{4, 2}, Point{0, 2}};
        frame.fill(everything, row.colour);
        std::vector<uint8_t> planes;
        toYuv420(frame, planes);
        ASSERT_EQ(planes.size(), 12U);
        for (size_t plane = 0; plane < 3; ++plane)
            EXPECT_NEAR(planes[plane == 0 ? 0 : 6 + 2 * plane], row.yuv[plane], 2) << plane;
    }
}

} // namespace samplecard
