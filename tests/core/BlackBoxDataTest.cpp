#include "tests/core/SideDataSupport.h"
#include "tests/support/Testing.h"
#include "tools/samplecard/AviWriter.h"

using namespace std::string_literals;

TEST(ParseNMEA, SnapshotsEverySentenceThatBeginsWithG)
{
    const std::string ga = "$GA,,,1.5,,,,*00";
    const std::tuple<std::string, size_t, double> rows[] = {
        {ga + "\n" + ga + "\0"s, 2, 1.5}, {ga, 0, 0}, // no terminator
        {"$PA,,,2,,,,*00\n" + ga + "\n", 1, 1.5},
        {"$GX,,,2,,,,*00\n$GA,,,2,,,,\n$GA,,,2,,*00\n", 3, 0}, // refused sentences count too
        {"noise$GA,,,2$GA,,,1.5,,,,*00\n", 1, 1.5}, // the last "$" begins the sentence
        {"$GA,,,2,,,\xFF,*00\n" + ga + "\n", 2, 1.5}, // not UTF-8
    };
    for (auto [text, snapshots, latitude] : rows) {
        SCOPED_TRACE(testing::PrintToString(text));
        ZVKBlackBoxData data;
        EXPECT_TRUE(data.ParseNMEA(text.data(), static_cast<uint32_t>(text.size())));
        EXPECT_THAT(data.m_NMEAs, SizeIs(snapshots));
        EXPECT_EQ(data.m_NMEAParser.m_Current.Latitude, latitude);
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
    ZVKBlackBoxData data;
    EXPECT_TRUE(data.ExtractStreamInformation(file.c_str()));
    EXPECT_THAT(data.m_GSensors, SizeIs(1));
    for (const char* path : {"/tmp", "/dev/zero", "", "no such file", static_cast<const char*>(nullptr)}) {
        EXPECT_FALSE(data.ExtractStreamInformation(path));
        EXPECT_EQ(data.walkEnd(), WalkEnd::cannotOpen);
        EXPECT_TRUE(data.openError());
        EXPECT_THAT(data.m_GSensors, SizeIs(0));
    }
}
