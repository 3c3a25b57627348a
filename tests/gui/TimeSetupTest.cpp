#include "cardtools/ZVKTimeSetupController.h"
#include "platform/ClockFace.h"
#include "platform/Texts.h"
#include "tests/support/KeyPress.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestPlatform.h"

#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimeEdit>
#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

/// The window of a desktop whose clock the test sets; with a card.
struct TimeSetup : testing::Test {
    TimeSetup() { test.disks.volumes = {TestDiskArbitration::card(card.path())}; }
    template <typename Widget> Widget& outlet(const char* name)
    {
        return *controller.window().findChild<Widget*>(QLatin1String(name));
    }
    void save()
    {
        controller.showWindow();
        outlet<QPushButton>("saveButton").click();
    }
    bool isOpen() { return controller.window().isVisible(); }

    TempFolder card;
    TestPlatform test;
    QDateTime now{QDate(2016, 5, 3), QTime(14, 22, 1, 900)};
    ZVKTimeSetupController controller{test.pieces, "en", [this] { return now; }};
    QCalendarWidget& calendar() { return outlet<QCalendarWidget>("datePicker"); }
    QTimeEdit& entry() { return outlet<QTimeEdit>("timePicker"); }
    platform::ClockFace& face() { return outlet<platform::ClockFace>("clockTimePicker"); }
};

/// Places are counted from the middle, in half widths.
void drag(platform::ClockFace& face, QPointF from, QPointF to)
{
    const auto send = [&](QEvent::Type type, QPointF place) {
        const QPointF at = QRectF(face.rect()).center() + place * (face.width() / 2.0);
        QMouseEvent event(type, at, face.mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(&face, &event);
    };
    send(QEvent::MouseButtonPress, from);
    send(QEvent::MouseMove, to);
    send(QEvent::MouseButtonRelease, to);
}

TEST_F(TimeSetup, SavesOnTheCardOverALongerFileAndCloses)
{
    card.file("timeset.cfg", std::string(300, 'x'));
    EXPECT_EQ(outlet<QLabel>("dateField").text(), "Tuesday, May 3, 2016");
    save();
    EXPECT_EQ(contents(card.path("timeset.cfg")), "2016/05/03 14:22:01");
    EXPECT_EQ(test.alerts.shown, std::vector<std::string>{"ZAVIK|저장되었습니다"});
    EXPECT_FALSE(isOpen());
    EXPECT_FALSE(test.panels.saveAnswer);
}

TEST_F(TimeSetup, AFailedWriteIsToldAndLeavesTheWindowOpen)
{
    std::filesystem::create_directory(card.path("timeset.cfg"));
    save();
    EXPECT_EQ(
        test.alerts.shown, std::vector{"ZAVIK|" + platform::localized("msg.write_failed").toStdString()});
    EXPECT_TRUE(isOpen());
}

TEST_F(TimeSetup, WithoutAClockFileTheUserChoosesThePlace)
{
    save();
    EXPECT_EQ(test.panels.save.name + "." + test.panels.save.type, "timeset.cfg");
    test.panels.saveAnswer(std::nullopt);
    EXPECT_TRUE(isOpen());
    EXPECT_TRUE(test.alerts.shown.empty());
    EXPECT_FALSE(std::filesystem::exists(card.path("timeset.cfg")));
    test.panels.saveAnswer(card.path("other.cfg"));
    EXPECT_EQ(contents(card.path("other.cfg")), "2016/05/03 14:22:01");
    EXPECT_FALSE(isOpen());
}

TEST_F(TimeSetup, EntryAndClockFaceFollowEachOther)
{
    controller.showWindow();
    entry().setTime({9, 15, 30});
    EXPECT_EQ(face().time(), QTime(9, 15, 30));
    // The minute hand from a quarter past to half past, then on over the twelve: the hour goes along.
    drag(face(), {0.8, 0}, {0, 0.8});
    EXPECT_EQ(entry().time(), QTime(9, 30, 30));
    drag(face(), {0, 0.8}, {-0.8, 0.01});
    drag(face(), {-0.8, 0}, {0.01, -0.8});
    EXPECT_EQ(entry().time(), QTime(10, 0, 30));
    // The hour hand over the twelve: the afternoon begins.
    drag(face(), {-0.2, -0.346}, {0.2, -0.346});
    EXPECT_EQ(entry().time(), QTime(13, 0, 30));
    press(face(), Qt::Key_Down);
    press(face(), Qt::Key_PageUp);
    EXPECT_EQ(entry().time(), QTime(13, 59, 30));
    entry().setTime({0, 0, 5});
    press(face(), Qt::Key_Left);
    EXPECT_EQ(entry().time(), QTime(23, 59, 5));
    save();
    test.panels.saveAnswer(card.path("timeset.cfg"));
    EXPECT_EQ(contents(card.path("timeset.cfg")), "2016/05/03 23:59:05");
}

TEST_F(TimeSetup, TodayChangesTheDateOnlyAndReleasesItself)
{
    controller.showWindow();
    auto& today = outlet<QCheckBox>("nowDaySettingChk");
    EXPECT_EQ(today.text(), "Today(May 3, 2016)");
    calendar().setSelectedDate({2020, 2, 29});
    EXPECT_EQ(outlet<QLabel>("dateField").text(), "Saturday, February 29, 2020");
    entry().setTime({1, 2, 3});
    now = QDateTime(QDate(2016, 5, 4), QTime(0, 0));
    today.click();
    EXPECT_EQ(calendar().selectedDate(), QDate(2016, 5, 4));
    EXPECT_EQ(today.text(), "Today(May 4, 2016)");
    EXPECT_EQ(entry().time(), QTime(1, 2, 3));
    test.dispatcher.advance(199ms);
    EXPECT_TRUE(today.isChecked());
    test.dispatcher.advance(1ms);
    EXPECT_FALSE(today.isChecked());
}

} // namespace
