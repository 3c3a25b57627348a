#include "tests/core/SideDataSupport.h"
#include "tools/samplecard/AviWriter.h"
#include "tools/samplecard/DeviceSentence.h"

#include <gmock/gmock.h>

#include <array>
#include <climits>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace std::string_literals;

namespace {

GpsRecordFields gpsAt(int64_t timestamp, char km = '1', bool zeroByte = true)
{
    return {.timestamp = timestamp, .km = km, .text = "$GA,,,,,,,*00\r\n", .zeroByte = zeroByte};
}

/// A recording with records of every kind, and where its records stand in the file.
struct Recording {
    struct Place {
        size_t begin;
        size_t end;
        size_t textEnd; // 0 for a sample
    };
    std::vector<std::byte> bytes;
    std::vector<Place> places;

    Recording()
    {
        SideDataWriter area;
        for (const char km : {'1', '0', '9', '\0'}) {
            for (const bool zeroByte : {true, false}) {
                area.gsensor(100, 1, 2, 3).gsensor(200, 4, 5, 6).gps(gpsAt(200, km, zeroByte));
            }
        }
        area.gsensor(300, 7, 8, 9);
        AviWriter avi;
        avi.filler(77).junk(area, area.countedSize());
        bytes = avi.bytes();
        size_t begin = avi.sideDataOffset();
        for (const size_t boundary : area.boundaries()) {
            const size_t end = avi.sideDataOffset() + boundary;
            places.push_back({begin, end, textEnd(begin)});
            begin = end;
        }
    }

    size_t sampleCount(size_t cut) const
    {
        return static_cast<size_t>(std::count_if(places.begin(), places.end(),
            [&](const Place& place) { return place.textEnd == 0 && place.end <= cut; }));
    }
    size_t gpsHeaderCount(size_t cut) const
    {
        return static_cast<size_t>(std::count_if(places.begin(), places.end(),
            [&](const Place& place) { return place.textEnd != 0 && place.begin + 4 + 41 <= cut; }));
    }
    size_t gpsTextCount(size_t cut) const
    {
        return static_cast<size_t>(std::count_if(places.begin(), places.end(),
            [&](const Place& place) { return place.textEnd != 0 && place.textEnd <= cut; }));
    }
    bool cutsSample(size_t cut) const
    {
        return std::any_of(places.begin(), places.end(),
            [&](const Place& place) { return !place.isGps && place.begin + 4 <= cut && cut < place.end; });
    }
};

AviWriter recordingOf(const SideDataWriter& area, std::optional<uint32_t> declaredSize = {})
{
    AviWriter avi;
    avi.filler(16).junk(area, declaredSize);
    return avi;
}

} // namespace

TEST(SideData, ReadsBytesWrittenByHand)
{
    // Literal bytes, so that the writer and the reader cannot share a mistake.
    const std::string file = "RIFF\0\0\0\0AVI LIST\3\0\0\0abcJUNK\x92\0\0\0"
                             "0GDA\x15\xCD\x5B\x07\0\0\0\0\x00\xFF\xFF\xFF\x80\x01\0\0\0\0\0\0\x2A\0\0\0"
                             "0GPS\x15\xCD\x5B\x07\0\0\0\0\x05\0\0\0\x07\0\0\0"
                             "\0\0\0\0\0\x40\x8F\x40" // 1000
                             "\0\0\0\0\0\0\xE0\x3F" // 0.5
                             "\0\0\0\0\0\0\xF0\xBF" // -1
                             "9"
                             "$GA*\n"
                             "1234567\0"
                             "0GDA\x15\xCD\x5B\x07\0\0\0\0\xFF\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"s;
    const auto [result, data] = extract(asBytes(file));
    EXPECT_TRUE(result);
    ASSERT_THAT(data.m_GSensors, SizeIs(2));
    EXPECT_EQ(data.m_GSensors[0], (ZVKGSensor{-1, 1.5, 0}));
    const _AVI_GSENSOR_DATA_T sample = data.m_vGSensorData[0].data;
    EXPECT_EQ(int64_t{sample.nTimestamp}, 123456789);
    EXPECT_EQ(int32_t{sample.nTemperature}, 42);
    ASSERT_THAT(data.m_vGpsData, SizeIs(1));
    const _AVI_GPS_DATA_T header = data.m_vGpsData[0].data;
    EXPECT_EQ(int32_t{header.nQualityIndicator}, 7);
    EXPECT_EQ(double{header.fLatitude}, 1000);
    EXPECT_EQ(double{header.fLongitude}, 0.5);
    EXPECT_EQ(double{header.fSpeed}, -1);
    EXPECT_EQ(header.KM, '9');
    EXPECT_THAT(data.m_NMEAs, SizeIs(1));
}

