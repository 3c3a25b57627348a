// The G-sensor graph at 600 points of graph width with the samples (10 Hz) of a minute and of an hour.

#include "bench/gui/Repaint.h"
#include "telemetry/views/GraphView.h"

#include <QImage>

#include <cmath>

namespace {

std::vector<ZVKGSensor> samplesOf(int count)
{
    std::vector<ZVKGSensor> samples;
    for (int i = 0; i < count; ++i) {
        const float t = float(i) * 0.1f;
        samples.push_back({0.4f * std::sin(t), 0.3f * std::cos(t * 1.7f), 1 + 0.2f * std::sin(t * 9)});
    }
    return samples;
}

class Setting {
public:
    explicit Setting(int count)
    {
        graph.resize(640, 130);
        graph.setGraphData(samplesOf(count));
    }
    void paint() { graph.render(&image, {}, {}, QWidget::DrawChildren); }

    GraphView graph;
    QImage image{640, 130, QImage::Format_RGB32};
};

/// A new play position and the redraw that follows it.
void redrawAfterPositionChange(benchmark::State& state)
{
    Setting setting(int(state.range(0)));
    moveAndPaint(
        state, 0.0001, [&](double to) { setting.graph.updateTimePosition(to); }, [&] { setting.paint(); });
}
BENCHMARK(redrawAfterPositionChange)->Arg(600)->Arg(36000)->Unit(benchmark::kMicrosecond);

/// New data: lines computed and drawn once.
void firstDrawOfARecording(benchmark::State& state)
{
    Setting setting(int(state.range(0)));
    const auto samples = samplesOf(int(state.range(0)));
    for (auto _ : state) {
        setting.graph.setGraphData(samples);
        setting.paint();
    }
}
BENCHMARK(firstDrawOfARecording)->Arg(600)->Arg(1800)->Arg(36000)->Arg(112000)->Unit(benchmark::kMicrosecond);

} // namespace
