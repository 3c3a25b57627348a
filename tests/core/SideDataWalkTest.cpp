#include "tests/core/SampleRecordings.h"
#include "tests/core/SideDataSupport.h"
#include "tests/support/Testing.h"
#include "tools/samplecard/DeviceSentence.h"

#include <new>
#ifdef __SANITIZE_ADDRESS__
// Of the sanitizer's allocator; g++ comes without the header.
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#endif

using namespace std::string_literals;

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
    const _AVI_GSENSOR_DATA_T sample = data.m_vGSensorData()[0].data;
    EXPECT_EQ(int64_t{sample.nTimestamp}, 123456789);
    EXPECT_EQ(int32_t{sample.nTemperature}, 42);
    ASSERT_THAT(data.m_vGpsData(), SizeIs(1));
    const _AVI_GPS_DATA_T header = data.m_vGpsData()[0].data;
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
        ASSERT_EQ(data.m_vGSensorData().size(), data.m_GSensors.size());
        ASSERT_EQ(data.gpsRecords.size(), whole.gpsHeaderCount(cut));
        ASSERT_EQ(result, cut >= whole.places.front().begin && !whole.cutsSample(cut));
    }
    const auto [result, data] = extract(whole.bytes);
    EXPECT_TRUE(result);
    EXPECT_EQ(data.walkEnd(), WalkEnd::complete);
    EXPECT_THAT(data.m_NMEAs, SizeIs(8));
}

TEST(SideData, ReportsADeviceThatFailsAtAnyByte)
{
    const Recording whole;
    for (uint64_t failsAt = 0; failsAt < whole.bytes.size(); ++failsAt) {
        SCOPED_TRACE(failsAt);
        UnreliableSource source(whole.bytes);
        source.failsAt = failsAt;
        source.portion = 1 + failsAt % 41;
        CollectedLog log;
        ZVKBlackBoxData data;
        ASSERT_FALSE(data.ExtractStreamInformation(source));
        ASSERT_EQ(data.walkEnd(), WalkEnd::readError);
        ASSERT_EQ(data.m_GSensors.size(), whole.sampleCount(failsAt));
        ASSERT_EQ(data.gpsRecords.size(), whole.gpsTextCount(failsAt));
        ASSERT_THAT(log.lines, SizeIs(2));
        ASSERT_EQ(log.lines[0], "#############################   START");
    }
    UnreliableSource source(whole.bytes);
    source.canSeek = false;
    EXPECT_EQ(extract(source).data.walkEnd(), WalkEnd::readError);
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
        EXPECT_EQ(data.walkEnd(), WalkEnd::stopped);
        EXPECT_EQ(source.readCount, reads);
        EXPECT_EQ(data.m_GSensors.empty(), reads == 0);
    }
}

TEST(SideData, RefusesFilesWithoutSideData)
{
    const std::string avi = "RIFF\xFF\xFF\xFF\xFF\x41VI ";
    const std::tuple<std::string, bool, WalkEnd> rows[] = {{"", false, WalkEnd::notAvi},
        {"RIFF\0\0\0\0AVI"s, false, WalkEnd::notAvi}, {"RIFF\0\0\0\0WAVEJUNK"s, false, WalkEnd::notAvi},
        {avi, false, WalkEnd::noSideData},
        {avi + "LIST\xFF\xFF\xFF\xFFJUNK\1\0\0\0"s, false, WalkEnd::noSideData},
        // No padding follows an odd size.
        {avi + "LIST\1\0\0\0x\0JUNK\1\0\0\0"s, false, WalkEnd::noSideData},
        {avi + "LIST\1\0\0\0xJUNK\1\0\0\0"s, true, WalkEnd::endOfFile},
        {avi + "JUNK\0\0\0\0"s, true, WalkEnd::complete},
        {avi + "JUNK\1\0\0\0junk"s, true, WalkEnd::endOfFile}};
    for (const auto& [file, isRead, end] : rows) {
        SCOPED_TRACE(testing::PrintToString(file));
        const auto [result, data] = extract(asBytes(file));
        EXPECT_EQ(result, isRead);
        EXPECT_EQ(data.walkEnd(), end);
    }
}

#ifdef __SANITIZE_ADDRESS__
TEST(SideData, TakesMemoryForWhatTheFileHoldsOnly)
{
    const auto repeated = [](std::string_view piece, size_t size) {
        std::string text;
        while (text.size() + piece.size() <= size)
            text += piece;
        return text;
    };
    using Row = std::tuple<const char*, GpsRecordFields, int>;
    for (const auto& [what, gps, samples] : {Row{"refused sentences", {.text = repeated("$GX\n", 512)}, 0},
             Row{"short sentences", {.text = repeated("$GA,1,,,,,,*\n$GA,2,,,,,,*\n", 512)}, 0},
             Row{"empty GPS records", {.km = '\0', .text = {}, .zeroByte = false, .declaredLength = 0}, 0},
             Row{"samples", {.text = {}}, 30}}) {
        SideDataWriter area;
        while (area.bytes().size() < 1'000'000) {
            for (int i = 0; i < samples; ++i)
                area.gsensor(i, i, 0, 0);
            area.gps(gps);
        }
        const auto bytes = recordingOf(area).bytes();
        const size_t before = __sanitizer_get_current_allocated_bytes();
        const Extraction extraction = extract(bytes);
        const size_t taken = __sanitizer_get_current_allocated_bytes() - before;
        EXPECT_GT(extraction.data.gpsRecords.size(), 1000u) << what;
        EXPECT_LT(taken, 6 * bytes.size()) << what;
    }
}
#endif

TEST(SideData, TellsWhenThereIsNotEnoughMemory)
{
    const Recording whole;
    UnreliableSource source(whole.bytes);
    source.portion = 100;
    source.beforeRead = [&] {
        if (source.readCount == 5)
            throw std::bad_alloc();
    };
    const auto [result, data] = extract(source);
    EXPECT_FALSE(result);
    EXPECT_EQ(data.walkEnd(), WalkEnd::noMemory);
    EXPECT_THAT(data.m_GSensors, IsEmpty()) << "it is given back";
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
    EXPECT_THAT(data.m_NMEAs, SizeIs(1));
    EXPECT_EQ(data.m_NMEAs[0], ZVKGpsData());
}
