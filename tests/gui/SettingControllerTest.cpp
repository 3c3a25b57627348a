#include "platform/SegmentedControl.h"
#include "platform/Texts.h"
#include "settings/ZVKSettingController.h"
#include "tests/support/GuiTesting.h"
#include "tests/support/RecordBytes.h"
#include "tests/support/ScriptedPage.h"

namespace {

using ::testing::Contains;

struct UnitReceiver final : viewControllerForZVKSettingDelegate {
    std::vector<uint32_t> units;
    std::string busyPath;
    void setDisplayMile(uint32_t value) override { units.push_back(value); }
    bool isInUse(const std::string& mountPath) const override { return mountPath == busyPath; }
    std::vector<std::string> letGo;
    void letGoOf(const std::string& mountPath) override { letGo.push_back(mountPath); }
};

_FILEDATA recordWith(int32_t zone)
{
    _FILEDATA record;
    initFileDataForRegion(record, false);
    record.time_gmt = zone;
    record.speed_disp_unit = 1;
    return record;
}

/// The window on a test desktop with a card folder and three pages, of which the last is kept.
class SettingWindow : public ::testing::Test {
protected:
    SettingWindow()
    {
        platform::setTextLanguage("en");
        QCoreApplication::setApplicationVersion("1.2");
    }

    void insertCard(const TempFolder& folder, const std::string& label = "ZAVIK")
    {
        desk.disks.volumes.push_back(TestDiskArbitration::card(folder.path(), label));
    }
    static void writeConfig(const TempFolder& folder, const _FILEDATA& record)
    {
        folder.file("config.bin", bytesOf(record));
    }
    static int32_t zoneIn(const std::string& path)
    {
        _FILEDATA record{};
        return loadFileData(path, record) ? record.time_gmt : -1;
    }
    void show()
    {
        const auto page = [this](std::string name) {
            return [this, name](
                       const SettingPageContext&) { return std::make_unique<ScriptedPage>(script, name); };
        };
        window = std::make_unique<ZVKSettingController>(desk.pieces, language,
            SettingTabs{{"setting.video", "setting.video", page("a")},
                {"setting.gps", "setting.gps", page("b")},
                {"setting.driveinfoview", "setting.information", page("kept"), true}});
        window->setDelegate(&receiver);
        window->showWindow();
    }
    void settle()
    {
        desk.dispatcher.runAll();
        desk.dispatcher.advance(500ms);
    }
    void open()
    {
        show();
        settle();
    }
    /// A card whose record has the zone 5.
    void insertOwnCard()
    {
        writeConfig(card, recordWith(5));
        insertCard(card);
    }
    void openOwnCard()
    {
        insertOwnCard();
        open();
    }
    void tellOfMounts()
    {
        desk.disks.tellOfMounts();
        desk.dispatcher.runAll();
    }
    /// What the user sets on the page, then Save.
    void save(int32_t zone)
    {
        script.input = zone;
        window->onSave();
        settle();
    }
    std::string notice() { return window->window().findChild<QLabel*>("noticeLabel")->text().toStdString(); }
    std::string title() { return window->window().windowTitle().toStdString(); }
    int32_t zone() { return zoneIn(card.path("config.bin")); }
    QPushButton& button(const char* name) { return *window->window().findChild<QPushButton*>(name); }
    bool isSheetUp() { return !window->window().findChild<QWidget*>("contentBox")->isEnabled(); }
    std::vector<std::string>& alerts() { return desk.alerts.shown; }

