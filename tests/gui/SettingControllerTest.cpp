#include "lib/PMProgressIndicatorController.h"
#include "tests/support/SettingWindowFixture.h"

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
    const auto& icon = PMProgressIndicatorController::sharedInstance();
    EXPECT_EQ(icon.numProgressIndicators(), 0u) << "its bar goes, too";
    EXPECT_FALSE(isSheetUp());
    EXPECT_TRUE(button("saveButton").isEnabled());
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
    window->showLoading("Loading...");
    desk.dispatcher.advance(14'999ms);
    EXPECT_TRUE(isSheetUp());
    desk.dispatcher.advance(1ms);
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

TEST_F(SettingWindow, KeepsThePageWithInvalidInput)
{
    openOwnCard();
    const auto& tabs = *window->window().findChild<SegmentedControl*>("functionSegmentedControl");
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
