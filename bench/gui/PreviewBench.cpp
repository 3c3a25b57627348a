// A small picture of a recording of 1080p30 for the hand that goes over the slider.

#include "platform/Previews.h"
#include "platform/av/AvPreviews.h"
#include "tests/support/TempFolder.h"

#include <QProcess>
#include <benchmark/benchmark.h>

namespace {

void previewPicture(benchmark::State& state)
{
    TempFolder folder;
    const std::string path = folder.path("film.avi");
    QProcess::execute("ffmpeg",
        {"-v", "error", "-f", "lavfi", "-i", "testsrc2=size=1920x1080:rate=30:duration=25", "-c:v", "libx264",
            "-preset", "ultrafast", "-b:v", "9M", "-g", QString::number(state.range(0)), "-pix_fmt",
            "yuv420p", QString::fromStdString(path)});
    const auto previews = platform::makeAvPreviews();
    double seconds = 0;
    for (auto _ : state) {
        seconds = seconds > 22 ? seconds - 22 : seconds + 7.3;
        if (!previews->pictureAt(path, seconds, 160, {}))
            state.SkipWithError("no picture");
    }
}
BENCHMARK(previewPicture)->Arg(30)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
