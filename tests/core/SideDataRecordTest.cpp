#include "tests/core/SampleRecordings.h"
#include "tests/core/SideDataSupport.h"
#include "tests/support/Testing.h"
#include "tools/samplecard/DeviceSentence.h"

#include <climits>

using namespace std::string_literals;

TEST(SideData, CountsEachRecordDownByItsRule)
{
    for (const char km : {'1', '9', '0', '2', '\0', 'q'}) {
        for (const bool zeroByte : {true, false}) {
            SCOPED_TRACE(testing::Message() << "KM " << int{km} << " zero byte " << zeroByte);
            SideDataWriter counted;
            // The second text is stepped over, the third completes the size.
            counted.gsensor(0, 1, 1, 1).gps(gpsAt(0, km, zeroByte)).gsensor(0, 2, 2, 2);
            counted.gps({.km = km, .text = std::string(600, 'x'), .zeroByte = zeroByte});
            counted.gps(gpsAt(0, km, zeroByte));
            const uint32_t size = counted.countedSize();
            counted.gsensor(0, 3, 3, 3);

            const Extraction exact = extract(recordingOf(counted, size).bytes());
            EXPECT_TRUE(exact.result);
            EXPECT_EQ(exact.data.walkEnd(), WalkEnd::complete);
            EXPECT_THAT(exact.data.m_GSensors, SizeIs(2));

            // A size that no sum of records meets wraps, and the walk goes on to the end of the file.
            for (const uint32_t lie : {1u, size - 1, size + 1, UINT32_MAX}) {
                const Extraction lied = extract(recordingOf(counted, lie).bytes());
                EXPECT_TRUE(lied.result);
                EXPECT_EQ(lied.data.walkEnd(), WalkEnd::endOfFile);
                EXPECT_THAT(lied.data.m_GSensors, SizeIs(3));
            }
        }
    }
}

TEST(SideData, StepsOverForeignWords)
{
    for (const auto& [foreign, samples] : {std::pair<std::string, size_t>("", 2), {"idx1", 2},
             {"0GD 0GPs", 2}, {"JUNKRIFF0000", 2}, {"abc", 0}, {"0GD", 0}, {"abcde", 0}}) {
        SCOPED_TRACE(foreign);
        SideDataWriter area;
        area.foreign(foreign).gsensor(0, 1, 1, 1).foreign("word").gsensor(0, 1, 1, 1);
        const auto [result, data] = extract(recordingOf(area).bytes());
        EXPECT_TRUE(result);
        EXPECT_THAT(data.m_GSensors, SizeIs(samples));
    }
}

