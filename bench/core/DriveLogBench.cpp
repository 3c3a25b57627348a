#include "cardtools/drivelog/DriveLogCsv.h"
#include "cardtools/drivelog/DriveLogTitles.h"
#include "tests/support/DriveLogs.h"
#include "tests/support/TempFolder.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int records = 1000000;

const std::string& millionRecordLog()
{
    static const TempFolder folder;
    static const std::string path = folder.file("log.drv", driveLogFile(std::vector(records, flashRecord())));
    return path;
}

void readMillionRecordLog(benchmark::State& state)
{
    const std::string& path = millionRecordLog();
    for (auto _ : state)
        benchmark::DoNotOptimize(readDriveLog(FilePlace::chosen(path), flashDataFormat));
}
BENCHMARK(readMillionRecordLog)->Unit(benchmark::kMillisecond);

void makeMillionCsvLines(benchmark::State& state)
{
    const DriveLog log = readDriveLog(FilePlace::chosen(millionRecordLog()), flashDataFormat);
    const auto titles = driveLogColumnNames(flashDataFormat, "en");
    size_t size = 0;
    for (auto _ : state)
        writeDriveLogCsv(log, titles, [&](std::string_view lines, int64_t) {
            size += lines.size();
            return true;
        });
    state.SetBytesProcessed(static_cast<int64_t>(size));
}
BENCHMARK(makeMillionCsvLines)->Unit(benchmark::kMillisecond);

} // namespace
