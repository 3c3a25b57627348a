#include "tests/support/FormatWindowFixture.h"

TEST_F(FormatWindow, ShowsWhatWouldBeFormatted)
{
    const auto fields = [&] {
        return line("pathField") + "|" + line("allocationUnitField") + "|" + line("fileSystemField");
    };
    platform.disks.volumes.push_back(card());
    platform.disks.volumes[1].deviceName = "sdc";
    platform.disks.volumes[1].size = uint64_t(7) << 30;
    loadVolumes();
    EXPECT_EQ(fields(), "sdb1   " + root.path("card") + "|32 KB|FAT32");
    EXPECT_TRUE(controller.selectUSBByDevFile("sdc"));
    EXPECT_EQ(fields(), "sdc   " + root.path("card") + "|128 KB|FAT32");
    EXPECT_FALSE(controller.selectUSBByDevFile("sdd"));
    EXPECT_EQ(controller.selectedUSBDisk()->deviceFilePath, "sdc");
    platform.disks.volumes[1].mediaPath = "another";
    for (QShortcut* const shortcut : controller.window().findChildren<QShortcut*>())
        if (shortcut->key() == QKeySequence(Qt::Key_F5))
            emit shortcut->activated();
    platform.dispatcher.runAll();
    EXPECT_FALSE(controller.selectedUSBDisk());
    EXPECT_EQ(fields(), "-|64KB|FAT32");

    controller.onFormat();
    platform.disks.volumes.clear();
    loadVolumes();
    controller.onFormat();
    platform.disks.volumes = {card()};
    platform.disks.volumes[0].writable = false;
    platform.disks.mediaAreWritable = false;
    loadVolumes();
    pressFormat();
    EXPECT_THAT(platform.alerts.shown,
        ElementsAre("ZAVIK|Please select USB drive.", "ZAVIK|There is no USB drive.",
            "The card cannot be formatted|[1.9 GB] ZAVIK <Card Reader>\nThe card is write-protected or "
            "cannot "
            "be written to."));
    EXPECT_TRUE(platform.scripts.commands.empty());
}

TEST_F(FormatWindow, CardHasItsFoldersAndItsSettingsAgain)
{
    format();
    EXPECT_THAT(platform.scripts.commands, ElementsAre(unmountCommand, formatCommand, mountCommand));
    EXPECT_EQ(platform.scripts.chosen->deviceName, "sdb1");
    EXPECT_EQ(platform.scripts.chosen->size, card().size);
    EXPECT_EQ(onCard("config.bin"), settings);
    EXPECT_FALSE(fs::exists(root.path("card/AlwaysMovie/old.avi")));
    for (const char* folder : {"AlwaysMovie", "EventMovie", "MotionMovie"})
        EXPECT_TRUE(fs::is_directory(root.path("card") + "/" + folder)) << folder;
    EXPECT_EQ(copiesKept(), 0U);
    EXPECT_THAT(
        platform.alerts.shown, ElementsAre("The card has been formatted|[1.9 GB] ZAVIK <Card Reader>"));
    EXPECT_FALSE(controller.window().isVisible());

    // A whole medium without settings gets default ones.
    platform.disks.volumes[0].whole = true;
    fs::remove(root.path("card/config.bin"));
    format();
    EXPECT_EQ(platform.scripts.commands[0], "diskutil umountDisk sdb1");
    EXPECT_EQ(onCard("config.bin").size(), sizeof(_FILEDATA));
}