TEST(SideData, KeepsEverythingGatheredBeforeTheFileEnds)
{
    const Recording whole;
    for (size_t cut = 0; cut < whole.bytes.size(); ++cut) {
        SCOPED_TRACE(cut);
        const auto [result, data] = extract(std::span(whole.bytes).first(cut));
        ASSERT_EQ(data.m_GSensors.size(), whole.sampleCount(cut));
        ASSERT_EQ(data.m_vGSensorData.size(), data.m_GSensors.size());
        ASSERT_EQ(data.m_GpsRecords.size(), whole.gpsHeaderCount(cut));
        ASSERT_EQ(result, cut >= whole.places.front().begin && !whole.cutsSample(cut));
    }
    const auto [result, data] = extract(whole.bytes);
    EXPECT_TRUE(result);
    EXPECT_EQ(data.walkEnd(), WalkEnd::Complete);
    EXPECT_THAT(data.m_NMEAs, SizeIs(8));
}

TEST(SideData, ReportsADeviceThatFailsAtAnyByte)
{
    const Recording whole;
    for (uint64_t failsAt = 0; failsAt < whole.bytes.size(); ++failsAt) {
        SCOPED_TRACE(failsAt);
        UnreliableSource source(whole.bytes);
        source.failsAt = failsAt;
        CollectedLog log;
        ZVKBlackBoxData data;
        ASSERT_FALSE(data.ExtractStreamInformation(source));
        ASSERT_EQ(data.walkEnd(), WalkEnd::ReadError);
        ASSERT_EQ(data.m_GSensors.size(), whole.sampleCount(failsAt));
        ASSERT_EQ(data.m_GpsRecords.size(), whole.gpsTextCount(failsAt));
        ASSERT_THAT(log.lines, SizeIs(2));
        ASSERT_EQ(log.lines[0], "#############################   START");
    }
}

TEST(SideData, ReportsADeviceThatCannotSeek)
{
    const Recording whole;
    UnreliableSource source(whole.bytes);
    source.canSeek = false;
    EXPECT_EQ(extract(source).data.walkEnd(), WalkEnd::ReadError);
}

TEST(SideData, DoesNotDependOnThePortionsThatTheDeviceGives)
{
    const Recording whole;
    const Extraction atOnce = extract(whole.bytes);
    for (const size_t portion : {1, 2, 3, 5, 7, 40, 41}) {
        SCOPED_TRACE(portion);
        UnreliableSource source(whole.bytes);
        source.portion = portion;
        const Extraction inPortions = extract(source);
        EXPECT_EQ(inPortions.data.walkEnd(), atOnce.data.walkEnd());
        EXPECT_EQ(inPortions.data.m_GSensors, atOnce.data.m_GSensors);
        EXPECT_EQ(inPortions.data.m_NMEAs, atOnce.data.m_NMEAs);
        EXPECT_EQ(inPortions.data.m_vGpsData.size(), atOnce.data.m_vGpsData.size());
    }
}

TEST(SideData, StopsWhenAsked)
{
    SideDataWriter area;
    for (int i = 0; i < 1000; ++i)
        area.gsensor(i, 0, 0, 0);
    const auto bytes = recordingOf(area).bytes();
    for (const size_t reads : {0, 1, 2}) {
        SCOPED_TRACE(reads);
        std::stop_source stop;
        UnreliableSource source(bytes);
        source.beforeRead = [&] { source.readCount == reads ? stop.request_stop() : false; };
        if (reads == 0)
            stop.request_stop();
        const auto [result, data] = extract(source, stop.get_token());
        EXPECT_FALSE(result);
        EXPECT_EQ(data.walkEnd(), WalkEnd::Stopped);
        EXPECT_EQ(source.readCount, reads);
        EXPECT_EQ(data.m_GSensors.empty(), reads == 0);
    }
}

