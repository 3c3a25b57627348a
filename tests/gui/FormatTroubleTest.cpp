#include "tests/support/FormatWindowFixture.h"

TEST_F(FormatWindow, FailuresLeaveTheCardListedAndItsSettingsSafe)
{
    using Row = std::pair<platform::ScriptResult, std::string>;
    const std::string writeErrors =
        "\nError:The card has read or write errors, and what was on it may be lost. Do not use it any more.";
    for (const auto& [answer, text] :
        {Row{{1, "x"}, "\nThe card is write-protected or cannot be written to."},
            {{-128, "The password entry was cancelled."}, "\nError:The password entry was cancelled."},
            {{26, "/x"}, "\nError:Another card is in the reader now. Choose the card again.\n/x"},
            {{25, "1 / 2 bytes"}, "\nError:Another card is in the reader now. Choose the card again."},
            {{8, ""}, writeErrors},
            {{4, "mkfs.fat 4.2 (2021-01-31)\nmkfs.fat: unable to write: Input/output error"},
                writeErrors + "\nmkfs.fat: unable to write: Input/output error"},
            {{9, "zavik-format-card: 9"}, "\nError:The system gave no reason."}}) {
        formatAnswer = answer;
        format();
        EXPECT_THAT(platform.alerts.shown,
            ElementsAre("The card cannot be formatted|[1.9 GB] ZAVIK <Card Reader>" + text));
        EXPECT_THAT(platform.scripts.commands, ElementsAre(unmountCommand, formatCommand, mountCommand));
        EXPECT_EQ(onCard("config.bin"), settings);
        EXPECT_EQ(copiesKept(), 0U);
        EXPECT_EQ(controller.selectedUSBDisk()->deviceFilePath, "sdb1");
    }
}

TEST_F(FormatWindow, NothingIsUnmountedForACardThatIsNotTheOneShown)
{
    const std::vector<std::function<void()>> changes = {
        [this] { platform.disks.volumes[0].mediaPath = "usb-2"; },
        [this] { platform.disks.volumes[0].size += 512; },
        [this] { platform.disks.mediaAreWritable = false; },
        [this] { platform.disks.volumes[0].mountPath = "/boot"; },
        [this] { platform.disks.volumes.clear(); }};
    for (const auto& change : changes) {
        platform.disks.volumes = {card()};
        loadVolumes();
        platform.alerts.shown.clear();
        change();
        pressFormat();
        EXPECT_THAT(platform.alerts.shown, ElementsAre(StartsWith("The card cannot be formatted|")));
        EXPECT_TRUE(platform.scripts.commands.empty());
        EXPECT_EQ(copiesKept(), 0U);
    }
}

TEST_F(FormatWindow, FolderInThePartOfACardIsRefused)
{
    platform.disks.volumes[0].deviceName = "folder";
    format();
    EXPECT_TRUE(platform.scripts.commands.empty());
    EXPECT_THAT(platform.alerts.shown, ElementsAre(HasSubstr("A folder only stands in for one")));
    EXPECT_EQ(onCard("config.bin"), settings);
}

TEST_F(FormatWindow, CardThatCannotBeUnmountedIsLeftAlone)
{
    answers["diskutil umount"] = {1, "target is busy"};
    format();
    EXPECT_THAT(platform.scripts.commands, ElementsAre(unmountCommand, mountCommand));
    EXPECT_EQ(onCard("config.bin"), settings);
    EXPECT_THAT(platform.alerts.shown,
        ElementsAre(testing::AllOf(HasSubstr("still in use"), HasSubstr("target is busy"))));
    // One that is not mounted any more is formatted.
    events["diskutil umount"] = [this] { unmountCard(); };
    events["diskutil mount"] = [this] { mountCard(); };
    format();
    EXPECT_THAT(platform.scripts.commands, ElementsAre(unmountCommand, formatCommand, mountCommand));
    // For one that is gone nobody is asked for a password.
    events = {{"diskutil umount", [this] { platform.disks.volumes.clear(); }}};
    format();
    EXPECT_THAT(platform.scripts.commands, ElementsAre(unmountCommand, mountCommand));
    EXPECT_THAT(platform.alerts.shown, ElementsAre(HasSubstr("not in its reader any more")));
}