TEST(SideData, NeverTrustsTheLengthOfAText)
{
    // The length that is declared, the bytes that are there; whether they are the last and whether they are
    // read.
    const std::tuple<int32_t, size_t, bool, bool, WalkEnd> rows[] = {
        {512, 512, false, true, WalkEnd::endOfFile},
        {512, 400, true, true, WalkEnd::endOfFile}, // cut by the end of the file, used as far as it goes
        {513, 513, false, false, WalkEnd::endOfFile}, {513, 512, true, false, WalkEnd::impossibleText},
        {INT_MAX, 600, true, false, WalkEnd::impossibleText},
        {-1, 600, false, false, WalkEnd::impossibleText},
        {INT_MIN, 600, false, false, WalkEnd::impossibleText}};
    for (const auto& [declared, available, isLast, isRead, end] : rows) {
        SCOPED_TRACE(testing::Message() << declared << " of " << available);
        std::string text = "$GA,,,1,2,3,N,W*00\n";
        text.resize(available, 'x');
        SideDataWriter area;
        area.gsensor(0, 1, 1, 1);
        area.gps({.km = '1', .text = text, .zeroByte = false, .declaredLength = declared});
        std::vector<std::byte> bytes = recordingOf(area.gsensor(0, 2, 2, 2)).bytes();
        if (isLast)
            bytes.resize(bytes.size() - 28 - 7);

        const auto [result, data] = extract(bytes);
        EXPECT_TRUE(result);
        EXPECT_EQ(data.walkEnd(), end);
        EXPECT_THAT(data.m_GSensors, SizeIs(isLast || end == WalkEnd::impossibleText ? 1 : 2));
        const size_t records = isRead ? 1 : 0;
        EXPECT_THAT(data.gpsRecords, SizeIs(records));
        EXPECT_THAT(data.m_NMEAs, SizeIs(records));
        EXPECT_THAT(data.m_vGpsData(), SizeIs(records));
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
    ASSERT_THAT(data.gpsRecords, SizeIs(2));
    EXPECT_EQ(data.gpsRecords[1].snapshotCount, 0);
    EXPECT_EQ(data.m_NMEAs.back().Latitude, 2222.5);
}

TEST(SideData, PairsEachSampleWithTheFixThatFollowsIt)
{
    // Samples are positive, fixes negative; each paired sample is expected to hold the time of its fix.
    using Event = std::pair<bool, int64_t>;
    const auto sample = [](int64_t time) { return Event{false, time}; };
    const auto fix = [](int64_t time) { return Event{true, time}; };
    const std::pair<std::vector<Event>, std::vector<int64_t>> rows[] = {
        {{sample(0), sample(100), sample(200), fix(200)}, {200, 200, 200}}, {{fix(0), sample(0)}, {}},
        // The samples after the fix's own tenth of a second wait for the next one.
        {{sample(0), sample(100), sample(200), fix(100), fix(300)}, {100, 100, 300}},
        // Samples that are all older count as paired: the next fix does not get them again.
        {{sample(0), sample(100), fix(900), sample(1000), fix(1900)}, {900, 900, 1900}},
        // Keys truncate toward zero.
        {{sample(1900), sample(1999), fix(1999), fix(2000)}, {1999, 2000}},
        {{sample(-99), sample(99), fix(50), fix(60)}, {50, 60}},
        {{sample(INT64_MIN), sample(INT64_MAX), fix(INT64_MAX)}, {INT64_MAX, INT64_MAX}}};
    for (const auto& [events, expected] : rows) {
        SideDataWriter area;
        for (const auto& [isFix, time] : events)
            isFix ? area.gps(gpsAt(time)) : area.gsensor(time, 0, 0, 0);
        std::vector<int64_t> fixOfSample;
        const Extraction read = extract(recordingOf(area).bytes());
        const auto paired = read.data.m_vGpsData();
        for (size_t i = 0; i < paired.size(); ++i)
            fixOfSample.push_back(int64_t{paired[i].data.nTimestamp});
        EXPECT_EQ(fixOfSample, expected);
    }
}

TEST(SideData, TellsWhatBelongsToEachGpsRecord)
{
    const DeviceFix first{.latitude = 3723.4567, .ns = 'S', .satellitesUsed = 7};
    SideDataWriter area;
    area.gsensor(0, 0, 0, 0).gps({.timestamp = 5, .text = deviceText(first)});
    area.gps({.timestamp = 6, .text = "nothing\n"}).gsensor(0, 0, 0, 0);
    area.gps({.timestamp = 7, .text = "$GX*\n$GA,,,9,,,,W*\n"});
    const auto [result, data] = extract(recordingOf(area).bytes());
    ASSERT_THAT(data.gpsRecords, SizeIs(3));
    std::vector<std::array<size_t, 4>> found; // time, first snapshot, snapshots, samples
    for (const ZVKGpsRecord& each : data.gpsRecords) {
        found.push_back({size_t(int64_t{each.header.nTimestamp}), each.firstSnapshot, each.snapshotCount,
            each.samplesBefore});
        EXPECT_EQ(each.NS, 'S');
    }
    EXPECT_EQ(found, (std::vector<std::array<size_t, 4>>{{5, 0, 2, 1}, {6, 2, 0, 1}, {7, 2, 2, 2}}));
    EXPECT_EQ(data.gpsRecords[1].EW, 'E');
    EXPECT_EQ(data.gpsRecords[2].EW, 'W');
    EXPECT_EQ(data.m_NMEAs[2], data.m_NMEAs[1]);
    EXPECT_NE(data.m_NMEAs[1], data.m_NMEAs[0]);
    EXPECT_EQ(data.m_NMEAs[3].Latitude, 9);
}