TEST_F(FormatWindow, DamagedOrEmptyCardIsTheOneToFormat)
{
    // Its mount has become read-only, its medium has not.
    platform.disks.volumes[0].writable = false;
    format();
    EXPECT_THAT(platform.alerts.shown, ElementsAre(StartsWith("The card has been formatted|")));

    // One that is not mounted is, for its settings.
    events["diskutil mount"] = [this] { mountCard(); };
    put("config.bin", settings);
    unmountCard();
    platform.disks.unmounted[0].fileSystem = "vfat";
    format();
    EXPECT_THAT(
        platform.scripts.commands, ElementsAre(mountCommand, unmountCommand, formatCommand, mountCommand));
    EXPECT_EQ(onCard("config.bin"), settings);

    // Without a file system there is nothing to keep, and nobody is asked.
    unmountCard();
    platform.disks.unmounted[0].label.clear();
    format();
    EXPECT_THAT(platform.scripts.commands, ElementsAre(unmountCommand, formatCommand, mountCommand));
    EXPECT_THAT(platform.alerts.shown, ElementsAre(StartsWith("The card has been formatted|")));
}

TEST_F(FormatWindow, CardIsLetGoBeforeItIsUnmountedAndGivenBack)
{
    std::ifstream recording(root.path("card/AlwaysMovie/old.avi"));
    const fs::path here = fs::current_path();
    fs::current_path(root.path("card/AlwaysMovie"));
    holder.letsGo = [&] { platform.dispatcher.after(1s, [&] { recording.close(); }); };
    bool wasOpen = false;
    events["diskutil umount"] = [&] { wasOpen = recording.is_open() || fs::current_path() != "/"; };
    format();
    EXPECT_THAT(platform.scripts.commands, IsEmpty()) << "it is still open";
    EXPECT_EQ(label("progressMessageField"), "Still being read: " + root.path("card/AlwaysMovie/old.avi"));
    // Meanwhile the card got its name and its place with it.
    events["diskutil mount"] = [this] {
        fs::rename(root.path("card"), root.path("ZAVIK"));
        platform.disks.volumes[0].mountPath = root.path("ZAVIK");
    };
    platform.dispatcher.advance(2s);
    platform.dispatcher.runAll();
    fs::current_path(here);
    EXPECT_FALSE(wasOpen);
    EXPECT_THAT(holder.told,
        ElementsAre("let go of " + root.path("card"), root.path("card") + " is " + root.path("ZAVIK")));

    // A read that hangs holds up nobody for long; who holds the card is told.
    holder.letsGo = [] {};
    std::ifstream hung(root.path("ZAVIK/config.bin"));
    events.clear();
    answers["diskutil umount"] = {1, "target is busy"};
    format();
    platform.dispatcher.advance(5s);
    platform.dispatcher.runAll();
    EXPECT_THAT(
        platform.alerts.shown, ElementsAre(HasSubstr("still reading:\n" + root.path("ZAVIK/config.bin"))));
}

TEST_F(FormatWindow, CancelGivesUpUntilTheCardIsTouched)
{
    const auto& cancel = outlet<QPushButton>("cancelButton");
    loadVolumes();
    controller.showWindow();
    holder.letsGo = [this] { controller.cancel(); };
    pressFormat();
    EXPECT_TRUE(platform.scripts.commands.empty());
    EXPECT_EQ(holder.told.back(), root.path("card") + " is " + root.path("card"));
    EXPECT_EQ(label("progressMessageField"), "Cancelled. Nothing was formatted.");
    EXPECT_TRUE(cancel.isEnabled());
    EXPECT_EQ(copiesKept(), 0U);

    holder.letsGo = [] {};
    events["diskutil umount"] = [this] { controller.cancel(); };
    pressFormat();
    EXPECT_THAT(platform.scripts.commands, ElementsAre(unmountCommand, mountCommand));
    EXPECT_EQ(copiesKept(), 0U);

    events = {{"sudo", [&] {
                   platform.dispatcher.runMain();
                   EXPECT_FALSE(cancel.isEnabled());
                   EXPECT_THAT(label("hintLabel"), HasSubstr("cannot be cancelled any more"));
                   controller.cancel();
               }}};
    pressFormat();
    EXPECT_THAT(platform.alerts.shown, ElementsAre(StartsWith("The card has been formatted|")));
}

