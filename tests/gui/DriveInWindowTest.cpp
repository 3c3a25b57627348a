#include "lib/DriveStrip.h"
#include "media/ZVKMediaList.h"
#include "platform/Texts.h"
#include "tests/support/AppDelegateProbe.h"
#include "tests/support/RecordingFile.h"
#include "tests/support/TempFolder.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QScrollBar>

namespace {

/// The window with a drive of three takes, both cameras in the first two, and a drive after it.
class DriveInWindow : public AppTest {
protected:
    DriveInWindow()
    {
        for (const char* name : {"alwa_20240518_181200_F", "alwa_20240518_181200_R", "alwa_20240518_181300_F",
                 "alwa_20240518_181300_R", "event_20240518_181400", "alwa_20240518_200000_F"})
            folder.file(std::string(name) + ".avi",
                recordingFile(
                    60, std::string_view(name).starts_with("event") ? minuteWithImpact() : SideDataWriter()));
        app.open(folder.path());
        controller.clickDrivesViewButton();
        QCoreApplication::processEvents();
        app.desk.dispatcher.runAll();
    }
    void playDrive(int row)
    {
        chooseDrive(row);
        app.begin();
    }
    void chooseDrive(int row)
    {
        controller.clickDrivesViewButton();
        auto& list = app.find<QListView>("drivesListView");
        list.setFocus();
        list.setCurrentIndex(list.model()->index(row, 0));
        press(list, Qt::Key_Return);
    }
    void endFile()
    {
        app.player().reportEnd();
        app.desk.dispatcher.advance(std::chrono::milliseconds(2100));
        app.begin();
    }
    DriveStrip& strip() { return app.find<DriveStrip>("driveStrip"); }
};

TEST_F(DriveInWindow, PlaysOneCameraFromFileToFileAsTheUserSetIt)
{
    EXPECT_FALSE(strip().isVisible());
    playDrive(0);
    EXPECT_EQ(app.mediaIndex(), 0);
    EXPECT_TRUE(strip().isVisible());
    ASSERT_EQ(strip().segments().size(), 3u);
    EXPECT_EQ(strip().segments()[2].kind, DriveStrip::SegmentKind::event);
    EXPECT_EQ(strip().marks().size(), 1u);
    controller.increaseSpeed();
    app.window().enterFullscreen();
    endFile();
    EXPECT_EQ(app.mediaIndex(), 2) << "the next front recording, not the rear one of the same start";
    EXPECT_EQ(app.player().speed, 2);
    EXPECT_EQ(app.text("speedTextButton"), "2.0x");
    EXPECT_TRUE(app.window().isFullScreen());
    for (int i = 0; i < 3; ++i)
        app.player().reportTime(0.5F);
    EXPECT_DOUBLE_EQ(strip().position(), 0.5);
    EXPECT_DOUBLE_EQ(app.find<DriveStrip>("driveStripForFullScreen").position(), 0.5);
    EXPECT_TRUE(app.isShown("driveTimeFieldForFullScreen"));
    EXPECT_EQ(app.text("driveTimeFieldForFullScreen"), "01:30 / 03:00");
    endFile();
    EXPECT_EQ(app.mediaIndex(), 4);
    endFile();
    EXPECT_EQ(app.mediaIndex(), 4) << "the drive ends";
    app.start(5);
    EXPECT_FALSE(strip().isVisible());
    EXPECT_EQ(app.player().speed, 1) << "a file from the list begins as it always does";
}

TEST_F(DriveInWindow, GoesToAnyPlaceAcrossFiles)
{
    playDrive(0);
    QTest::mouseClick(&strip(), Qt::LeftButton, {}, {int(7 + (strip().width() - 14) * 0.75), 12});
    EXPECT_EQ(app.mediaIndex(), 4);
    app.begin();
    EXPECT_NEAR(std::stod(app.player().calls.back().substr(8)), 15000, 400) << app.player().calls.back();
    app.player().reportState(PlayerState::paused);
    const size_t played = app.player().countOf("pause");
    emit strip().moved(0.1);
    EXPECT_EQ(app.mediaIndex(), 0);
    app.begin();
    EXPECT_EQ(app.player().countOf("pause"), played + 1) << "it was paused";
    EXPECT_EQ(app.player().calls.back(), "setTime 18000");
    emit strip().moved(0.2);
    EXPECT_EQ(app.player().calls.back(), "setTime 36000") << "within the file at hand nothing starts anew";
    app.player().reportState(PlayerState::paused);
    for (const double hurried : {0.5, 0.9, 0.4})
        emit strip().moved(hurried);
    app.begin();
    EXPECT_EQ(app.mediaIndex(), 2);
    EXPECT_EQ(app.player().countOf("pause"), played + 2) << "however often the start is replaced";
    EXPECT_EQ(app.player().calls.back(), "setTime 12000");
    emit strip().moved(0);
    app.begin();
    app.player().reportState(PlayerState::paused);
    chooseDrive(0);
    EXPECT_EQ(app.player().calls.back(), "play") << "a drive that is chosen plays, wherever it rested";
    emit strip().moved(0.5);
    app.playback().folderMoved(folder.path(), "/elsewhere");
    app.begin();
    EXPECT_EQ(app.player().calls.back(), "setTime 30000") << "a start that waits goes on where its folder is";
}

TEST_F(DriveInWindow, JumpsTwoSecondsBeforeAMoment)
{
    playDrive(0);
    press(app.window(), Qt::Key_M);
    app.begin();
    EXPECT_EQ(app.mediaIndex(), 4);
    EXPECT_EQ(app.player().calls.back(), "setTime 28000");
    app.player().reportTime(0.5F);
    press(app.window(), Qt::Key_M);
    EXPECT_EQ(app.player().calls.back(), "setTime 28000") << "there is no further one";
    // A jump back that is repeated while the picture plays on goes further, here nowhere.
    const auto plays = [this](float seconds) {
        for (int i = 0; i < 3; ++i)
            app.player().reportTime(seconds / 60);
    };
    plays(29);
    press(app.window(), Qt::Key_M, "M", Qt::ShiftModifier);
    EXPECT_EQ(app.player().countOf("setTime 28000"), 1U);
    plays(30);
    press(app.window(), Qt::Key_M, "M", Qt::ShiftModifier);
    EXPECT_EQ(app.player().countOf("setTime 28000"), 2U);
    auto& table = app.find<QTableView>("momentsTableView");
    ASSERT_TRUE(table.isVisible());
    ASSERT_EQ(table.model()->rowCount(), 1);
    EXPECT_EQ(table.model()->index(0, 0).data().toString(), "18:14:30.0");
    press(app.window(), Qt::Key_PageUp);
    app.begin();
    EXPECT_EQ(app.mediaIndex(), 2);
    table.setFocus();
    table.selectRow(0);
    press(table, Qt::Key_Return);
    app.begin();
    EXPECT_EQ(app.mediaIndex(), 4);
    EXPECT_EQ(app.player().calls.back(), "setTime 28000");
}

TEST_F(DriveInWindow, AClickOnItsWayGoesThere)
{
    SideDataWriter way;
    for (int i = 0; i < 60; ++i) {
        way.gsensor(1716023520000 + i * 1000, 0, 0, 256);
        way.gps({1716023520000 + i * 1000, 1, 3730 + i * 0.01, 12700, 54, '9', ""});
    }
    folder.file("alwa_20240518_181300_F.avi", recordingFile(60, way));
    playDrive(0);
    app.desk.dispatcher.runAll();
    EXPECT_TRUE(
        app.desk.map.standing.starts_with("zavikDriveRoute([[1,127.000000,37.500000,127.000000,37.500167,"))
        << app.desk.map.standing;
    EXPECT_EQ(std::ranges::count(app.desk.map.scripts, "zavikDriveTake(0)"), 1);
    app.desk.map.page->said("route/0/30");
    EXPECT_EQ(app.mediaIndex(), 2);
    app.begin();
    EXPECT_EQ(app.player().calls.back(), "setTime 31000");
    const size_t calls = app.player().calls.size();
    for (const char* odd : {"route/1/0", "route/0/60", "route/0", "route/-1/0", "", "somewhere"})
        app.desk.map.page->said(odd);
    EXPECT_EQ(app.player().calls.size(), calls);
    chooseDrive(1);
    EXPECT_EQ(app.desk.map.standing, "zavikDriveRoute([])") << "the way before is no way of this drive";
    app.begin();
    playDrive(0);
    app.desk.dispatcher.runAll();
    app.start(2);
    EXPECT_FALSE(strip().isVisible()) << "chosen from the list, a file of the drive ends it";
    EXPECT_EQ(app.desk.map.standing, "zavikDriveRoute([])");
}

TEST_F(DriveInWindow, ItsWayLeavesOutAFileThatHangs)
{
    SideDataWriter way;
    for (int i = 0; i < 60; ++i)
        way.gps({1716023520000 + i * 1000, 1, 3730 + i * 0.01, 12700, 54, '9', ""});
    folder.file("alwa_20240518_181300_F.avi", recordingFile(60, way));
    controller.clickMediaListViewButton();
    app.open(folder.path());
    chooseDrive(0);
    // The first file hangs: while the figures are read, the way, and what the window shows of it.
    EXPECT_GE(app.desk.dispatcher.hangBackground(), 2U);
    for (int i = 0; i < 2; ++i) {
        app.desk.dispatcher.advance(std::chrono::seconds(11));
        app.desk.dispatcher.runAll();
    }
    EXPECT_TRUE(app.desk.map.standing.starts_with("zavikDriveRoute([[1,127.")) << app.desk.map.standing;
}

TEST_F(DriveInWindow, PlaysOnInTheDriveThatLengthsMakeOfIt)
{
    folder.file("alwa_20240518_170000_F.avi", recordingFile(60));
    folder.file("alwa_20240518_180000_F.avi", recordingFile(720));
    folder.file("event_20240518_181400.avi", recordingFile(90));
    folder.file("event_20240518_181610.avi", recordingFile(60, minuteWithImpact()));
    controller.openMediaDirectory(folder.path());
    const auto* drives = app.find<QListView>("drivesListView").model();
    do {
        app.desk.dispatcher.runOneBackground();
        app.desk.dispatcher.runMain();
    } while (drives->rowCount() == 0);
    app.desk.dispatcher.hangBackground(); // the length of the first drive
    playDrive(2);
    emit strip().moved(0.5);
    app.begin();
    EXPECT_EQ(app.mediaIndex(), 4);
    EXPECT_EQ(strip().segments().size(), 3u) << "a minute each";
    for (int i = 0; i < 3; ++i)
        app.player().reportTime(0.5F);
    app.desk.dispatcher.advance(std::chrono::seconds(11));
    app.desk.dispatcher.runAll();
    ASSERT_EQ(strip().segments().size(), 5u);
    EXPECT_NEAR(strip().segments()[4].start, 930.0 / 990, 1e-9);
    EXPECT_NEAR(strip().position(), 810.0 / 990, 1e-9) << "also before the player tells the next time";
    EXPECT_EQ(strip().marks().size(), 1u);
    endFile();
    EXPECT_EQ(app.mediaIndex(), 6);
    press(app.window(), Qt::Key_PageDown);
    EXPECT_EQ(app.mediaIndex(), 7);
}

TEST_F(DriveInWindow, EndsWithItsFolder)
{
    playDrive(0);
    app.open(folder.path());
    EXPECT_FALSE(strip().isVisible());
    playDrive(1);
    EXPECT_EQ(app.mediaIndex(), 5);
    EXPECT_TRUE(strip().isVisible());
    controller.openMediaDirectory("/nowhere");
    EXPECT_FALSE(strip().isVisible());
    EXPECT_EQ(app.find<QListView>("drivesListView").model()->rowCount(), 0);
}

TEST_F(DriveInWindow, TheFilterHidesRowsAndNextFollowsWhatIsSeen)
{
    const auto visible = [this] {
        std::string rows;
        for (int row = 0; row < app.table().model()->rowCount(); ++row)
            rows += app.table().isRowHidden(row) ? '-' : char('0' + row);
        return rows;
    };
    const auto choose = [this](const char* combo, const QString& text) {
        app.find<QComboBox>(combo).setCurrentText(text);
    };
    press(app.window(), Qt::Key_F, {}, Qt::ControlModifier);
    EXPECT_TRUE(app.isShown("filterBar"));
    EXPECT_TRUE(app.isShown("mediaListTableView"));
    choose("filterCamera", "Front");
    EXPECT_EQ(visible(), "0-2--5");
    EXPECT_EQ(app.text("filterState"), "3 recordings are hidden.");
    app.start(0);
    press(app.window(), Qt::Key_PageDown);
    app.begin();
    EXPECT_EQ(app.mediaIndex(), 2);
    endFile();
    EXPECT_EQ(app.mediaIndex(), 5);
    press(app.window(), Qt::Key_PageUp);
    EXPECT_EQ(app.mediaIndex(), 2);
    choose("filterCamera", "All cameras");
    app.find<QLineEdit>("filterText").setText("EVENT");
    EXPECT_EQ(visible(), "----4-");
    app.find<QLineEdit>("filterText").setText("_20000");
    EXPECT_EQ(visible(), "-----5");
    app.find<QLineEdit>("filterText").clear();
    choose("filterKind", "Event");
    EXPECT_EQ(visible(), "----4-");
    choose("filterKind", "All kinds");
    choose("filterDay", "2024-05-18");
    EXPECT_EQ(visible(), "012345");
    press(app.find<QLineEdit>("filterText"), Qt::Key_Escape);
    EXPECT_FALSE(app.isShown("filterBar"));
    EXPECT_EQ(app.find<QComboBox>("filterDay").currentIndex(), 0);
}

TEST_F(DriveInWindow, TheFilterFindsImpactsInRecordingsThatWereNotLookedAt)
{
    app.open(folder.path());
    app.desk.dispatcher.runAll();
    QContextMenuEvent click(QContextMenuEvent::Mouse, {9, 9}, {9, 9});
    QApplication::sendEvent(app.table().viewport(), &click);
    const auto* menu = app.window().findChild<QMenu*>();
    ASSERT_TRUE(menu);
    EXPECT_EQ(menu->actions().size(), 12);
    menu->actions().front()->trigger();
    app.find<QCheckBox>("filterImpact").setChecked(true);
    EXPECT_TRUE(app.text("filterState").contains("Still looking")) << app.text("filterState").toStdString();
    app.desk.dispatcher.runAll();
    app.desk.dispatcher.advance(std::chrono::milliseconds(300));
    EXPECT_EQ(app.text("filterState"), "5 recordings are hidden.");
    EXPECT_FALSE(app.table().isRowHidden(4));
    app.open(folder.path());
    app.desk.dispatcher.advance(std::chrono::milliseconds(300));
    EXPECT_EQ(app.text("filterState"), "5 recordings are hidden.") << "it holds for the next folder";
}

} // namespace
