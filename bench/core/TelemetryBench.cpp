#include "common/Log.h"
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
        : m_path(std::filesystem::temp_directory_path()
            / ("zavik-bench-" + std::to_string(std::random_device()())))
    {
    }
    ~TemporaryFile() { std::filesystem::remove(m_path); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const char* path() const { return m_path.c_str(); }
    std::ofstream appending() const { return std::ofstream(m_path, std::ios::binary | std::ios::app); }

private:
    std::filesystem::path m_path;
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
    setLogSink({});
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
    std::fread(bytes.data(), 1, 12, file);
    while (
        std::fread(bytes.data(), 1, 4, file) == 4 && std::fread(&number, 1, 4, file) == 4 && bytes[0] != 'J')
        std::fseek(file, number, SEEK_CUR);
    while (std::fread(bytes.data(), 1, 4, file) == 4) {
        ++records;
        if (bytes[2] == 'D') {
            std::fread(bytes.data(), 1, 24, file);
            continue;
        }
        std::fread(bytes.data(), 1, 8, file);
        std::fread(&number, 1, 4, file);
        std::fread(bytes.data(), 1, 29, file);
        std::fread(bytes.data(), 1, static_cast<size_t>(number), file);
        std::fseek(file, 7, SEEK_CUR);
        std::fread(bytes.data(), 1, 1, file);
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
    setLogSink({});
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
