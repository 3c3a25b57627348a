#include "media/Drives.h"
#include "media/RecordingLength.h"
#include "media/ZVKMediaList.h"
#include "tests/support/RecordingFile.h"
#include "tests/support/TempFolder.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// 1,250 drives of six minutes with both cameras, two hours apart: as many recordings as a list takes.
const std::vector<ZVKMedia>& recordings()
{
    static const TempFolder card;
    static const std::vector<ZVKMedia> all = [] {
        const auto bytes = recordingFile(60);
        const auto first = std::chrono::local_days(std::chrono::year(2024) / 1 / 1);
        for (int i = 0; i < static_cast<int>(ZVKMediaList::maximumCount); ++i) {
            const auto start = first + std::chrono::hours(i / 12 * 2) + std::chrono::minutes(i / 2 % 6);
            std::string name = "alwa_" + cameraTimeText(start) + (i % 2 == 0 ? "_F.avi" : "_R.avi");
            std::erase_if(name, [](char c) { return c == '-' || c == ':'; });
            std::ranges::replace(name, 'T', '_');
            card.file(name, bytes);
        }
        return ZVKMediaList::scan(card.path()).medias;
    }();
    return all;
}

/// The yardstick: a header read of each.
void readHeadersBare(benchmark::State& state)
{
    std::array<char, recordingHeaderSize> bytes;
    for (auto _ : state) {
        for (const ZVKMedia& media : recordings()) {
            const int file = ::open(media.path().c_str(), O_RDONLY | O_CLOEXEC);
            benchmark::DoNotOptimize(::pread(file, bytes.data(), bytes.size(), 0));
            ::close(file);
        }
    }
}
BENCHMARK(readHeadersBare)->Unit(benchmark::kMillisecond)->UseRealTime();

void makeDrives(benchmark::State& state)
{
    size_t drives = 0;
    for (auto _ : state)
        drives = drivesOf(recordings(), [](const ZVKMedia& media) {
            return recordingLengthOfFile(media.path());
        }).size();
    state.counters["recordings"] = static_cast<double>(recordings().size());
    state.counters["drives"] = static_cast<double>(drives);
}
BENCHMARK(makeDrives)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