TEST_F(FormatWindow, ListTellsEqualCardsApartAndFollowsThem)
{
    const auto row = [&](int i) { return outlet<QListWidget>("usbDiskList").item(i)->text().toStdString(); };
    put("MotionMovie/motion_20150321_142530.avi", "video");
    platform.disks.volumes[0].fileSystem = "vfat";
    platform.disks.volumes[0].serial = "0815";
    platform.disks.unmounted = {card()};
    platform.disks.unmounted[0].deviceName = "sdc";
    platform.disks.unmounted[0].mountPath.clear();
    platform.disks.unmounted[0].label = "<b>R&B</b> of an unusual length";
    loadVolumes();
    controller.showWindow();
    EXPECT_THAT(row(0),
        testing::MatchesRegex(
            "\\[1.9 GB\\] ZAVIK <Card Reader>\nsdb1 .+ FAT .+ 1 recording .+ free .+ No. 0815"));
    EXPECT_EQ(row(1),
        "[1.9 GB] <b>R&B</b> of an unusual length <Card Reader>\nsdc \u00B7 no file system \u00B7 not "
        "mounted");
    const auto button = [&] { return outlet<QPushButton>("formatButton").text().toStdString(); };
    EXPECT_EQ(button(), "Format ZAVIK (1.9 GB)");
    outlet<QListWidget>("usbDiskList").setCurrentRow(1);
    EXPECT_EQ(button(), "Format <b>R&&B</b> of a\u2026 (1.9 GB)");

    // The first one is mounted elsewhere, the second stays chosen.
    platform.disks.move(platform.disks.volumes[0], root.path("ZAVIK1"));
    platform.dispatcher.runAll();
    EXPECT_EQ(controller.selectedUSBDisk()->deviceFilePath, "sdc");
    EXPECT_TRUE(controller.selectUSBByDevFile("sdb1"));
    EXPECT_THAT(line("pathField"), HasSubstr(root.path("ZAVIK1")));
}

TEST_F(FormatWindow, NothingClosesOrQuitsWhileItFormatsAndItsAlertGoesWithIt)
{
    loadVolumes();
    controller.showWindow();
    QWidget other;
    other.show();
    controller.onFormat();
    platform.dispatcher.runMain();
    EXPECT_FALSE(outlet<QPushButton>("formatButton").isEnabled());
    EXPECT_FALSE(other.close());
    ASSERT_EQ(platform.alerts.open.size(), 1U);
    QEvent quit(QEvent::Quit);
    QApplication::sendEvent(qApp, &quit);
    EXPECT_FALSE(quit.isAccepted());
    EXPECT_TRUE(controller.window().isVisible());
    EXPECT_EQ(platform.alerts.open.size(), 1U) << "it is told once";
    platform.alerts.open[0]->answered(0);
    EXPECT_FALSE(other.close());
    EXPECT_EQ(platform.alerts.open.size(), 2U) << "and again";
    platform.alerts.open.erase(platform.alerts.open.begin());
    platform.dispatcher.runAll();
    EXPECT_TRUE(platform.alerts.open.empty());
    EXPECT_TRUE(other.close());
    EXPECT_FALSE(controller.window().isVisible());
}

TEST_F(FormatWindow, ControllerThatGoesAwayLeavesTheCardWhole)
{
    for (const bool isTouched : {false, true}) {
        SCOPED_TRACE(isTouched);
        platform.scripts.commands.clear();
        auto second = std::make_unique<ZVKFormatWindowController>(platform.pieces);
        second->window();
        platform.dispatcher.runAll();
        events["diskutil umount"] = [&] { second.reset(); };
        second->onFormat();
        if (!isTouched)
            second.reset();
        platform.dispatcher.runAll();
        platform.dispatcher.advance(2s);
        EXPECT_EQ(onCard("config.bin"), settings);
        EXPECT_EQ(fs::is_directory(root.path("card/MotionMovie")), isTouched);
        EXPECT_EQ(platform.scripts.commands.empty(), !isTouched);
        EXPECT_EQ(copiesKept(), 0U);
    }
}
