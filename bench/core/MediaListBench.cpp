#include "media/ZVKMediaList.h"
#include "tests/support/TempFolder.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>

namespace {

/// A folder with as many recordings as a list takes, front and rear files in turns.
const TempFolder& fullCard()
{
    static const TempFolder card;
    static const bool isFilled = [] {
        const std::string first = card.file("alwa_20150101_000000_F.avi");
        for (int i = 1; i < static_cast<int>(ZVKMediaList::maximumCount); ++i) {
            char name[40];
            std::snprintf(name, sizeof name, "alwa_2015%02d%02d_%02d%02d%02d_%c.avi", 1 + i / 1344,
                1 + i / 48 % 28, i / 2 % 24, i / 48 % 60, i % 60, i % 2 ? 'R' : 'F');
            std::filesystem::create_hard_link(first, card.path(name));
        }
        return true;
    }();
    static_cast<void>(isFilled);
    return card;
}

/// The walk, the names and the sort.
void listFullCard(benchmark::State& state)
{
    const std::string folder = fullCard().path();
    size_t count = 0;
    for (auto _ : state)
        count = ZVKMediaList::scan(folder).medias.size();
    state.counters["recordings"] = static_cast<double>(count);
}
BENCHMARK(listFullCard)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The yardstick: what `find` needs for the same folder, its start as a process included.
void findFullCard(benchmark::State& state)
{
    const std::string command = "exec find " + fullCard().path() + " -name '*.avi' >/dev/null";
    for (auto _ : state)
        if (std::system(command.c_str()) != 0)
            state.SkipWithError("find failed");
}
BENCHMARK(findFullCard)->Unit(benchmark::kMillisecond)->UseRealTime();

void readName(benchmark::State& state)
{
    const std::string path = "/media/ZAVIK/AlwaysMovie/alwa_20150321_142530_F.avi";
    for (auto _ : state)
        benchmark::DoNotOptimize(ZVKMediaList::createMediaByPath(path));
}
BENCHMARK(readName);

} // namespace