    TestPlatform desk;
    std::string language = "en";
    TempFolder card;
    PageScript script;
    UnitReceiver receiver;
    std::unique_ptr<ZVKSettingController> window;
    CollectedLog log;
};

TEST_F(SettingWindow, ShowsTheFilesValuesWhenTheReadIsDoneAndNotBefore)
{
    insertOwnCard();
    show();
    EXPECT_EQ(script.shown, 28);
    EXPECT_EQ(title(), "Camera Settings[Ver 1.2]");
    window->onSave();
    window->changeViewController(1);
    EXPECT_THAT(script.calls, ElementsAre("make a"));
    EXPECT_THAT(alerts(), IsEmpty());

    desk.dispatcher.runAll();
    EXPECT_EQ(script.shown, 5);
    EXPECT_EQ(title(), "Camera Settings[Ver 1.2] : " + card.path("config.bin"));
    EXPECT_TRUE(isSheetUp());
    desk.dispatcher.advance(499ms);
    EXPECT_TRUE(isSheetUp());
    desk.dispatcher.advance(1ms);
    EXPECT_FALSE(isSheetUp());
    EXPECT_TRUE(button("saveButton").isEnabled());
}

TEST_F(SettingWindow, LoadingSheetGoesByItselfAfterFifteenSeconds)
{
    open();
    window->showLoading("Loading...");
    window->showLoading("Loading...");
    desk.dispatcher.advance(14'999ms);
    EXPECT_TRUE(isSheetUp());
    desk.dispatcher.advance(1ms);
    EXPECT_FALSE(isSheetUp());
}

TEST_F(SettingWindow, AReadThatEndsAfterTheWindowIsDropped)
{
    insertOwnCard();
    for (const int steps : {0, 1, 2}) {
        SCOPED_TRACE(steps);
        show();
        for (int i = 0; i < steps; ++i) {
            desk.dispatcher.runOneBackground();
            if (i + 1 < steps)
                desk.dispatcher.runMain();
        }
        window.reset();
        desk.dispatcher.runAll();
        desk.dispatcher.advance(1s);
    }
    EXPECT_THAT(alerts(), IsEmpty());
}

TEST_F(SettingWindow, ACardPulledDuringTheReadIsTold)
{
    insertOwnCard();
    show();
    desk.dispatcher.runOneBackground();
    fs::remove(card.path("config.bin"));
    desk.dispatcher.runAll();
    EXPECT_EQ(script.shown, 28);
    EXPECT_THAT(alerts(), ElementsAre(HasSubstr("could not be read")));
    EXPECT_THAT(notice(), HasSubstr("could not be read: these are the defaults"));
}

TEST_F(SettingWindow, AFileOfAnotherSizeIsIgnored)
{
    for (const size_t size : {size_t(0), sizeof(_FILEDATA) - 1, sizeof(_FILEDATA) + 1}) {
        SCOPED_TRACE(size);
        card.file("config.bin", std::vector<std::byte>(size));
        desk.disks.volumes.clear();
        insertCard(card);
        open();
        EXPECT_EQ(script.shown, 28);
        EXPECT_EQ(title(), "Camera Settings[Ver 1.2]");
    }
}

TEST_F(SettingWindow, ACardOfAnotherNameIsNamedUnlessItIsInUse)
{
    const std::string path = card.path("MUSIC");
    fs::create_directory(path);
    for (const char* const expected : {"in use", "busy", "named"}) {
        SCOPED_TRACE(expected);
        writeConfig(card, recordWith(5));
        fs::rename(card.path("config.bin"), path + "/config.bin");
        desk.disks.volumes = {TestDiskArbitration::card(path, "MUSIC")};
        desk.disks.nameFailure = expected == std::string("busy") ? expected : "";
        receiver.busyPath = expected == std::string("in use") ? path : "";
        log.lines.clear();
        open();
        EXPECT_EQ(script.shown, 5);
        EXPECT_THAT(
            log.lines, Contains(HasSubstr("error=busy")).Times(expected == std::string("busy") ? 1 : 0));
        const bool isNamed = expected == std::string("named");
        EXPECT_EQ(desk.disks.volumes[0].label, isNamed ? "ZAVIK" : "MUSIC");
        save(7);
        EXPECT_EQ(zoneIn((isNamed ? card.path("ZAVIK") : path) + "/config.bin"), 7);
    }
}

TEST_F(SettingWindow, SavesToItsCardWhereThatIsMountedNow)
{
    const TempFolder other;
    for (const bool isTold : {true, false}) {
        SCOPED_TRACE(isTold);
        fs::create_directories(card.path("old"));
        writeConfig(card, recordWith(5));
        fs::rename(card.path("config.bin"), card.path("old/config.bin"));
        writeConfig(other, recordWith(9));
        desk.disks.volumes = {TestDiskArbitration::card(card.path("old"))};
        open();
        insertCard(other);
        std::swap(desk.disks.volumes[0], desk.disks.volumes[1]);
        desk.disks.volumes[0].mediaPath = "usb-2";
        desk.disks.move(desk.disks.volumes[1], card.path("new"));
        if (isTold) {
            desk.dispatcher.runAll();
            EXPECT_THAT(title(), HasSubstr(card.path("new/config.bin")));
        }
        save(7);
        EXPECT_EQ(zoneIn(card.path("new/config.bin")), 7);
        EXPECT_EQ(zoneIn(other.path("config.bin")), 9);
        EXPECT_EQ(zoneIn(card.path("new/config.bin.bak")), 5) << "the record before";
        window.reset();
        fs::remove_all(card.path("new"));
    }
}

TEST_F(SettingWindow, SavesToTheCard)
{
    // What happens before and after the opening, what is told behind "|" (the others tell that nothing was
    // written), what is kept in config.bin.bak, and the answer to the question about others' settings.
    using Step = std::function<void()>;
    using Row = std::tuple<const char*, Step, Step, std::string, std::string, std::optional<size_t>>;
    const auto nothing = [] {};
    const auto known = [&] { writeConfig(card, recordWith(5)); };
    const auto others = [&] { writeConfig(card, recordWith(9)); };
    const auto linked = [&] {
        fs::rename(card.path("config.bin"), card.path("key"));
        fs::create_symlink("key", card.path("config.bin"));
    };
    const std::string before = bytesOf(recordWith(5));
    const Row rows[] = {
        {"back to the file that was read", known, nothing, "Saved.", before, {}},
        {"a card without the file", nothing, nothing, "Saved.", {}, {}},
        {"a card that appears while the window is open", [&] { desk.disks.volumes.clear(); },
            [&] { insertCard(card), others(); }, "Saved.", bytesOf(recordWith(9)), 0},
        {"changed by another program", known, others, "Saved.", bytesOf(recordWith(9)), 0},
        {"changed by another program, and shown", known, others, {}, {}, 1},
        {"changed by another program, and given up", known, others, {}, {}, 2},
        {"no place for one more copy", known,
            [&] {
                fs::resize_file(card.path("config.bin"), 100);
                for (int number = 1; number < 100; ++number)
                    card.file("config.bin.bak" + (number > 1 ? std::to_string(number) : ""), "mine");
            },
            {}, "mine", {}},
        {"cut by another program", known, [&] { fs::resize_file(card.path("config.bin"), 100); },
            "Saved. The file held something else; it was kept beside it as config.bin.bak.",
            before.substr(0, 100), {}},
        {"removed meanwhile", known, [&] { fs::remove(card.path("config.bin")); }, "Saved.", {}, {}},
        {"a link to a file of the user's", [&] { known(), linked(); }, nothing, {}, {}, {}},
        {"a link that comes later", known, linked, {}, {}, {}},
        {"a link in the copy's place", known,
            [&] {
                fs::create_symlink(
                    fs::path(card.file("key", "secret")).filename(), card.path("config.bin.bak"));
            },
            "Saved.", "secret", {}},
        {"a folder of that name", [&] { fs::create_directory(card.path("config.bin")); }, nothing, {}, {},
            {}},
        {"the card is pulled", known, [&] { fs::remove_all(card.path()); }, {}, {}, {}},
    };
    for (const auto& [name, beforeOpening, whileOpen, told, keptBytes, answer] : rows) {
        SCOPED_TRACE(name);
        fs::remove_all(card.path());
        fs::create_directory(card.path());
        desk.disks.volumes.clear();
        alerts().clear();
        receiver.units.clear();
        insertCard(card);
        beforeOpening();
        open();
        whileOpen();
        window->filedata()->speed_disp_unit = 1;
        desk.alerts.answer = answer;
        const std::string key = contents(card.path("key"));
        save(7);
        EXPECT_EQ(contents(card.path("key")), key);
        EXPECT_EQ(alerts().size(), answer == 0u ? 2u : 1u);
        EXPECT_EQ(contents(card.path("config.bin.bak")), keptBytes);
        EXPECT_EQ(window->window().isVisible(), told.empty());
        EXPECT_EQ(script.shown == 9, answer == 1u);
        EXPECT_NE(contents(card.path("config.bin.bak99")), before.substr(0, 100));
        if (told.empty()) {
            EXPECT_NE(zone(), 7);
            EXPECT_THAT(receiver.units, IsEmpty());
            continue;
        }
        EXPECT_EQ(zone(), 7);
        EXPECT_EQ(alerts().back(), card.path("config.bin") + "|" + told);
        EXPECT_THAT(receiver.units, ElementsAre(1));
    }
}

TEST_F(SettingWindow, SaysWhichCardIsEditedAndOffersOneThatComesLater)
{
    open();
    EXPECT_EQ(notice(), "No camera card found: these are the defaults of a new camera");
    writeConfig(card, recordWith(5));
    insertCard(card);
    tellOfMounts();
    EXPECT_THAT(notice(), HasSubstr("A camera card was found: [1.9 GB] ZAVIK"));
    EXPECT_EQ(script.shown, 28);
    button("noticeButton").click();
    desk.dispatcher.runAll();
    EXPECT_EQ(script.shown, 5);
    EXPECT_THAT(notice(), HasSubstr("Camera card: [1.9 GB] ZAVIK"));
    desk.disks.volumes.clear();
    tellOfMounts();
    EXPECT_THAT(notice(), HasSubstr("is not there any more"));

    // Another card is written only when the user says so.
    fs::remove(card.path("config.bin"));
    const TempFolder other;
    insertCard(other);
    desk.disks.volumes[0].mediaPath = "usb-2";
    desk.alerts.answer = 1;
    save(7);
    EXPECT_FALSE(fs::exists(other.path("config.bin")));
    desk.alerts.answer = 0;
    save(7);
    EXPECT_EQ(zoneIn(other.path("config.bin")), 7);
}

TEST_F(SettingWindow, ACardThatHangsIsToldAndItsAnswerIsShownAllTheSame)
{
    insertOwnCard();
    show();
    desk.dispatcher.advance(15s);
    EXPECT_THAT(alerts(), ElementsAre(HasSubstr("does not answer")));
    EXPECT_FALSE(isSheetUp());
    EXPECT_FALSE(button("saveButton").isEnabled());
    desk.dispatcher.runAll();
    EXPECT_EQ(script.shown, 5);

    script.input = 7;
    window->onSave();
    EXPECT_TRUE(isSheetUp());
    window->onCloseCmd();
    EXPECT_TRUE(window->window().isVisible()) << "it is being saved";
    desk.dispatcher.advance(15s);
    EXPECT_THAT(alerts().back(), HasSubstr("not known whether"));
    EXPECT_EQ(zone(), 5);
    bool isLetGo = false;
    window->letGo([&] { isLetGo = true; });
    EXPECT_FALSE(isLetGo) << "before the outcome is told";
    desk.dispatcher.runAll();
    EXPECT_TRUE(isLetGo);
    EXPECT_EQ(zone(), 7);
    EXPECT_THAT(alerts().back(), HasSubstr("|Saved."));
}

TEST_F(SettingWindow, ChangesAreAskedForBeforeTheyAreDropped)
{
    enum { Save, Drop, Stay };
    for (const int answer : {Save, Drop, Stay}) {
        SCOPED_TRACE(answer);
        desk.disks.volumes.clear();
        openOwnCard();
        desk.alerts.answer = Stay;
        window->filedata()->time_gmt = 7;
        script.shown = 7;
        window->window().close();
        EXPECT_TRUE(window->window().isVisible());
        desk.alerts.answer = size_t(answer);
        bool isLetGo = false;
        window->letGo([&] { isLetGo = true; });
        desk.dispatcher.runAll();
        EXPECT_EQ(isLetGo, answer != Stay);
        EXPECT_EQ(zone(), answer == Save ? 7 : 5);
    }
}

TEST_F(SettingWindow, AnotherCardInTheSamePlaceIsAskedFor)
{
    openOwnCard();
    desk.disks.volumes[0].mediaPath = "usb-2";
    desk.alerts.answer = 1;
    save(7);
    EXPECT_THAT(alerts(), ElementsAre(HasSubstr("is not there any more|Save them to this card")));
    EXPECT_EQ(zone(), 5);
}

TEST_F(SettingWindow, OfTwoCardsTheOneThatWasReadIsWritten)
{
    const TempFolder other;
    writeConfig(other, recordWith(9));
    insertCard(other, "MUSIC");
    openOwnCard();
    EXPECT_EQ(script.shown, 5);
    desk.disks.volumes[0].label = "ZAVIK"; // now the preferred one
    save(7);
    EXPECT_EQ(zone(), 7);
    EXPECT_EQ(zoneIn(other.path("config.bin")), 9);
}

TEST_F(SettingWindow, WithoutACardTheUserSaysWhere)
{
    const std::string chosen = card.path("mine.bin");
    for (const auto& [answer, expected] :
        {std::pair(std::optional<std::string>(), std::vector<std::string>{}),
            {std::optional(card.path("no/such/folder")),
                {"Warn|The place to save to is not there any more. Was the card pulled? Nothing was saved."}},
            {std::optional(chosen), {chosen + "|Saved."}}}) {
        open();
        save(7);
        const platform::SavePanel& panel = desk.panels.save;
        EXPECT_EQ(panel.title, "Save Settings");
        EXPECT_EQ(panel.name, "config.bin");
        EXPECT_FALSE(panel.folder) << "where the user's things are";
        EXPECT_TRUE(panel.hidesHiddenFiles && panel.asksBeforeReplacing);
        desk.panels.saveAnswer(answer);
        desk.dispatcher.runAll();
        EXPECT_EQ(alerts(), expected);
        EXPECT_EQ(window->window().isVisible(), expected != std::vector{chosen + "|Saved."});
        alerts().clear();
    }
    EXPECT_EQ(zoneIn(chosen), 7);
    EXPECT_THAT(log.lines, Contains(HasSubstr("no removable devices")));
}

TEST_F(SettingWindow, KeepsThePageWithInvalidInput)
{
    openOwnCard();
    const auto& tabs = *window->window().findChild<platform::SegmentedControl*>("functionSegmentedControl");
    script.complaint = "Out of range.";
    window->changeViewController(1);
    EXPECT_EQ(tabs.selectedSegment(), 0);
    save(7);
    EXPECT_THAT(alerts(), ElementsAre("ZAVIK|Out of range.", "ZAVIK|Out of range."));
    EXPECT_THAT(script.calls, ElementsAre("make a"));
    EXPECT_EQ(zone(), 5);

    script.complaint.reset();
    window->changeViewController(1);
    EXPECT_EQ(tabs.selectedSegment(), 1);
    EXPECT_EQ(script.shown, 7); // what was set on the page before
    for (const int tab : {2, 0, 2})
        window->changeViewController(tab);
    EXPECT_THAT(script.calls,
        ElementsAre("make a", "hide a", "make b", "hide b", "make kept", "hide kept", "make a", "hide a"));
}

TEST_F(SettingWindow, DefaultsAreShownButNotWrittenUntilSaved)
{
    openOwnCard();
    window->onSaveDefaultSetting();
    EXPECT_EQ(script.shown, 28);
    EXPECT_EQ(window->filedata()->vid_enc_bitrate, 9000u);
    EXPECT_THAT(notice(), HasSubstr("Every page shows the defaults"));
    button("noticeButton").click();
    EXPECT_EQ(script.shown, 5);
    EXPECT_EQ(bytesOf(*window->filedata()), bytesOf(recordWith(5)));
    window->onSaveDefaultSetting();
    desk.alerts.answer = 1; // not saved
    window->onCloseCmd();
    desk.dispatcher.runAll();
    EXPECT_FALSE(window->window().isVisible());
    EXPECT_EQ(contents(card.path("config.bin")), bytesOf(recordWith(5)));

    language = "ko";
    open();
    window->onSaveDefaultSetting();
    EXPECT_EQ(window->filedata()->vid_enc_bitrate, 8000u);

    // The record before a save can be brought back.
    open();
    EXPECT_FALSE(button("previousButton").isVisible());
    save(7);
    open();
    button("previousButton").click();
    EXPECT_EQ(bytesOf(*window->filedata()), bytesOf(recordWith(5)));
}

TEST_F(SettingWindow, NothingIsSavedToAnotherCardWhileTheOwnOneIsFormatted)
{
    const TempFolder other;
    openOwnCard();
    insertCard(other);
    window->onFormat();
    desk.dispatcher.runAll();
    for (QWidget* const top : QApplication::topLevelWidgets()) {
        if (auto* const press = top->findChild<QPushButton*>("formatButton"))
            press->click();
    }
    ASSERT_TRUE(window->isFormatting());
    fs::remove(card.path("config.bin"));
    alerts().clear();
    window->onSave();
    EXPECT_FALSE(isSheetUp()) << "it is not even begun";
    desk.dispatcher.runAll();
    EXPECT_FALSE(fs::exists(other.path("config.bin")));
    desk.dispatcher.runAll();
    EXPECT_FALSE(window->isFormatting());
}

TEST_F(SettingWindow, LetsGoOfTheCardThatIsFormattedAndGoesAlong)
{
    const TempFolder moved;
    openOwnCard();
    window->changeViewController(2);
    script.card = card.path();
    window->letGoOf("/another");
    EXPECT_EQ(script.calls.back(), "make kept");
    window->letGoOf(card.path());
    EXPECT_THAT(script.calls, ElementsAre("make a", "hide a", "make kept", "hide kept", "make kept"));
    EXPECT_THAT(receiver.letGo, ElementsAre("/another", card.path()));

    // As formatting does it: another place, the same settings.
    writeConfig(moved, recordWith(5));
    desk.disks.volumes[0].mountPath = moved.path();
    window->cardFormatted(card.path(), moved.path());
    EXPECT_THAT(title(), HasSubstr(moved.path("config.bin")));
    save(7);
    EXPECT_EQ(zoneIn(moved.path("config.bin")), 7);
    EXPECT_EQ(zone(), 5);
}

TEST_F(SettingWindow, TellsWhenThereIsNoDiskUtility)
{
    open();
    window->onDiskUtil();
    EXPECT_THAT(alerts(), IsEmpty());
    desk.scripts.canLaunch = false;
    window->onDiskUtil();
    EXPECT_THAT(alerts(), ElementsAre(HasSubstr("ZAVIK|No disk utility")));
}

} // namespace
