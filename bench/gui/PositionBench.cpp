// One change of the play position: read-outs, graph bar, script call; nothing is painted.

#include "tests/support/AppDelegateProbe.h"
#include "tests/support/TempFolder.h"
#include "tools/samplecard/AviWriter.h"
#include "tools/samplecard/DeviceSentence.h"

#include <benchmark/benchmark.h>

namespace {

/// A recording of ten minutes.
std::vector<std::byte> recording()
{
    SideDataWriter sideData;
    for (int second = 0; second < 600; ++second) {
        for (int i = 0; i < 10; ++i)
            sideData.gsensor(second * 1000 + i * 100, second % 256, -i, 256);
        GpsRecordFields gps;
        gps.timestamp = second * 1000 + 900;
        gps.latitude = 3723.4567 + second * 0.001;
        gps.longitude = 12701.5;
        gps.speed = second % 100;
        gps.km = '9';
        gps.text = deviceText({});
        sideData.gps(gps);
    }
    return AviWriter().filler(64).junk(sideData).bytes();
}

void positionChange(benchmark::State& state)
{
    TempFolder folder;
    folder.file("alwa_20150321_142530_F.avi", recording());
    AppDelegateProbe app;
    app.open(folder.path());
    app.start(0);
    double position = 0;
    for (auto _ : state) {
        position = position >= 1 ? 0 : position + 0.0007;
        app.playInfo().setPosition(position);
        state.PauseTiming();
        app.desk.map.scripts.clear();
        state.ResumeTiming();
    }
}
BENCHMARK(positionChange)->Unit(benchmark::kMicrosecond);

} // namespace