TEST_F(FormatWindow, UserDecidesAboutSettingsThatCannotBeKept)
{
    const std::pair<const char*, std::function<void()>> troubles[] = {
        {"it is no plain file",
            [this] {
                fs::remove(root.path("card/config.bin")), fs::create_directory(root.path("card/config.bin"));
            }},
        {"Not a directory", [this] { setenv("HOME", "/dev/null", 1); }},
        {"\nwrong fs type", [this] {
             unmountCard();
             platform.disks.unmounted[0].fileSystem = "vfat";
             answers["diskutil mount"] = {
                 1, "Error mounting:\nGDBus.Error:org.freedesktop.UDisks2.Error.Failed: wrong fs type"};
         }}};
    for (const auto& [why, makeTrouble] : troubles) {
        SCOPED_TRACE(why);
        answers.clear();
        mountCard();
        put("config.bin", settings);
        makeTrouble();
        platform.alerts.answer.reset();
        format();
        ASSERT_EQ(platform.alerts.open.size(), 1U);
        EXPECT_THAT(platform.alerts.shown,
            ElementsAre(testing::AllOf(StartsWith("The camera settings"), HasSubstr(why))));
        EXPECT_THAT(platform.scripts.commands, testing::Not(testing::Contains(formatCommand)));
        std::exchange(platform.alerts.open, {})[0]->answered(1);
        platform.dispatcher.runAll();
        EXPECT_THAT(platform.scripts.commands, testing::Not(testing::Contains(formatCommand)));
        EXPECT_FALSE(controller.isFormatting());
        platform.alerts.answer = 0;
        format();
        EXPECT_THAT(platform.scripts.commands, testing::Contains(formatCommand));
        fs::remove_all(root.path("card/config.bin"));
        setenv("HOME", home.path().c_str(), 1);
    }
}

TEST_F(FormatWindow, AnotherCardAfterTheFormatIsNotWrittenTo)
{
    const TempFolder other;
    const std::vector<std::function<void(platform::VolumeDescription&)>> changes = {
        [](auto& volume) { volume.deviceName = "sdc1"; }, [](auto& volume) { volume.mediaPath = "usb-2"; },
        [](auto& volume) { volume.size *= 2; }};
    for (const auto& change : changes) {
        put("config.bin", settings);
        platform.disks.volumes = {card()};
        events["diskutil mount"] = [&] {
            platform.disks.volumes[0].mountPath = other.path();
            change(platform.disks.volumes[0]);
        };
        format();
        EXPECT_FALSE(controller.selectedUSBDisk());
        EXPECT_TRUE(fs::is_empty(other.path()));
        EXPECT_THAT(platform.alerts.shown, ElementsAre(HasSubstr("was not found again")));
        EXPECT_EQ(copyNamed(), settings);
    }
}

TEST_F(FormatWindow, AnotherCardBetweenChoiceAndFormatIsNotTakenForTheOneChosen)
{
    // The medium is pinned before anything takes time.
    events["diskutil umount"] = [this] {
        EXPECT_EQ(platform.scripts.chosen->deviceName, "sdb1");
        platform.scripts.chosen.reset();
    };
    format();
    EXPECT_FALSE(platform.scripts.chosen);

    // The two cards have changed places since the list was made.
    put("config.bin", settings);
    root.file("elsewhere/config.bin", settings);
    platform.disks.volumes = {card()};
    loadVolumes();
    put("config.bin", std::string(272, 'o'));
    platform.disks.volumes[0].mountPath = root.path("elsewhere");
    events.clear();
    pressFormat();
    EXPECT_EQ(contents(root.path("elsewhere/config.bin")), settings);
}

TEST_F(FormatWindow, CardThatIsPulledAtAnyStepIsToldAndKeepsNoOneWaiting)
{
    for (const std::string step : {"diskutil umount", "sudo", "diskutil mount"}) {
        SCOPED_TRACE(step);
        put("config.bin", settings);
        platform.disks.volumes = {card()};
        formatAnswer = {step == "diskutil mount" ? 0 : 8, ""};
        events = {{step, [this] { platform.disks.volumes.clear(), fs::remove_all(root.path("card")); }}};
        format();
        EXPECT_EQ(copyNamed(), settings);
        EXPECT_FALSE(controller.isFormatting());
    }
}

TEST_F(FormatWindow, SettingsThatCannotBePutBackAreKeptAndNamed)
{
    events["diskutil mount"] = [this] { fs::create_directory(root.path("card/config.bin")); };
    format();
    EXPECT_THAT(platform.alerts.shown, ElementsAre(StartsWith("config.bin copy fail|")));
    EXPECT_EQ(copyNamed(), settings);
    EXPECT_FALSE(fs::exists(root.path("card/AlwaysMovie")));

    put("AlwaysMovie", "a file");
    fs::remove_all(root.path("card/config.bin"));
    events["diskutil mount"] = [this] { put("EventMovie", "a file where a folder belongs"); };
    format();
    EXPECT_THAT(platform.alerts.shown, ElementsAre(HasSubstr("its folders could not be made")));
}
