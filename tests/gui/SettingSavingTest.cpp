#include "tests/support/SettingWindowFixture.h"

TEST_F(SettingWindow, ACardOfAnotherNameIsNamedUnlessItIsInUse)
{
    const std::string path = card.path("MUSIC");
    fs::create_directory(path);
    for (const std::string expected : {"in use", "busy", "named"}) {
        SCOPED_TRACE(expected);
        writeConfig(card, recordWith(5));
        fs::rename(card.path("config.bin"), path + "/config.bin");
        desk.disks.volumes = {TestDiskArbitration::card(path, "MUSIC")};
        desk.disks.nameFailure = expected == "busy" ? expected : "";
        receiver.busyPath = expected == "in use" ? path : "";
        log.lines.clear();
        open();
        EXPECT_EQ(script.shown, 5);
        EXPECT_THAT(
            log.lines, Contains(HasSubstr("cannot rename the card: busy")).Times(expected == "busy" ? 1 : 0));
        const bool isNamed = expected == "named";
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

TEST_F(SettingWindow, ChangesAreAskedForBeforeTheyAreDropped)
{
    enum { save, drop, stay };
    for (const int answer : {save, drop, stay}) {
        SCOPED_TRACE(answer);
        desk.disks.volumes.clear();
        openOwnCard();
        desk.alerts.answer = stay;
        window->filedata()->time_gmt = 7;
        script.shown = 7;
        window->window().close();
        EXPECT_TRUE(window->window().isVisible());
        desk.alerts.answer = size_t(answer);
        bool isLetGo = false;
        window->letGo([&] { isLetGo = true; });
        desk.dispatcher.runAll();
        EXPECT_EQ(isLetGo, answer != stay);
        EXPECT_EQ(zone(), answer == save ? 7 : 5);
    }
}
