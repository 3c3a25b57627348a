#include "bench/ManyRecordings.h"

namespace {

void headersBare(benchmark::State& state)
{
    for (auto _ : state)
        readHeadersBare();
}
BENCHMARK(headersBare)->Unit(benchmark::kMillisecond)->UseRealTime();

void makeDrives(benchmark::State& state)
{
    size_t drives = 0;
    for (auto _ : state)
        drives = drivesOf(manyRecordings(), [](const ZVKMedia& media) {
            return recordingLengthOfFile(media.path());
        }).size();
    state.counters["recordings"] = static_cast<double>(manyRecordings().size());
    state.counters["drives"] = static_cast<double>(drives);
}
BENCHMARK(makeDrives)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
