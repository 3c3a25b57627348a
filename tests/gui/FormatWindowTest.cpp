#include "cardtools/CardHolder.h"
#include "cardtools/ZVKFormatWindowController.h"
#include "settings/FileData.h"
#include "tests/support/GuiTesting.h"

namespace {

using testing::StartsWith;

const std::string unmountCommand = "diskutil umount sdb1";
const std::string formatCommand =
    "sudo newfs_msdos -v ZAVIK -F 32 -n 2 -k 6 -r 32 -c 32 sdb1 as administrator";
const std::string mountCommand = "diskutil mount sdb1";
constexpr uint64_t gib = uint64_t(1) << 30;

/// A card whose folder the scripted commands really unmount, empty and mount again.
class FormatWindow : public testing::Test {
protected:
    FormatWindow()
    {
        put("config.bin", settings);
        put("AlwaysMovie/old.avi", "video");
        setenv("HOME", home.path().c_str(), 1);
        platform.disks.volumes = {card()};
        platform.scripts.script = [this](const std::string& command, bool) { return run(command); };
    }
    ~FormatWindow() override { setenv("HOME", homeBefore.c_str(), 1); }

    platform::VolumeDescription card() const { return TestDiskArbitration::card(root.path("card")); }
    void put(const std::string& name, const std::string& text) const { root.file("card/" + name, text); }
    std::string onCard(const std::string& name) const { return contents(root.path("card/" + name)); }
    /// The settings' copy that the one alert names.
    std::string copyNamed() const
    {
        const auto& shown = platform.alerts.shown;
        const std::string path = shown.size() == 1 ? shown[0].substr(shown[0].rfind('\n') + 1) : "";
        return path.starts_with(home.path("Documents/Zavik/config-")) ? contents(path) : "";
    }
    size_t copiesKept() const
    {
        std::error_code none;
        return static_cast<size_t>(
            std::distance(fs::directory_iterator(home.path("Documents/Zavik"), none), {}));
    }
    /// The card is in its reader, but mounted nowhere.
    void unmountCard()
    {
        platform.disks.unmounted = std::exchange(platform.disks.volumes, {});
        platform.disks.unmounted[0].mountPath.clear();
    }
    void mountCard()
    {
        platform.disks.unmounted.clear();
        platform.disks.volumes = {card()};
    }

    platform::ScriptResult run(const std::string& command)
    {
        const auto answer = answers.find(command.substr(0, command.find(' ', 9)));
        if (command.starts_with("sudo") && formatAnswer.number == 0) {
            fs::remove_all(root.path("card"));
            fs::create_directory(root.path("card"));
        }
        for (const auto& [start, event] : events) {
            if (command.starts_with(start))
                event();
        }
        if (command.starts_with("sudo"))
            return formatAnswer;
        return answer == answers.end() ? platform::ScriptResult{} : answer->second;
    }

    void loadVolumes()
    {
        controller.window();
        controller.loadUSBVolumes();
        platform.dispatcher.runAll();
    }
    void pressFormat()
    {
        controller.onFormat();
        platform.dispatcher.runAll();
    }
    void format()
    {
        platform.alerts.shown.clear();
        platform.scripts.commands.clear();
        loadVolumes();
        pressFormat();
    }
    std::string line(const char* name) { return outlet<QLineEdit>(name).text().toStdString(); }
    std::string label(const char* name) { return outlet<QLabel>(name).text().toStdString(); }
    /// The next steps that have something to do with it meet this.
    void meanwhile(const std::string& command, std::function<void()> event)
    {
        events = {{command, std::move(event)}};
    }
    template <typename Widget> Widget& outlet(const char* name)
    {
        return *controller.window().findChild<Widget*>(name);
    }

    const std::string settings = std::string(271, 'x') + "y";
    TempFolder root;
    TempFolder home;
    const std::string homeBefore = getenv("HOME");
    TestPlatform platform;
    platform::ScriptResult formatAnswer;
    std::map<std::string, platform::ScriptResult> answers;
    std::map<std::string, std::function<void()>> events;
    /// What the card's holder was told.
    struct Holder final : CardHolder {
        std::vector<std::string> told;
        std::function<void()> letsGo = [] {};
        void letGoOf(const std::string& path) override
        {
            told.push_back("let go of " + path);
            letsGo();
        }
        void cardFormatted(const std::string& from, const std::string& to) override
        {
            told.push_back(from + " is " + to);
        }
    } holder;
    ZVKFormatWindowController controller{platform.pieces, &holder};
};

} // namespace

TEST_F(FormatWindow, ShowsWhatWouldBeFormatted)
{
    const auto fields = [&] {
        return line("pathField") + "|" + line("allocationUnitField") + "|" + line("fileSystemField");
    };
    platform.disks.volumes.push_back(card());
    platform.disks.volumes[1].deviceName = "sdc";
    platform.disks.volumes[1].size = 7 * gib;
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
}

TEST_F(FormatWindow, WholeMediumWithoutSettingsGetsDefaultOnes)
{
    platform.disks.volumes[0].whole = true;
    fs::remove(root.path("card/config.bin"));
    format();
    EXPECT_EQ(platform.scripts.commands[0], "diskutil umountDisk sdb1");
    EXPECT_EQ(onCard("config.bin").size(), sizeof(_FILEDATA));
}

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
    meanwhile("diskutil umount", [this] { platform.disks.volumes.clear(); });
    format();
    EXPECT_THAT(platform.scripts.commands, ElementsAre(unmountCommand, mountCommand));
    EXPECT_THAT(platform.alerts.shown, ElementsAre(HasSubstr("not in its reader any more")));
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

    meanwhile("sudo", [&] {
        platform.dispatcher.runMain();
        EXPECT_FALSE(cancel.isEnabled());
        EXPECT_THAT(label("hintLabel"), HasSubstr("cannot be cancelled any more"));
        controller.cancel();
    });
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
        meanwhile(step, [this] { platform.disks.volumes.clear(), fs::remove_all(root.path("card")); });
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
