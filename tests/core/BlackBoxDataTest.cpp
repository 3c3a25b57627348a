#include "tests/core/SideDataSupport.h"
#include "tools/samplecard/AviWriter.h"

#include <gmock/gmock.h>

#include <array>
#include <climits>
#include <filesystem>
#include <fstream>

using testing::ElementsAre;
using testing::SizeIs;
using namespace std::string_literals;

TEST(ParseNMEA, SnapshotsEverySentenceThatBeginsWithG)
{
    const std::string ga = "$GA,,,1.5,,,,*00";
    struct Row {
        std::string text;
        size_t snapshots;
        double latitude;
    };
    const Row rows[] = {
        {ga + "\r\n", 1, 1.5},
        {ga + "\n" + ga + "\0"s, 2, 1.5},
        {ga, 0, 0}, // no terminator
        {"\r\n\r\n", 0, 0},
        {"$PA,,,2,,,,*00\n" + ga + "\n", 1, 1.5},
        {"$\n$G\n", 1, 0},
        {"$GX,,,2,,,,*00\n$GA,,,2,,,,\n$GA,,,2,,*00\n", 3, 0}, // refused sentences count too
        {"noise$GA,,,2$GA,,,1.5,,,,*00\n", 1, 1.5}, // the last "$" begins the sentence
        {"GA,,,2,,,,*00\n", 0, 0},
        {"$GA,,,2,,,\xFF,*00\n" + ga + "\n", 2, 1.5}, // not UTF-8
        {"$GA,,,1.5,,,\xC3\xA9,*00\n", 1, 1.5},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.text));
        ZVKBlackBoxData data;
        std::string text = row.text;
        EXPECT_TRUE(data.ParseNMEA(text.data(), static_cast<uint32_t>(text.size())));
        EXPECT_THAT(data.m_NMEAs, SizeIs(row.snapshots));
        EXPECT_EQ(data.m_NMEAParser.m_Current.Latitude, row.latitude);
        EXPECT_EQ(text.find_first_of("\r\n"), text.npos);
    }
    ZVKBlackBoxData data;
    char byte = '\n';
    EXPECT_FALSE(data.ParseNMEA(nullptr, 1));
    EXPECT_FALSE(data.ParseNMEA(&byte, 0));
}

TEST(FrameCount, IsTheNumberOfGapsButAtLeastOne)
{
    for (const auto& [samples, frames] : {std::pair<size_t, uint64_t>{0, 1}, {1, 1}, {2, 1}, {10, 9}}) {
        ZVKBlackBoxData data;
        data.m_GSensors.resize(samples);
        EXPECT_EQ(data.frameCount(), frames) << samples;
    }
}

TEST(ParseFrameData, TakesExactlyEightBytes)
{
    const std::array<uint8_t, 9> bytes{1, 2, 3, 4, 5, 6, 7, 8, 9};
    ZVKBlackBoxData data;
    for (const uint32_t size : {0u, 7u, 9u})
        EXPECT_FALSE(data.ParseFrameData(bytes.data(), size)) << size;
    EXPECT_FALSE(data.ParseFrameData(nullptr, 8));
    EXPECT_EQ(data.m_udatSpeedDisplay, 0);
    EXPECT_TRUE(data.ParseFrameData(bytes.data(), 8));
    EXPECT_EQ(data.m_udatSpeedDisplay, 5);
    EXPECT_EQ(data.m_udatRecPark, 7);
    EXPECT_EQ(data.m_udatIncludeEvent, 8);
}

TEST(ParseTime, KeepsSecondsAndChangesOfTheEventType)
{
    const auto record = [](uint32_t seconds, uint32_t type) {
        std::array<uint8_t, 16> bytes{};
        for (unsigned i = 0; i < 4; ++i) {
            bytes[i] = static_cast<uint8_t>(seconds >> (8 * i));
            bytes[15 - i] = static_cast<uint8_t>(type >> (8 * i));
        }
        return bytes;
    };
    ZVKBlackBoxData data;
    const std::pair<uint32_t, uint32_t> records[] = {
        {0, 0}, {1420070399, 1}, {1420070400, 1}, {1456790399, 0x01000000}, {5, 0}, {0xFFFFFFFF, 1}};
    for (const auto& [seconds, type] : records)
        EXPECT_TRUE(data.ParseTime(record(seconds, type).data(), 16));
    EXPECT_THAT(data.m_Times, ElementsAre(0, 1420070399, 1420070400, 1456790399, 5, -1));
    EXPECT_THAT(data.m_TimeEvents,
        ElementsAre(ZVKTimeEvent{0, {2014, 12, 0, 31, 23, 59, 59, 0}, 1},
            ZVKTimeEvent{1, {2016, 2, 0, 29, 23, 59, 59, 0}, 3},
            ZVKTimeEvent{0, {2106, 2, 0, 7, 6, 28, 15, 0}, 5}));
    EXPECT_EQ(data.m_LastTimeEventType, 1);

    EXPECT_FALSE(data.ParseTime(record(0, 0).data(), 15));
    EXPECT_FALSE(data.ParseTime(nullptr, 16));
    EXPECT_THAT(data.m_Times, SizeIs(6));
}

TEST(ExtractStreamInformation, ReadsRegularFilesOnly)
{
    const CollectedLog log;
    const std::filesystem::path folder =
        std::filesystem::path(testing::TempDir()) / ("zavik " + std::to_string(std::rand()));
    std::filesystem::create_directories(folder);
    const std::filesystem::path file = folder / "녹화_F.avi";
    const auto bytes = AviWriter().filler(1'000'000).junk(SideDataWriter().gsensor(0, 1, 2, 3)).bytes();
    std::ofstream(file, std::ios::binary) << asText(bytes);

    ZVKBlackBoxData data;
    EXPECT_TRUE(data.ExtractStreamInformation(file.c_str()));
    EXPECT_THAT(data.m_GSensors, SizeIs(1));
    for (const char* path :
        {folder.c_str(), "/dev/zero", "", "no such file", static_cast<const char*>(nullptr)}) {
        EXPECT_FALSE(data.ExtractStreamInformation(path));
        EXPECT_EQ(data.walkEnd(), WalkEnd::CannotOpen);
        EXPECT_THAT(data.m_GSensors, SizeIs(0));
    }
    std::filesystem::remove_all(folder);
}
