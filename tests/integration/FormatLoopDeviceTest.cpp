#include "cardtools/format/ZVKFormatWindowController.h"
#include "platform/disks/QtScriptRunner.h"
#include "tests/support/GuiTesting.h"
#include "tests/support/LoopDevice.h"

namespace {

/// The window, the real script runner and the real file system tools on a file that stands in for the card;
/// udisksctl and pkexec are small scripts that do what the real ones do, without a service.
class FormatLoopDevice : public LoopDeviceTest {
protected:
    FormatLoopDevice()
    {
        folder.program("pkexec", "exec \"$@\"\n");
        // A lock that the process of a FUSE file system holds until it has written everything back and ended.
        folder.program("udisksctl",
            "case $1 in unmount) { umount " + mountPoint + " 2>/dev/null || fusermount -u " + mountPoint
                + "; } && flock " + lock + " true;;\nmount) mkdir -p " + mountPoint + "; exec 9>" + lock
                + "; flock 9; mount -t vfat $3 " + mountPoint + " 2>/dev/null || fusefat -o rw+ $3 "
                + mountPoint + " >/dev/null 2>&1;;\nesac\n");
        setenv("PATH", (folder.path() + ":" + path).c_str(), 1);
    }
    ~FormatLoopDevice() override
    {
        (void)platform::runTool({{"udisksctl", "unmount"}});
        setenv("PATH", path.c_str(), 1);
    }

    bool isMounted() const
    {
        struct stat here { };
        struct stat above { };
        return stat(mountPoint.c_str(), &here) == 0 && stat(folder.path().c_str(), &above) == 0
            && here.st_dev != above.st_dev;
    }
    /// What the system would list.
    platform::VolumeDescription volume(const LoopDevice& card, uint64_t size) const
    {
        return {mountPoint, true, "USB", card.name, "Card Reader", size, true, true, "ZAVIK", "loop"};
    }

    const std::string path = getenv("PATH");
    TempFolder folder;
    const std::string mountPoint = folder.path("mounted");
    const std::string lock = folder.path("mounted.lock");
    platform::QtScriptRunner runner{ZAVIK_LOOP_FORMAT_HELPER};
    TestPlatform desktop;
    platform::Platform pieces{desktop.dispatcher, desktop.panels, desktop.alerts, desktop.defaults,
        desktop.screens, desktop.printing, runner, desktop.disks, {}};
};

} // namespace

TEST_F(FormatLoopDevice, FromTheWindowToTheCardAndBack)
{
    constexpr uint64_t size = uint64_t(4) << 30;
    const LoopDevice card(size);
    ASSERT_TRUE(platform::runTool({{"mkfs.fat", "-I", "-F", "32", "-n", "OLD", card.path()}}).succeeded());
    ASSERT_TRUE(platform::runTool({{"udisksctl", "mount", "-b", card.path()}}).succeeded());
    if (!isMounted())
        GTEST_SKIP() << "this machine cannot mount a FAT file system";
    const std::string settings(272, 's');
    std::ofstream(mountPoint + "/config.bin") << settings;
    std::ofstream(mountPoint + "/old.avi") << "video";

    desktop.disks.volumes = {volume(card, size)};
    ZVKFormatWindowController controller(pieces);
    controller.window();
    desktop.dispatcher.runAll();
    controller.onFormat();
    desktop.dispatcher.runAll();

    ASSERT_EQ(desktop.alerts.shown.size(), 1U);
    EXPECT_EQ(desktop.alerts.shown[0], "The card has been formatted|[4.0 GB] ZAVIK <Card Reader>");
    ASSERT_TRUE(isMounted());
    EXPECT_EQ(contents(mountPoint + "/config.bin"), settings);
    EXPECT_FALSE(fs::exists(mountPoint + "/old.avi"));
    for (const char* name : {"AlwaysMovie", "EventMovie", "MotionMovie"})
        EXPECT_TRUE(fs::is_directory(mountPoint + "/" + name)) << name;
    ASSERT_TRUE(platform::runTool({{"udisksctl", "unmount", "-b", card.path()}}).succeeded());
    const auto checked = platform::runTool({{"fsck.fat", "-n", card.path()}, 1min, true});
    EXPECT_TRUE(checked.succeeded()) << checked.text;
}
