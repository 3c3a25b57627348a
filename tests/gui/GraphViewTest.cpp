#include "telemetry/views/GraphView.h"

#include <QImage>
#include <gtest/gtest.h>

namespace {

std::vector<ZVKGSensor> rising(int n)
{
    std::vector<ZVKGSensor> samples;
    for (int i = 0; i < n; ++i)
        samples.push_back({float(i), 0, 0});
    return samples;
}

/// The graph on a black ground.
QImage drawn(GraphView& graph)
{
    QImage image(graph.size(), QImage::Format_RGB32);
    image.fill(Qt::black);
    graph.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

class Graph : public testing::Test {
protected:
    // A graph area of 400 x 100 points: 25 points a g, the 0 g line at 58.
    Graph() { graph.resize(440, 116); }
    GraphView graph;
};

TEST_F(Graph, PicksTheSampleOfEachTenthOfAPoint)
{
    graph.setGraphData(rising(100));
    const auto line = graph.polyline(&ZVKGSensor::x);
    EXPECT_DOUBLE_EQ(line.front().x, 21);
    EXPECT_DOUBLE_EQ(line.front().y, 58);
    EXPECT_NEAR(line.back().x, 21 + 400, 1e-9);
    EXPECT_DOUBLE_EQ(line.back().y, 58 + 99 * 25); // 2 g are on the outer lines
    // Sample s begins at the first point k with k * 100 / 4001 >= s.
    const auto step = std::ranges::find_if(line, [](const auto& point) { return point.y == 58 + 50 * 25; });
    ASSERT_NE(step, line.end());
    EXPECT_NEAR(step->x, 21 + 2001 * 0.1, 1e-9);
}

TEST_F(Graph, LeavesOutOnlyPointsBetweenEqualNeighbours)
{
    graph.setGraphData({{0.5f, 0, 0}});
    const auto flat = graph.polyline(&ZVKGSensor::x);
    ASSERT_EQ(flat.size(), 2u);
    EXPECT_DOUBLE_EQ(flat[0].y, 58 + 12.5);
    EXPECT_NEAR(flat[1].x, 421, 1e-9);
    graph.setGraphData(rising(50000));
    EXPECT_EQ(graph.polyline(&ZVKGSensor::x).size(), 4001u);
}

TEST_F(Graph, DrawsXRedYGreenAndZBlue)
{
    graph.setGraphData({{1.5f, 0.5f, -0.5f}}); // between the lines of the grid
    const QImage image = drawn(graph);
    EXPECT_EQ(image.pixelColor(300, 20), Qt::red);
    EXPECT_EQ(image.pixelColor(300, 45), Qt::green);
    EXPECT_EQ(image.pixelColor(300, 70), Qt::blue);
    graph.setGraphData({});
    EXPECT_NE(drawn(graph).pixelColor(300, 20), Qt::red) << "the lines of the file before are gone";
}

} // namespace
