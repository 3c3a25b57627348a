#include "tests/core/SideDataSupport.h"
#include "tests/support/TempFolder.h"
#include "tools/samplecard/AviWriter.h"

#include <gmock/gmock.h>

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
        {ga + "\n" + ga + "\0"s, 2, 1.5}, {ga, 0, 0}, // no terminator
        {"$PA,,,2,,,,*00\n" + ga + "\n", 1, 1.5},
        {"$GX,,,2,,,,*00\n$GA,,,2,,,,\n$GA,,,2,,*00\n", 3, 0}, // refused sentences count too
        {"noise$GA,,,2$GA,,,1.5,,,,*00\n", 1, 1.5}, // the last "$" begins the sentence
        {"$GA,,,2,,,\xFF,*00\n" + ga + "\n", 2, 1.5}, // not UTF-8
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
    const TempFolder folder;
    const std::string file = folder.file(
        "녹화_F.avi", AviWriter().filler(1'000'000).junk(SideDataWriter().gsensor(0, 1, 2, 3)).bytes());
    const std::string here = folder.path();
    ZVKBlackBoxData data;
    EXPECT_TRUE(data.ExtractStreamInformation(file.c_str()));
    EXPECT_THAT(data.m_GSensors, SizeIs(1));
    for (const char* path :
        {here.c_str(), "/dev/zero", "", "no such file", static_cast<const char*>(nullptr)}) {
        EXPECT_FALSE(data.ExtractStreamInformation(path));
        EXPECT_EQ(data.walkEnd(), WalkEnd::CannotOpen);
        EXPECT_THAT(data.m_GSensors, SizeIs(0));
    }
}