TEST(SideData, CountsEachRecordDownByItsRule)
{
    for (const char km : {'1', '9', '0', '2', '\0', 'q'}) {
        for (const bool zeroByte : {true, false}) {
            SCOPED_TRACE(testing::Message() << "KM " << int{km} << " zero byte " << zeroByte);
            SideDataWriter counted;
            counted.gsensor(0, 1, 1, 1).gps(gpsAt(0, km, zeroByte)).gsensor(0, 2, 2, 2);
            const uint32_t size = counted.countedSize();
            counted.gps(gpsAt(0, km, zeroByte)).gsensor(0, 3, 3, 3);

            const Extraction exact = extract(recordingOf(counted, size).bytes());
            EXPECT_TRUE(exact.result);
            EXPECT_EQ(exact.data.walkEnd(), WalkEnd::Complete);
            EXPECT_THAT(exact.data.m_GSensors, SizeIs(2));

            // A size that no sum of records meets wraps, and the walk goes on to the end of the file.
            for (const uint32_t lie : {1u, size - 1, size + 1, UINT32_MAX}) {
                const Extraction lied = extract(recordingOf(counted, lie).bytes());
                EXPECT_TRUE(lied.result);
                EXPECT_EQ(lied.data.walkEnd(), WalkEnd::EndOfFile);
                EXPECT_THAT(lied.data.m_GSensors, SizeIs(3));
            }
        }
    }
}

TEST(SideData, EndsOnAGpsRecordThatCompletesTheSize)
{
    SideDataWriter area;
    area.gsensor(0, 1, 1, 1).gps(gpsAt(0));
    const uint32_t size = area.countedSize();
    area.gsensor(0, 2, 2, 2);
    EXPECT_THAT(extract(recordingOf(area, size).bytes()).data.m_GSensors, SizeIs(1));
}

TEST(SideData, StepsOverForeignWords)
{
    struct Row {
        std::string foreign;
        size_t samples;
    };
    for (const Row& row : std::initializer_list<Row>{{"", 2}, {"idx1", 2}, {"0GD 0GPs", 2},
             {"JUNKRIFF0000", 2}, {"abc", 0}, {"0GD", 0}, {"abcde", 0}}) {
        SCOPED_TRACE(row.foreign);
        SideDataWriter area;
        area.foreign(row.foreign).gsensor(0, 1, 1, 1).foreign("word").gsensor(0, 1, 1, 1);
        const auto [result, data] = extract(recordingOf(area).bytes());
        EXPECT_TRUE(result);
        EXPECT_THAT(data.m_GSensors, SizeIs(row.samples));
    }
}

TEST(SideData, RefusesFilesWithoutSideData)
{
    struct Row {
        std::string file;
        bool result;
        WalkEnd end;
    };
    const std::string avi = "RIFF\xFF\xFF\xFF\xFF"
                            "AVI ";
    const Row rows[] = {
        {"", false, WalkEnd::NotAvi},
        {"RIFF\0\0\0\0AVI"s, false, WalkEnd::NotAvi},
        {"RIFX\0\0\0\0AVI JUNK"s, false, WalkEnd::NotAvi},
        {"RIFF\0\0\0\0WAVEJUNK"s, false, WalkEnd::NotAvi},
        {avi, false, WalkEnd::NoSideData},
        {avi + "LIST\0\0"s, false, WalkEnd::NoSideData},
        {avi + "LIST\xFF\xFF\xFF\xFFJUNK\1\0\0\0"s, false, WalkEnd::NoSideData},
        // No padding follows an odd size.
        {avi + "LIST\1\0\0\0x\0JUNK\1\0\0\0"s, false, WalkEnd::NoSideData},
        {avi + "LIST\1\0\0\0xJUNK\1\0\0"s, false, WalkEnd::NoSideData},
        {avi + "LIST\1\0\0\0xJUNK\1\0\0\0"s, true, WalkEnd::EndOfFile},
        {avi + "JUNK\0\0\0\0"s, true, WalkEnd::Complete},
        {avi + "JUNK\1\0\0\0junk"s, true, WalkEnd::EndOfFile},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.file));
        const auto [result, data] = extract(asBytes(row.file));
        EXPECT_EQ(result, row.result);
        EXPECT_EQ(data.walkEnd(), row.end);
    }
}

