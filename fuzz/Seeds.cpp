// Writes the fuzz targets' seeds into a folder: one folder for each target, named after it.

#include "tests/support/RecordBytes.h"
#include "tools/samplecard/AviWriter.h"
#include "tools/samplecard/DeviceSentence.h"
#include "tools/samplecard/DriveLogWriter.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>

namespace {

const DeviceFix fix{
    .latitude = 3723.4567, .longitude = 12701.25, .speed = 61.5, .satellitesUsed = 7, .hdop = 0.9};

std::string textOf(std::span<const std::byte> bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

class SeedFolder {
public:
    /// The seeds are named by the count.
    SeedFolder(const std::filesystem::path& seeds, int& count)
        : folder(seeds),
          counter(count)
    {
        std::filesystem::create_directories(folder);
    }

    void add(std::string_view seed)
    {
        const std::filesystem::path file = folder / ("seed" + std::to_string(counter++));
        std::ofstream(file, std::ios::binary) << seed;
    }
    void add(std::initializer_list<std::string_view> seeds)
    {
        for (const std::string_view seed : seeds)
            add(seed);
    }

private:
    std::filesystem::path folder;
    int& counter;
};

void addRecordings(SeedFolder folder, const std::string& before = {})
{
    const auto add = [&](const SideDataWriter& area, bool isCounted) {
        AviWriter avi;
        avi.filler(8).junk(area, isCounted ? std::optional(area.countedSize()) : std::nullopt);
        folder.add(before + textOf(avi.bytes()));
    };
    add({}, true);
    add(SideDataWriter().gsensor(1000, 256, -128, 0), true);
    add(SideDataWriter().foreign("word").gsensor(0, 1, 2, 3).foreign("abc"), false);
    for (const char km : {'1', '9', '0'}) {
        for (const bool zeroByte : {true, false}) {
            SideDataWriter area;
            area.gsensor(900, 1, 2, 3).gsensor(1000, 4, 5, 6);
            area.gps({1000, 1, 3723.4567, 0, 0, km, deviceText(fix), zeroByte}).gsensor(1100, 7, 8, 9);
            add(area, zeroByte);
        }
    }
    add(SideDataWriter().gps({.text = std::string(513, 'x')}).gsensor(0, 1, 2, 3), false);
    add(SideDataWriter().gps({.text = "$GA", .declaredLength = -1}), false);
}

void addDriveLogs(SeedFolder folder)
{
    std::vector<std::byte> log = samplecard::driveLogOf({}, 15);
    folder.add(textOf(log));
    log.resize(log.size() - 7);
    folder.add(textOf(log));
    for (const unsigned char count : {0, 1, 255}) {
        std::fill_n(log.begin(), 4, std::byte{count});
        folder.add(textOf(log));
    }
}

std::string settingsRecord(bool isKorean = false)
{
    _FILEDATA record;
    initFileDataForRegion(record, isKorean);
    return bytesOf(FinishedFileData(record).record());
}

void addSettings(SeedFolder folder)
{
    for (const bool isKorean : {false, true})
        for (const char* value : {"0", "-1", "4294967295", "12AB3456"})
            folder.add(settingsRecord(isKorean) + value);
}

void addPages(SeedFolder folder)
{
    for (const char page : {0, 2, 4, 6, 8, 10, 11})
        folder.add(page + settingsRecord() + "\x05" + "1.1\n\x08\x02\n\x10" + "12A3456\n\x20\x01\n");
}

void addCommandLines(SeedFolder folder)
{
    for (const char* words :
        {"config\nshow\nf.bin\n--json", "config\nset\nf.bin\nvid_enc_bitrate=5\nszPlateNumber=12AB",
            "config\ndefaults\n--region\nko\nf.bin", "volumes\n--card\n.\n--json", "size\n12345678901",
            "list\n.\n--json", "--card\n.\n--language\nko\n--", "list\n--help"})
        folder.add(words + std::string("\n\n") + settingsRecord());
    folder.add({"clock\nf.cfg\n\n2015/03/21 14:25:30\n", "clock\nf.cfg\n2015/03/21 14:25:30\n\n"});
    folder.add("drive-log\nf.drv\n--lang\nko\n\n" + textOf(samplecard::driveLogOf({}, 3)));
}

} // namespace

int main(int argumentCount, char** arguments)
{
    if (argumentCount != 2) {
        std::fprintf(stderr, "usage: %s FOLDER\n", arguments[0]);
        return 2;
    }
    const std::filesystem::path folder = arguments[1];
    int count = 0;
    const auto in = [&](const char* target) { return SeedFolder(folder / target, count); };
    addRecordings(in("SideData"));
    addRecordings(in("TelemetryWriters"), "alwa_20150321_142530_F.avi\n");
    addCommandLines(in("CommandLine"));
    for (const char* format : {"--json", "--csv", "--gpx"})
        addRecordings(in("CommandLine"), std::string("telemetry\nf.avi\n") + format + "\n\n");
    addPages(in("PageControls"));
    addDriveLogs(in("DriveLog"));
    addSettings(in("SettingsRecord"));
    in("DeviceSentence").add({gaSentence(fix) + "\n" + gcSentence(fix), "$GA,,V,,,,,*00\n$GC,,,,,,,,*00\n"});
    in("RecordingName")
        .add({"/card/AlwaysMovie/alwa_20150321_142530_F.avi", "motion_20150321_142530.AVI",
            "/card/event_20151231_235959_R.avi", "alwa_20150230_250000.avi", "/card/holiday.avi", ""});
    in("NumberReader").add({"0.05", " +1.5 ", "0.5g", "-1e999", "abc", ".", "1e"});
    return 0;
}
