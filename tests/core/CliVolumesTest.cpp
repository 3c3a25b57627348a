#include "tests/core/CliSupport.h"
#include "tests/support/TestDiskArbitration.h"
#include "tests/support/Testing.h"

namespace {

using testing::StartsWith;

class CliVolumesTest : public testing::Test {
protected:
    void mount(std::vector<platform::VolumeDescription> volumes)
    {
        source = [volumes] {
            auto disks = std::make_unique<TestDiskArbitration>();
            disks->volumes = volumes;
            return disks;
        };
    }
    Outcome zavikctl(const std::vector<std::string>& words) { return ::zavikctl(words, source); }

    TempFolder folder;
    cli::VolumesSource source;
};

TEST_F(CliVolumesTest, ListsTheCardToUseFirst)
{
    platform::VolumeDescription music = TestDiskArbitration::card("/media/\"1\"", "MUSIC");
    music.mediaPath = "usb-2";
    music.deviceName = "sdc";
    music.deviceModel.reset();
    music.writable = false;
    music.whole = true;
    platform::VolumeDescription disk = music;
    disk.removable = false;
    mount({music, disk, TestDiskArbitration::card("/media/a\nb")});

    EXPECT_EQ(zavikctl({"volumes", "--json"}).out,
        R"([{"display":"[1.9 GB] ZAVIK <Card Reader>","volumeName":"ZAVIK","mountedURL":"/media/a\u000ab",)"
        R"("deviceFilePath":"sdb1","deviceModel":"Card Reader","volumeSize":1977614336,"writable":true,)"
        R"("mediaWhole":false,"key":"usb-1"},
{"display":"[1.9 GB] MUSIC ","volumeName":"MUSIC","mountedURL":"/media/\"1\"","deviceFilePath":"sdc",)"
        R"("deviceModel":null,"volumeSize":1977614336,"writable":false,"mediaWhole":true,"key":"usb-2"}]
)");
    const Outcome text = zavikctl({"volumes"});
    EXPECT_THAT(
        text.out, StartsWith("[1.9 GB] ZAVIK <Card Reader>\n    /media/a\\x0ab\n    sdb1, 1977614336 bytes"));
    EXPECT_THAT(text.out, HasSubstr("sdc, 1977614336 bytes, write-protected, whole medium\n"));
    EXPECT_EQ(text.code, 0);
}

TEST_F(CliVolumesTest, TellsNoCardFromAProgramThatCannotSay)
{
    EXPECT_EQ(zavikctl({"volumes"}).code, 1) << "a program that knows no volumes";
    mount({});
    EXPECT_EQ(zavikctl({"volumes", "--json"}).out, "[]\n");
    EXPECT_EQ(zavikctl({"volumes"}).code, 0);
    EXPECT_EQ(zavikctl({"volumes", "--card", folder.path()}).code, 0);
}

} // namespace
