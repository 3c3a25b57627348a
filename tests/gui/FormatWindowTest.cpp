#include "cardtools/ZVKFormatWindowController.h"
#include "settings/FileData.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPlatform.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
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
        setenv("TMPDIR", temporary.path().c_str(), 1);
        platform.disks.volumes = {card()};
        platform.scripts.script = [this](const std::string& command, bool) { return run(command); };
    }
    ~FormatWindow() override { unsetenv("TMPDIR"); }

    platform::VolumeDescription card() const { return TestDiskArbitration::card(root.path("card")); }
    void put(const std::string& name, const std::string& text) const { root.file("card/" + name, text); }
    std::string onCard(const std::string& name) const { return contents(root.path("card/" + name)); }
    /// The settings' copy that the one alert names.
    std::string copyNamed() const
    {
        const auto& shown = platform.alerts.shown;
        return shown.size() == 1 ? contents(shown[0].substr(shown[0].rfind('\n') + 1)) : "";
    }
    size_t copiesKept() const
    {
        return static_cast<size_t>(std::distance(fs::directory_iterator(temporary.path()), {}));
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
    void format()
    {
        platform.alerts.shown.clear();
        platform.scripts.commands.clear();
        loadVolumes();
        controller.onFormat();
        platform.dispatcher.runAll();
    }
    template <typename Widget> Widget& outlet(const char* name)
    {
        return *controller.window().findChild<Widget*>(name);
    }

    const std::string settings = std::string(271, 'x') + "y";
    TempFolder root;
    TempFolder temporary;
    TestPlatform platform;
    platform::ScriptResult formatAnswer;
    std::map<std::string, platform::ScriptResult> answers;
    std::map<std::string, std::function<void()>> events;
    ZVKFormatWindowController controller{platform.pieces};
};

} // namespace

