#include "tests/core/SideDataSupport.h"
#include "tools/samplecard/AviWriter.h"

#include <gmock/gmock.h>

#include <climits>
#include <filesystem>
#include <fstream>

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
