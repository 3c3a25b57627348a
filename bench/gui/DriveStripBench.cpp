// The strip of a drive of eight hours: 480 recordings, 200 moments.

#include "bench/gui/Repaint.h"
#include "lib/DriveStrip.h"

#include <QImage>

namespace {

class Setting {
public:
    Setting()
    {
        for (int i = 0; i < 480; ++i)
            segments.push_back({i / 480.0, (i + 1) / 480.0, DriveStrip::SegmentKind(i % 3)});
        for (int i = 0; i < 200; ++i)
            marks.push_back({(i + 0.5) / 200, DriveStrip::MarkKind(i % 2)});
        strip.resize(1400, 22);
        strip.setSegments(segments, marks);
    }
    void paint() { strip.render(&image, {}, {}, QWidget::DrawChildren); }

    std::vector<DriveStrip::Segment> segments;
    std::vector<DriveStrip::Mark> marks;
    DriveStrip strip;
    QImage image{1400, 22, QImage::Format_RGB32};
};

/// A new place and the redraw that follows it.
void stripAfterPositionChange(benchmark::State& state)
{
    Setting setting;
    moveAndPaint(
        state, 0.001, [&](double to) { setting.strip.setPosition(to); }, [&] { setting.paint(); });
}
BENCHMARK(stripAfterPositionChange)->Unit(benchmark::kMicrosecond);

/// Another drive, or a length that is known better: all is drawn anew.
void stripOfAnotherDrive(benchmark::State& state)
{
    Setting setting;
    for (auto _ : state) {
        setting.segments.back().end = setting.segments.back().end == 1 ? 0.999 : 1;
        setting.strip.setSegments(setting.segments, setting.marks);
        setting.paint();
    }
}
BENCHMARK(stripOfAnotherDrive)->Unit(benchmark::kMicrosecond);

} // namespace
