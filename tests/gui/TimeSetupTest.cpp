#include "cardtools/clock/ZVKTimeSetupController.h"
#include "lib/ClockFace.h"
#include "platform/Texts.h"
#include "tests/support/GuiTesting.h"

namespace {

/// The window of a desktop whose clock the test sets; with a card.
struct TimeSetup : testing::Test {
    TimeSetup() { test.disks.volumes = {TestDiskArbitration::card(card.path())}; }
    template <typename Widget> Widget& outlet(const char* name)
    {
        return *controller.window().findChild<Widget*>(QLatin1String(name));
    }
    void settle()
    {
        test.dispatcher.runAll();
        test.dispatcher.advance(500ms);
    }
    void show()
    {
        controller.showWindow();
        settle();
    }
    void save()
    {
        outlet<QPushButton>("saveButton").click();
        settle();
    }
    bool isOpen() { return controller.window().isVisible(); }

    TempFolder card;
    TestPlatform test;
    QDateTime now{QDate(2016, 5, 3), QTime(14, 22, 1, 900)};
    ZVKTimeSetupController controller{test.pieces, "en", [this] { return now; }};
    QCalendarWidget& calendar() { return outlet<QCalendarWidget>("datePicker"); }
    QTimeEdit& entry() { return outlet<QTimeEdit>("timePicker"); }
    ClockFace& face() { return outlet<ClockFace>("clockTimePicker"); }
};

TEST_F(TimeSetup, SavesOnTheCardOverALongerFileAndCloses)
{
    card.file("timeset.cfg", std::string(300, 'x'));
    EXPECT_EQ(outlet<QLabel>("dateField").text(), "Tuesday, May 3, 2016");
    show();
    save();
    EXPECT_EQ(contents(card.path("timeset.cfg")), "2016/05/03 14:22:01");
    EXPECT_EQ(test.alerts.shown, std::vector<std::string>{"ZAVIK|저장되었습니다"});
    EXPECT_FALSE(isOpen());
    EXPECT_FALSE(test.panels.saveAnswer);
}

TEST_F(TimeSetup, AFailedWriteIsToldAndLeavesTheWindowOpen)
{
    const std::string diary = card.file("diary.txt", "secret");
    for (const bool isLink : {false, true}) {
        fs::remove(card.path("timeset.cfg"));
        if (isLink)
            fs::create_symlink(diary, card.path("timeset.cfg"));
        else
            fs::create_directory(card.path("timeset.cfg"));
        show();
        save();
        EXPECT_EQ(test.alerts.shown.back(),
            "ZAVIK|timeset.cfg is a link or no file. It was left alone and nothing was saved.");
        EXPECT_TRUE(isOpen());
    }
    EXPECT_EQ(contents(diary), "secret");
}

TEST_F(TimeSetup, AnotherCardInTheSamePlaceIsNotWritten)
{
    card.file("timeset.cfg", "");
    show();
    test.disks.volumes[0].mediaPath = "usb-2";
    save();
    EXPECT_EQ(contents(card.path("timeset.cfg")), "");
    EXPECT_NE(test.alerts.shown.back().find("not there any more"), std::string::npos);
}

TEST_F(TimeSetup, ACardThatHangsHoldsUpNothingAndIsTold)
{
    card.file("timeset.cfg", "");
    controller.showWindow();
    EXPECT_FALSE(outlet<QPushButton>("saveButton").isEnabled());
    test.dispatcher.advance(15s);
    EXPECT_EQ(test.alerts.shown.size(), 1u);
    settle();
    EXPECT_TRUE(outlet<QPushButton>("saveButton").isEnabled());
    outlet<QPushButton>("saveButton").click();
    bool isLetGo = false;
    controller.letGo([&] { isLetGo = true; });
    EXPECT_FALSE(isLetGo) << "before the outcome is told";
    settle();
    EXPECT_TRUE(isLetGo);
}

TEST_F(TimeSetup, WithoutAClockFileTheUserChoosesThePlace)
{
    show();
    save();
    EXPECT_EQ(test.panels.save.name + "." + test.panels.save.type, "timeset.cfg");
    test.panels.saveAnswer(std::nullopt);
    EXPECT_TRUE(isOpen());
    EXPECT_TRUE(test.alerts.shown.empty());
    EXPECT_FALSE(fs::exists(card.path("timeset.cfg")));
    test.panels.saveAnswer(card.path("other.cfg"));
    settle();
    EXPECT_EQ(contents(card.path("other.cfg")), "2016/05/03 14:22:01");
    EXPECT_FALSE(isOpen());
}

TEST_F(TimeSetup, SavesWhatIsSetWithTheCalendarTheEntryAndTheFace)
{
    card.file("timeset.cfg", "");
    show();
    calendar().setSelectedDate({2020, 2, 29});
    entry().setTime({0, 0, 5});
    press(face(), Qt::Key_Left); // the minute before midnight
    EXPECT_EQ(entry().time(), QTime(23, 59, 5));
    save();
    EXPECT_EQ(contents(card.path("timeset.cfg")), "2020/02/29 23:59:05");
}

} // namespace
