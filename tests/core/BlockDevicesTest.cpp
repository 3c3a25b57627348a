#include "platform/disks/BlockDevices.h"

#include <gmock/gmock.h>

namespace {

using namespace platform;

/// A card in a reader, sda with the system on its second partition, and nothing else.
BlockDevices machine()
{
    const auto block = [](std::string device, std::string drive, std::string table = {}) {
        Block result;
        result.object = "/b/" + device;
        result.device = std::move(device);
        result.drive = std::move(drive);
        result.table = std::move(table);
        return result;
    };
    BlockDevices result;
    result.blocks = {block("sda", "/d/disk"), block("sda1", "/d/disk", "/b/sda"),
        block("sda2", "/d/disk", "/b/sda"), block("sdb", "/d/card"), block("sdb1", "/d/card", "/b/sdb"),
        block("x0", ""), block("x1", "")};
    result.blocks[2].mountPoints = {"/"};
    result.blocks[4].mountPoints = {"/media/kim/ZAVIK"};
    for (Block& one : result.blocks)
        one.isFilesystem = !one.mountPoints.empty();
    result.drives.resize(2);
    result.drives[0].object = "/d/disk";
    result.drives[1].object = "/d/card";
    result.drives[1].bus = "usb";
    for (Drive& drive : result.drives)
        drive.mediaRemovable = true;
    return result;
}

Block& named(BlockDevices& devices, const std::string& device)
{
    return const_cast<Block&>(*devices.block(device));
}

TEST(BlockDevices, ADriveThatTheSystemNeedsIsNeverRemovableByWhateverRoute)
{
    // What is changed, and whether the system needs the card's drive then.
    using Case = std::tuple<const char*, bool, std::function<void(BlockDevices&)>>;
    const auto mounted = [](const char* device, const char* path) {
        return [=](BlockDevices& all) { named(all, device).mountPoints.emplace_back(path); };
    };
    const Case cases[] = {{"a card alone", false, [](BlockDevices&) {}},
        {"the root", true, mounted("sdb1", "/")}, {"a home", true, mounted("sdb1", "/home/kim")},
        {"a folder in a home", false, mounted("sdb1", "/home/kim/card")},
        {"a part of /var", true, mounted("sdb1", "/var/lib/images")},
        {"a live system's medium", true, mounted("sdb1", "/run/live/medium")},
        {"the whole device", true, mounted("sdb", "/usr")},
        {"swap", true, [](BlockDevices& all) { named(all, "sdb1").isSwap = true; }},
        {"swap by the kernel", true, [](BlockDevices& all) { all.swaps = {"/dev/sdb1"}; }},
        {"a swap file", true, [](BlockDevices& all) { all.swaps = {"/media/kim/ZAVIK/swap"}; }},
        {"a mount that only the kernel knows", true,
            [](BlockDevices& all) {
                all.mounts.push_back({"/home", "/dev/sdb1", false});
            }},
        {"start files", true, mounted("sdb1", "/boot/efi")},
        {"no part of a system", false, mounted("sdb1", "/media/usr")},
        {"a swap file elsewhere", false, [](BlockDevices& all) { all.swaps = {"/swap"}; }},
        {"a system's drive", true, [](BlockDevices& all) { named(all, "sdb").systemHint = true; }},
        {"a pool", true, [](BlockDevices& all) { named(all, "sdb1").type = "zfs_member"; }},
        {"a volume in encryption", true,
            [](BlockDevices& all) {
                named(all, "x0").cryptoBacking = "/b/sdb1";
                named(all, "x1").slaves = {"x0"};
                named(all, "x1").isSwap = true;
            }},
        {"an array", true,
            [](BlockDevices& all) {
                named(all, "sdb1").raidMember = "/raid";
                named(all, "x0").raid = "/raid";
                named(all, "x0").mountPoints = {"/var"};
            }},
        {"a file system over two drives", true,
            [](BlockDevices& all) {
                for (const char* device : {"sda2", "sdb1"})
                    named(all, device).type = "btrfs", named(all, device).uuid = "1-2";
            }},
        {"a file used as a device", true, [](BlockDevices& all) {
             named(all, "x0").backingFile = "/media/kim/ZAVIK/system.img";
             named(all, "x0").mountPoints = {"/usr"};
         }}};
    for (const auto& [what, holds, change] : cases) {
        SCOPED_TRACE(what);
        BlockDevices devices = machine();
        change(devices);
        EXPECT_EQ(holdsSystem(devices, "sdb1"), holds);
        EXPECT_EQ(holdsSystem(devices, "sdb"), holds);
        EXPECT_TRUE(holdsSystem(devices, "sda1")) << "a neighbour of the system";
        const auto volumes = describedVolumes(devices);
        const auto card = std::ranges::find(volumes, "sdb1", &VolumeDescription::deviceName);
        ASSERT_NE(card, volumes.end());
        EXPECT_EQ(card->removable, !holds);
        EXPECT_EQ(volumes.front().removable, false);
    }
    EXPECT_FALSE(holdsSystem(machine(), "none"));
}

TEST(BlockDevices, TellsCardsFromBuiltInMemoryAndDisks)
{
    // The device, its bus, the media that fit, whether they are removable and another block that is there;
    // whether the card counts as removable then, and its protocol.
    using Media = std::vector<std::string>;
    using Case =
        std::tuple<std::string, const char*, Media, bool, const char*, std::optional<bool>, const char*>;
    const Case cases[] = {{"sdc1", "usb", {}, true, "", true, "USB"},
        {"sdc1", "usb", {}, false, "", false, "USB"}, // an external disk
        {"sdc1", "", {}, true, "", true, ""},
        {"sdc1", "", {"flash_cf", "flash_sdhc"}, false, "", true, "USB"},
        {"sdc1", "", {"flash_cf"}, false, "", false, ""},
        {"mmcblk1p1", "sdio", {}, false, "mmcblk0boot0", true, "USB"},
        {"mmcblk1", "", {}, false, "", true, "USB"},
        {"mmcblk0p1", "sdio", {"flash_mmc"}, false, "mmcblk0boot0", false, "USB"}};
    for (const auto& [device, bus, media, mediaRemovable, also, removable, protocol] : cases) {
        SCOPED_TRACE(device + " " + bus);
        BlockDevices devices = machine();
        devices.blocks.resize(3);
        devices.blocks[0] = {};
        devices.blocks[0].device = also;
        devices.blocks[2].device = device;
        devices.blocks[2].mountPoints = {"/\xFF", "/media/x"};
        devices.drives.resize(1);
        devices.drives[0].bus = bus;
        devices.drives[0].media = media;
        devices.drives[0].mediaRemovable = mediaRemovable;
        const auto volumes = describedVolumes(devices);
        ASSERT_EQ(volumes.size(), 1u);
        EXPECT_EQ(volumes[0].mountPath, "/media/x") << "texts are UTF-8";
        EXPECT_EQ(volumes[0].removable, removable);
        EXPECT_EQ(volumes[0].protocol, protocol);
    }
}

TEST(BlockDevices, ReadsTheKernelsTables)
{
    const auto mounts =
        parsedMounts("22 1 8:2 / / rw,relatime shared:1 - ext4 /dev/sda2 rw,errors=remount-ro\n"
                     "36 22 8:17 / /media/my\\040card ro - vfat /dev/sdb1 rw\n"
                     "37 22 8:18 / /media/b\\134c rw master:1 shared:2 - vfat /dev/sdb2 ro\n"
                     "garbage\n\n38 22 0:5 / /dev rw\n");
    ASSERT_EQ(mounts.size(), 3u);
    EXPECT_FALSE(mounts[0].readOnly);
    EXPECT_EQ(mounts[1].path, "/media/my card");
    EXPECT_EQ(mounts[1].source, "/dev/sdb1");
    EXPECT_TRUE(mounts[1].readOnly);
    EXPECT_EQ(mounts[2].path, "/media/b\\c");
    EXPECT_TRUE(mounts[2].readOnly);
    EXPECT_THAT(parsedSwaps("Filename\tType\n/dev/sda3   partition 1\n/a\\040b file 2\n"),
        testing::ElementsAre("/dev/sda3", "/a b"));
}

} // namespace
