#include "telemetry/ZVKBlackBoxData.h"
#include "tools/samplecard/AviWriter.h"
#include "tools/samplecard/DeviceSentence.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace {

/// A file in the system's temporary folder that goes away with this.
class TemporaryFile {
public:
    TemporaryFile()
        : file(std::filesystem::temp_directory_path()
            / ("zavik-bench-" + std::to_string(std::random_device()())))
    {
    }
    ~TemporaryFile() { std::filesystem::remove(file); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const char* path() const { return file.c_str(); }
    std::ofstream appending() const { return std::ofstream(file, std::ios::binary | std::ios::app); }

private:
    std::filesystem::path file;
};

void append(std::ofstream& file, std::span<const std::byte> bytes)
{
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

/// Three minutes: 150 MB where the video is, then a G-sensor sample every tenth of a second and a GPS record
/// every second.
class ThreeMinutes : public TemporaryFile {
public:
    static constexpr int videoChunks = 150;

    ThreeMinutes()
    {
        AviWriter avi;
        for (int i = 0; i < videoChunks; ++i)
            avi.filler(1'000'000);
        std::ofstream out = appending();
        append(out, avi.junk(sideData()).bytes());
    }

private:
    static SideDataWriter sideData()
    {
        SideDataWriter area;
        for (int64_t time = 100; time <= 180'000; time += 100) {
            area.gsensor(time, 10, -20, 250);
            if (time % 1000 == 0)
                area.gps(
                    {.timestamp = time, .text = deviceText({.latitude = 3723.4567, .longitude = 12701.25})});
        }
        return area;
    }
};

void extraction(benchmark::State& state)
{
    const ThreeMinutes recording;
    ZVKBlackBoxData data;
    for (auto _ : state)
        data.ExtractStreamInformation(recording.path());
    if (data.m_GSensors.size() != 1800 || data.m_NMEAs.size() != 360)
        state.SkipWithError("the recording was not read");
}
BENCHMARK(extraction)->Unit(benchmark::kMicrosecond);

/// What the extraction is held against: the same bytes, read and skipped record by record, and nothing done
/// with them.
size_t readBarely(const char* path)
{
    std::FILE* file = std::fopen(path, "rb");
    std::array<char, 512> bytes;
    size_t records = 0;
    int32_t number = 0;
    const auto get = [file](void* to, size_t count) { return std::fread(to, 1, count, file) == count; };
    bool goesOn = get(bytes.data(), 12);
    while (goesOn && get(bytes.data(), 4) && get(&number, 4) && bytes[0] != 'J')
        goesOn = std::fseek(file, number, SEEK_CUR) == 0;
    while (goesOn && get(bytes.data(), 4)) {
        ++records;
        if (bytes[2] == 'D') {
            goesOn = get(bytes.data(), 24);
            continue;
        }
        goesOn = get(bytes.data(), 8) && get(&number, 4) && get(bytes.data(), 29)
            && get(bytes.data(), static_cast<size_t>(number)) && std::fseek(file, 7, SEEK_CUR) == 0
            && get(bytes.data(), 1);
    }
    std::fclose(file);
    return records;
}

void bareReading(benchmark::State& state)
{
    const ThreeMinutes recording;
    size_t records = 0;
    for (auto _ : state)
        records = readBarely(recording.path());
    if (records != 1800 + 180)
        state.SkipWithError("the recording was not read");
}
BENCHMARK(bareReading)->Unit(benchmark::kMicrosecond);

/// A file whose first "JUNK" is padding without records: the walk looks at every word to the end.
void gigabyteOfPadding(benchmark::State& state)
{
    constexpr size_t size = 1'000'000'000;
    const TemporaryFile file;
    {
        std::ofstream out = file.appending();
        append(out, AviWriter().junk(SideDataWriter(), size).bytes());
        const std::vector<std::byte> padding(1'000'000, std::byte{0x5A});
        for (size_t written = 0; written < size; written += padding.size())
            append(out, padding);
    }
    ZVKBlackBoxData data;
    for (auto _ : state)
        if (!data.ExtractStreamInformation(file.path()) || data.walkEnd() != WalkEnd::endOfFile)
            state.SkipWithError("the padding was not read");
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * size));
}
BENCHMARK(gigabyteOfPadding)->Unit(benchmark::kMillisecond);

} // namespace