TEST_F(FormatWindow, ShowsWhatWouldBeFormatted)
{
    const auto fields = [&] {
        return outlet<QLineEdit>("pathField").text().toStdString() + "|"
            + outlet<QLineEdit>("allocationUnitField").text().toStdString() + "|"
            + outlet<QLineEdit>("fileSystemField").text().toStdString();
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
    for (QShortcut* const shortcut : controller.window().findChildren<QShortcut*>()) {
        if (shortcut->key() == QKeySequence(Qt::Key_F5))
            emit shortcut->activated();
    }
    platform.dispatcher.runAll();
    EXPECT_FALSE(controller.selectedUSBDisk());
    EXPECT_EQ(fields(), "-|64KB|FAT32");

    controller.onFormat();
    platform.disks.volumes.clear();
    loadVolumes();
    controller.onFormat();
    platform.disks.volumes = {card()};
    platform.disks.volumes[0].writable = false;
    loadVolumes();
    controller.onFormat();
    EXPECT_THAT(platform.alerts.shown,
        ElementsAre("ZAVIK|Please select USB drive.", "ZAVIK|There is no USB drive.",
            "The card cannot be formatted|[1.9 GB] ZAVIK <Card Reader>\nThe card is write-protected or "
            "cannot be "
            "written to."));
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
    struct Row {
        platform::ScriptResult answer;
        std::string text;
    };
    for (const Row& row : {Row{{1, "x"}, "\nThe card is write-protected or cannot be written to."},
             Row{{-128, "The password entry was cancelled."}, "\nError:The password entry was cancelled."},
             Row{{25, "/x"}, "\nError:Another card is in the reader now. Choose the card again.\n/x"}}) {
        formatAnswer = row.answer;
        format();
        EXPECT_THAT(platform.alerts.shown,
            ElementsAre("The card cannot be formatted|[1.9 GB] ZAVIK <Card Reader>" + row.text));
        EXPECT_THAT(platform.scripts.commands, ElementsAre(unmountCommand, formatCommand, mountCommand));
        EXPECT_EQ(onCard("config.bin"), settings);
        EXPECT_EQ(copiesKept(), 0U);
        EXPECT_EQ(controller.selectedUSBDisk()->deviceFilePath, "sdb1");
    }
}

TEST_F(FormatWindow, NothingIsUnmountedForACardThatIsNotTheOneShownOrCannotBeSaved)
{
    const std::vector<std::function<void()>> changes = {
        [this] { platform.disks.volumes[0].mediaPath = "usb-2"; },
        [this] { platform.disks.volumes[0].size += 512; },
        [this] { platform.disks.volumes[0].writable = false; },
        [this] { platform.disks.volumes[0].mountPath = "/boot"; },
        [this] { platform.disks.volumes.clear(); },
        [this] {
            fs::remove(root.path("card/config.bin"));
            fs::create_directory(root.path("card/config.bin"));
        },
        [this] { setenv("TMPDIR", root.path("none").c_str(), 1); },
    };
    for (const auto& change : changes) {
        platform.disks.volumes = {card()};
        loadVolumes();
        platform.alerts.shown.clear();
        change();
        controller.onFormat();
        platform.dispatcher.runAll();
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
    events["diskutil umount"] = [this] { platform.disks.volumes.clear(); };
    events["diskutil mount"] = [this] { platform.disks.volumes = {card()}; };
    format();
    EXPECT_THAT(platform.scripts.commands, ElementsAre(unmountCommand, formatCommand, mountCommand));
}

TEST_F(FormatWindow, AnotherCardAfterTheFormatIsNotWrittenTo)
{
    const TempFolder other;
    const std::vector<std::function<void(platform::VolumeDescription&)>> changes = {
        [](platform::VolumeDescription& volume) { volume.deviceName = "sdc1"; },
        [](platform::VolumeDescription& volume) { volume.mediaPath = "usb-2"; },
        [](platform::VolumeDescription& volume) { volume.size *= 2; },
    };
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
    controller.onFormat();
    platform.dispatcher.runAll();
    EXPECT_EQ(contents(root.path("elsewhere/config.bin")), settings);
}

TEST_F(FormatWindow, CardThatIsPulledAtAnyStepIsToldAndKeepsNoOneWaiting)
{
    for (const std::string step : {"diskutil umount", "sudo", "diskutil mount"}) {
        SCOPED_TRACE(step);
        put("config.bin", settings);
        platform.disks.volumes = {card()};
        formatAnswer = {step == "diskutil mount" ? 0 : 8, ""};
        events.clear();
        events[step] = [this] {
            platform.disks.volumes.clear();
            fs::remove_all(root.path("card"));
        };
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

TEST_F(FormatWindow, NothingClosesOrQuitsWhileItFormats)
{
    loadVolumes();
    controller.showWindow();
    QWidget other;
    other.show();
    controller.onFormat();
    platform.dispatcher.runMain();
    EXPECT_FALSE(outlet<QPushButton>("formatButton").isEnabled());
    controller.cancel();
    EXPECT_FALSE(other.close());
    QEvent quit(QEvent::Quit);
    QApplication::sendEvent(qApp, &quit);
    EXPECT_FALSE(quit.isAccepted());
    EXPECT_TRUE(controller.window().isVisible());
    EXPECT_THAT(platform.alerts.shown,
        testing::Each("ZAVIK|The card is being formatted. Please wait until this is "
                      "finished; do not remove the card."));
    EXPECT_EQ(platform.alerts.shown.size(), 3U);
    platform.dispatcher.runAll();
    EXPECT_TRUE(other.close());
    EXPECT_FALSE(controller.window().isVisible());
}

TEST_F(FormatWindow, ControllerThatGoesAwayLeavesTheCardWhole)
{
    auto second = std::make_unique<ZVKFormatWindowController>(platform.pieces);
    second->window();
    platform.dispatcher.runAll();
    second->onFormat();
    second.reset();
    platform.dispatcher.runAll();
    platform.dispatcher.advance(std::chrono::seconds(2));
    EXPECT_EQ(onCard("config.bin"), settings);
    EXPECT_TRUE(fs::is_directory(root.path("card/MotionMovie")));
}
