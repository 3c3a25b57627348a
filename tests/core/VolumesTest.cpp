#include "cardtools/volumes/Volumes.h"
#include "platform/disks/FolderCard.h"
#include "tests/support/TestDiskArbitration.h"
#include "tests/support/Testing.h"

namespace {

using platform::VolumeDescription;

class VolumesTest : public testing::Test {
protected:
    /// A volume on a folder of its own, in a reader with a device of its own.
    VolumeDescription& add(const std::string& name, const std::string& label = "ZAVIK")
    {
        fs::create_directory(folder.path(name));
        disks.volumes.push_back(TestDiskArbitration::card(folder.path(name), label));
        disks.volumes.back().deviceName = name;
        return disks.volumes.back();
    }

    TempFolder folder;
    TestDiskArbitration disks;
};

TEST_F(VolumesTest, OnlyRemovableUsbVolumesWithADeviceAreCards)
{
    add("fixed").removable = false;
    add("unknown").removable.reset();
    add("disc").protocol = "SATA";
    add("lower").protocol = "usb";
    add("mapped").deviceName.clear();
    add("card");
    EXPECT_THAT(removableVolumeURLs(disks),
        ElementsAre(folder.path("disc"), folder.path("lower"), folder.path("mapped"), folder.path("card")));
    EXPECT_THAT(usbVolumeURLs(disks), ElementsAre(folder.path("mapped"), folder.path("card")));

    ASSERT_EQ(usbDiskEntities(disks).size(), 1u);
    EXPECT_EQ(usbDiskEntities(disks).front().mountedURL, folder.path("card"));
}

TEST_F(VolumesTest, ThePreferredCardIsTheOneThatTheCameraUses)
{
    // The volumes in the system's order and the one that is preferred.
    // A letter is a volume: Z a ZAVIK with config.bin, z with a folder of that name, R and r (without any)
    // the same write-protected; o another label with config.bin, p the same write-protected, l labelled
    // "zavik".
    const std::pair<std::string, const char*> cases[] = {{"", ""}, {"zZ", "Z"}, {"ozZ", "Z"}, {"orz", "z"},
        {"Rz", "z"}, {"oR", "R"}, {"or", "r"}, {"lr", "r"}, {"po", "o"}, {"pl", "l"}, {"p", "p"}, {"RZ", "Z"},
        {"ol", "o"}};
    for (const auto& [volumes, preferred] : cases) {
        SCOPED_TRACE(volumes);
        disks.volumes.clear();
        for (const char letter : volumes) {
            const std::string name(1, letter);
            const auto isOneOf = [letter](std::string_view letters) {
                return letters.find(letter) != letters.npos;
            };
            add(name,
                isOneOf("ZzRr")     ? "ZAVIK"
                    : letter == 'l' ? "zavik"
                                    : "MUSIC")
                .writable = !isOneOf("Rrp");
            if (isOneOf("ZRop"))
                folder.file(name + "/config.bin");
            else if (letter == 'z')
                fs::create_directories(folder.path(name + "/config.bin"));
        }
        disks.asked = 0;
        EXPECT_EQ(preferredUSBDisk(disks).value_or(TKUSBDiskEntity{}).deviceFilePath, preferred);
        EXPECT_EQ(disks.asked, 1);
    }
}

TEST_F(VolumesTest, FindsTheFirstCardThatHoldsAPath)
{
    add("fixed").removable = false;
    add("empty");
    add("file");
    add("folder");
    folder.file("fixed/timeset.cfg");
    folder.file("file/timeset.cfg");
    folder.file("folder/DrvInfo/zavik_000.drv");
    add("gone").mountPath = folder.path("pulled");
    EXPECT_EQ(findUSBVolumeContainingPath(disks, "timeset.cfg"), folder.path("file"));
    EXPECT_EQ(findUSBVolumeContainingPath(disks, "/timeset.cfg"), folder.path("file"));
    EXPECT_EQ(findUSBVolumeContainingPath(disks, "DrvInfo"), folder.path("folder"));
    EXPECT_EQ(findUSBVolumeContainingPath(disks, "none"), std::nullopt);
}

TEST_F(VolumesTest, AFolderTakesThePartOfTheCard)
{
    auto system = std::make_unique<TestDiskArbitration>();
    system->volumes = {TestDiskArbitration::card("/media/real")};
    const std::string copy = folder.path("copy of a card");
    fs::create_directory(copy);
    platform::FolderCard volumes(copy + "/./", std::move(system));
    EXPECT_THAT(usbVolumeURLs(volumes), ElementsAre(copy, "/media/real"));
    const TKUSBDiskEntity card = preferredUSBDisk(volumes).value();
    EXPECT_EQ(card.mountedURL, copy);
    EXPECT_EQ(card.deviceFilePath, "folder");
    EXPECT_NE(volumes.setVolumeName(copy, "OTHER"), "");
    EXPECT_EQ(volumes.setVolumeName("/media/real", "OTHER"), "");

    fs::remove(copy);
    EXPECT_THAT(usbVolumeURLs(volumes), ElementsAre("/media/real"));
    EXPECT_THAT(usbVolumeURLs(*std::make_unique<platform::FolderCard>(copy, nullptr)), IsEmpty());
}

} // namespace