TEST(SideData, NeverTrustsTheLengthOfAText)
{
    struct Row {
        int32_t declared;
        size_t available; // bytes of text that are in the file
        bool isLast; // nothing follows the text
        bool isRead;
        WalkEnd end;
    };
    const Row rows[] = {
        {512, 512, false, true, WalkEnd::EndOfFile},
        {512, 400, true, true, WalkEnd::EndOfFile}, // cut by the end of the file, used as far as it goes
        {513, 513, false, false, WalkEnd::EndOfFile},
        {513, 513, true, false, WalkEnd::EndOfFile},
        {513, 512, true, false, WalkEnd::ImpossibleText},
        {100'000, 100'000, false, false, WalkEnd::EndOfFile},
        {INT_MAX, 600, true, false, WalkEnd::ImpossibleText},
        {-1, 600, false, false, WalkEnd::ImpossibleText},
        {INT_MIN, 600, false, false, WalkEnd::ImpossibleText},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.declared << " of " << row.available);
        std::string text = "$GA,,,1,2,3,N,W*00\n";
        text.resize(row.available, 'x');
        SideDataWriter area;
        area.gsensor(0, 1, 1, 1);
        area.gps({.km = '1', .text = text, .zeroByte = false, .declaredLength = row.declared});
        std::vector<std::byte> bytes = recordingOf(area.gsensor(0, 2, 2, 2)).bytes();
        if (row.isLast)
            bytes.resize(bytes.size() - 28 - 7);

        const auto [result, data] = extract(bytes);
        EXPECT_TRUE(result);
        EXPECT_EQ(data.walkEnd(), row.end);
        EXPECT_THAT(data.m_GSensors, SizeIs(row.isLast || row.end == WalkEnd::ImpossibleText ? 1 : 2));
        const size_t records = row.isRead ? 1 : 0;
        EXPECT_THAT(data.m_GpsRecords, SizeIs(records));
        EXPECT_THAT(data.m_NMEAs, SizeIs(records));
        EXPECT_THAT(data.m_vGpsData, SizeIs(records));
    }
}

TEST(SideData, CountsARecordWhoseTextIsSteppedOver)
{
    for (const char km : {'1', '0'}) {
        for (const bool zeroByte : {true, false}) {
            SideDataWriter area;
            area.gps({.km = km, .text = std::string(600, 'x'), .zeroByte = zeroByte}).gsensor(0, 1, 1, 1);
            EXPECT_EQ(
                extract(recordingOf(area, area.countedSize()).bytes()).data.walkEnd(), WalkEnd::Complete)
                << km << zeroByte;
        }
    }
}

TEST(SideData, NeverUsesBytesOfAnEarlierText)
{
    SideDataWriter area;
    area.gps({.text = "$GA,,,1111.5,,,,*00\n$GA,,,2222.5,,,,*00\n"});
    area.gps({.text = "$GA,,,3333.5,,,,*00\n$GA,,,4444.5,,,,*00\n"});
    std::vector<std::byte> bytes = recordingOf(area).bytes();
    bytes.resize(bytes.size() - 8 - 22); // behind the second record's first sentence, without its terminator
    const auto [result, data] = extract(bytes);
    EXPECT_TRUE(result);
    ASSERT_THAT(data.m_GpsRecords, SizeIs(2));
    EXPECT_EQ(data.m_GpsRecords[1].snapshotCount, 0);
    EXPECT_EQ(data.m_GpsRecords[1].fix.Latitude, 2222.5);
}

TEST(SideData, AnEmptyTextStepsBackOntoTheMarker)
{
    SideDataWriter area;
    area.gps({.km = '\0', .zeroByte = false, .declaredLength = 0}).gsensor(0, 1, 1, 1);
    EXPECT_THAT(extract(recordingOf(area).bytes()).data.m_GSensors, SizeIs(1));
    // A marker that is not 0x00 is read again as the first byte of the next id.
    SideDataWriter given;
    given.gps({.km = '0', .zeroByte = false, .declaredLength = 0}).foreign("GDA" + std::string(24, '\0'));
    EXPECT_THAT(extract(recordingOf(given).bytes()).data.m_GSensors, SizeIs(1));
}

