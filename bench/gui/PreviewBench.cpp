// A small picture of a recording of 1080p30 for the hand that goes over the slider: read alone, and from the
// wish in the main thread to the picture there.

#include "app/previews/PreviewReader.h"
#include "bench/Film.h"
#include "platform/Previews.h"
#include "platform/av/AvPreviews.h"
#include "platform/qt/QtDispatcher.h"
#include "tests/support/TempFolder.h"

#include <QCoreApplication>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>

namespace {

void film(const std::string& path, int64_t keyDistance)
{
    writeFilm(path, "1920x1080:rate=30:duration=25", "-b:v 9M -g " + std::to_string(keyDistance));
}

void previewPicture(benchmark::State& state)
{
    const TempFolder folder;
    const std::string path = folder.path("film.avi");
    film(path, state.range(0));
    const auto previews = platform::makeAvPreviews();
    double seconds = 0;
    for (auto _ : state) {
        seconds = seconds > 22 ? seconds - 22 : seconds + 7.3;
        if (!previews->pictureAt(path, seconds, 160, {}))
            state.SkipWithError("no picture");
    }
}
BENCHMARK(previewPicture)->Arg(30)->Unit(benchmark::kMillisecond)->UseRealTime();

/// In another file each time when there are two: opened anew.
void previewOnScreen(benchmark::State& state)
{
    const TempFolder folder;
    const std::string paths[] = {folder.path("film.avi"), folder.path("other.avi")};
    film(paths[0], 30);
    std::filesystem::copy_file(paths[0], paths[1]);
    platform::QtDispatcher dispatcher;
    PreviewReader reader(dispatcher, platform::makeAvPreviews());
    bool isThere = false;
    reader.listen(PreviewReader::Use::hand, [&](const PreviewRequest&) { isThere = true; });
    std::vector<double> times;
    double seconds = 0;
    for (size_t i = 0; state.KeepRunning(); ++i) {
        if (i % 25 == 0)
            reader.clear(); // nothing that is known already
        seconds = seconds > 22 ? seconds - 22 : seconds + 7.3;
        const PreviewRequest request{paths[i % size_t(state.range(0))], seconds + double(i) * 1e-6, 192};
        const auto start = std::chrono::steady_clock::now();
        isThere = false;
        reader.want(PreviewReader::Use::hand, {request});
        while (!isThere)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        times.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
        if (!reader.picture(PreviewReader::Use::hand, request))
            state.SkipWithError("no picture");
    }
    std::ranges::sort(times);
    state.counters["median_ms"] = times[times.size() / 2];
    state.counters["longest_ms"] = times.back();
}
BENCHMARK(previewOnScreen)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