TEST(SideData, PairsEachSampleWithTheFixThatFollowsIt)
{
    // Samples are positive, fixes negative; each paired sample is expected to hold the time of its fix.
    struct Event {
        bool isFix;
        int64_t time;
    };
    struct Row {
        std::vector<Event> events;
        std::vector<int64_t> fixOfSample;
    };
    const auto sample = [](int64_t time) { return Event{false, time}; };
    const auto fix = [](int64_t time) { return Event{true, time}; };
    const Row rows[] = {
        {{sample(0), sample(100), sample(200), fix(200)}, {200, 200, 200}},
        {{fix(0), sample(0)}, {}},
        // The samples after the fix's own tenth of a second wait for the next one.
        {{sample(0), sample(100), sample(200), fix(100), fix(300)}, {100, 100, 300}},
        // Samples that are all older count as paired: the next fix does not get them again.
        {{sample(0), sample(100), fix(900), sample(1000), fix(1900)}, {900, 900, 1900}},
        // Keys truncate toward zero.
        {{sample(1900), sample(1999), fix(1999), fix(2000)}, {1999, 2000}},
        {{sample(-99), sample(99), fix(50), fix(60)}, {50, 60}},
        {{sample(INT64_MIN), sample(INT64_MAX), fix(INT64_MAX)}, {INT64_MAX, INT64_MAX}},
    };
    for (const Row& row : rows) {
        SideDataWriter area;
        for (const Event& event : row.events)
            event.isFix ? area.gps(gpsAt(event.time)) : area.gsensor(event.time, 0, 0, 0);
        std::vector<int64_t> fixOfSample;
        for (const ZVKAviGpsData& paired : extract(recordingOf(area).bytes()).data.m_vGpsData)
            fixOfSample.push_back(int64_t{paired.data.nTimestamp});
        EXPECT_EQ(fixOfSample, row.fixOfSample) << testing::PrintToString(row.fixOfSample);
    }
}

TEST(SideData, TellsWhatBelongsToEachGpsRecord)
{
    const DeviceFix first{.latitude = 3723.4567, .ns = 'S', .satellitesUsed = 7};
    SideDataWriter area;
    area.gsensor(0, 0, 0, 0).gps({.timestamp = 5, .text = deviceText(first)});
    area.gps({.timestamp = 6, .text = "nothing\n"}).gsensor(0, 0, 0, 0);
    area.gps({.timestamp = 7, .text = "$GX*\n$GA,,,9,,,,*\n"});
    const auto [result, data] = extract(recordingOf(area).bytes());
    ASSERT_THAT(data.m_GpsRecords, SizeIs(3));
    const std::array<size_t, 3> firstSnapshots{0, 2, 2};
    const std::array<size_t, 3> snapshotCounts{2, 0, 2};
    const std::array<size_t, 3> samplesBefore{1, 1, 2};
    for (size_t i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(int64_t{data.m_GpsRecords[i].header.nTimestamp}, int64_t(5 + i));
        EXPECT_EQ(data.m_GpsRecords[i].firstSnapshot, firstSnapshots[i]);
        EXPECT_EQ(data.m_GpsRecords[i].snapshotCount, snapshotCounts[i]);
        EXPECT_EQ(data.m_GpsRecords[i].samplesBefore, samplesBefore[i]);
        EXPECT_EQ(data.m_GpsRecords[i].fix.NS, 'S');
    }
    EXPECT_EQ(data.m_GpsRecords[0].fix, data.m_NMEAs[1]);
    EXPECT_EQ(data.m_GpsRecords[1].fix, data.m_NMEAs[1]);
    EXPECT_EQ(data.m_NMEAs[2], data.m_NMEAs[1]);
    EXPECT_EQ(data.m_GpsRecords[2].fix.Latitude, 9);
}

TEST(SideData, NothingLeaksIntoTheNextRecording)
{
    const CollectedLog log;
    ZVKBlackBoxData data;
    SideDataWriter area;
    area.gsensor(0, 1, 1, 1).gps({.text = deviceText({.latitude = 3723.4567, .ew = 'W'})});
    const auto full = recordingOf(area).bytes();
    const auto plain = recordingOf(SideDataWriter().gps({.text = "$GX*\n"})).bytes();
    MemoryByteSource fullSource(full);
    MemoryByteSource plainSource(plain);
    ASSERT_TRUE(data.ExtractStreamInformation(fullSource));
    data.m_Times.push_back(1);
    ASSERT_TRUE(data.ExtractStreamInformation(plainSource));
    EXPECT_THAT(data.m_GSensors, IsEmpty());
    EXPECT_THAT(data.m_Times, IsEmpty());
    EXPECT_THAT(data.m_NMEAs, ElementsAre(ZVKGpsData()));
}
