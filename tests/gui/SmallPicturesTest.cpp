#include "app/drives/DriveListModel.h"
#include "lib/DriveStrip.h"
#include "lib/PreviewTip.h"
#include "tests/support/AppDelegateProbe.h"
#include "tests/support/RecordingFile.h"

namespace {

using Calls = std::vector<std::string>;

TEST(PreviewTip, StandsAboveItsPlaceWithinTheWindow)
{
    const QSize tip(200, 130);
    const QRect window(0, 0, 1000, 600);
    const struct {
        int x;
        QRect part;
        QPoint corner;
    } places[] = {
        {500, {10, 500, 600, 72}, {400, 364}}, {3, {10, 500, 600, 72}, {6, 364}}, // at the left edge
        {999, {10, 500, 600, 72}, {794, 364}}, // at the right one
        {500, {0, 20, 1000, 72}, {400, 98}}, // no room above
        {500, {0, 20, 1000, 560}, {400, 464}}, // nor below
    };
    for (const auto& [x, part, corner] : places)
        EXPECT_EQ(PreviewTip::placed(tip, x, part, window), QRect(corner, tip)) << x << " " << part.top();
    EXPECT_EQ(PreviewTip::placed(tip, 50, {0, 60, 100, 20}, {0, 0, 100, 80}).topLeft(), QPoint(6, 6))
        << "a window that is too small";
}

/// The window with a drive of two takes and a recording alone.
class SmallPictures : public AppTest {
protected:
    SmallPictures()
    {
        for (const char* name : {"alwa_20240518_181200_F", "event_20240518_181300", "alwa_20240518_200000_F"})
            folder.file(std::string(name) + ".avi",
                recordingFile(
                    60, std::string_view(name).starts_with("event") ? minuteWithImpact() : SideDataWriter()));
        app.open(folder.path());
        QCoreApplication::processEvents();
        app.desk.dispatcher.runAll();
    }
    void play(int64_t row)
    {
        app.start(row);
        reading().clear();
    }
    void playDrive()
    {
        controller.clickDrivesViewButton();
        auto& list = app.find<QListView>("drivesListView");
        list.setFocus();
        list.setCurrentIndex(list.model()->index(0, 0));
        press(list, Qt::Key_Return);
        app.begin();
        reading().clear();
    }
    /// The pointer stands there, a fraction of the line.
    void pointAt(QWidget& line, double fraction)
    {
        const QPointF place(7 + fraction * (line.width() - 14), line.height() / 2.0);
        QMouseEvent move(
            QEvent::MouseMove, place, line.mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&line, &move);
    }
    int lightness() { return tip.picture().isNull() ? -1 : qGray(tip.picture().pixel(5, 5)); }
    Calls& reading() { return app.desk.previews.calls; }

    PreviewTip& tip = app.find<PreviewTip>("previewTip");
    PositionSlider& slider = app.find<PositionSlider>("videoPositionSlider");
    DriveStrip& strip = app.find<DriveStrip>("driveStrip");
};

TEST_F(SmallPictures, FollowTheHandOverTheSlider)
{
    pointAt(slider, 0.5);
    EXPECT_FALSE(tip.isVisible()) << "no file";
    play(0);
    pointAt(slider, 0.5);
    EXPECT_TRUE(tip.isVisible());
    EXPECT_EQ(tip.text(), "00:30") << "at once";
    EXPECT_EQ(lightness(), -1);
    EXPECT_TRUE(tip.testAttribute(Qt::WA_TransparentForMouseEvents));
    app.desk.dispatcher.runAll();
    EXPECT_EQ(reading().back(), "alwa_20240518_181200_F.avi 30.0");
    EXPECT_EQ(lightness(), 60);
    EXPECT_EQ(app.desk.previews.width, PreviewTip::room.width());
    pointAt(slider, 1);
    EXPECT_EQ(tip.text(), "01:00");
    EXPECT_EQ(lightness(), 60) << "the one before stays until it is there";
    EXPECT_TRUE(app.window().rect().contains(tip.geometry()));
    QTest::mousePress(&slider, Qt::LeftButton, {}, {100, slider.height() / 2});
    EXPECT_FALSE(tip.isVisible());
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, {100, slider.height() / 2});
    pointAt(slider, 0.25);
    EXPECT_TRUE(tip.isVisible());
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&slider, &leave);
    EXPECT_FALSE(tip.isVisible());
    app.desk.previews.unreadable = {"alwa_20240518_181200_F.avi"};
    pointAt(slider, 0.8);
    app.desk.dispatcher.runAll();
    EXPECT_FALSE(tip.hasRoomForPicture()) << "the time alone";
}

TEST_F(SmallPictures, AreNeverThoseOfAnotherFile)
{
    playDrive();
    pointAt(strip, 0.25);
    EXPECT_EQ(tip.text(), "18:12:30  (00:30 into the drive)");
    app.desk.dispatcher.runBackground(); // on its way
    pointAt(strip, 0.75);
    app.desk.dispatcher.runMain();
    EXPECT_EQ(tip.text(), "18:13:30  (01:30 into the drive)");
    EXPECT_EQ(lightness(), -1);
    app.desk.dispatcher.runAll();
    EXPECT_EQ(reading().back(), "event_20240518_181300.avi 30.0");
    EXPECT_EQ(lightness(), 60);
    pointAt(strip, 0.1);
    EXPECT_EQ(lightness(), -1);
    press(app.window(), Qt::Key_PageDown);
    EXPECT_FALSE(tip.isVisible()) << "another file plays";
    app.begin();
    pointAt(slider, 0.105);
    app.desk.dispatcher.runAll();
    EXPECT_EQ(reading().back(), "event_20240518_181300.avi 6.00");
}

TEST_F(SmallPictures, AreOfTheCameraThatIsLarge)
{
    folder.file("alwa_20240518_181200_R.avi", recordingFile(60));
    app.open(folder.path());
    playDrive();
    app.player().reportSecond(platform::SecondFile::ready);
    const auto pictured = [&](QWidget& line, double fraction) {
        pointAt(line, fraction);
        app.desk.dispatcher.runAll();
        return reading().back();
    };
    double place = 0.1; // another each time: what was read is kept
    const auto expectPicturesOf = [&](const std::string& file) {
        EXPECT_TRUE(pictured(slider, place).starts_with(file)) << reading().back();
        EXPECT_TRUE(pictured(strip, place * 0.5 + 0.02).starts_with(file)) << reading().back();
        EXPECT_TRUE(pictured(strip, place * 0.5 + 0.5).starts_with("event")) << "one camera alone";
        place += 0.1;
    };
    const std::string front = "alwa_20240518_181200_F.avi", rear = "alwa_20240518_181200_R.avi";
    expectPicturesOf(front);
    controller.nextCamera();
    expectPicturesOf(rear);
    controller.nextCamera();
    expectPicturesOf(front);
    app.playback().cameras().swap();
    expectPicturesOf(rear);
    controller.nextCamera();
    expectPicturesOf(front); // the left one
    app.desk.previews.age = 12;
    pictured(slider, 0.9);
    EXPECT_FALSE(tip.hasRoomForPicture()) << "the file ends before";
}

TEST_F(SmallPictures, OfRowsShowTheStrongestMomentElseTheBeginning)
{
    auto& rows = *app.find<QListView>("drivesListView").model();
    const auto light = [&](int row) {
        const auto picture = rows.index(row, 0).data(DriveListModel::pictureRole).value<QImage>();
        return picture.isNull() ? -1 : qGray(picture.pixel(1, 1));
    };
    EXPECT_TRUE(reading().empty()) << "no row is on screen";
    controller.clickDrivesViewButton();
    QCoreApplication::processEvents();
    app.desk.dispatcher.runAll();
    EXPECT_EQ(light(0), 60);
    EXPECT_EQ(light(1), 2);
    EXPECT_EQ(std::ranges::count(reading(), "event_20240518_181300.avi 30.0"), 1);
    controller.openMediaDirectory("/nowhere");
    app.desk.dispatcher.runAll();
    EXPECT_EQ(reading().back(), "close");
    app.desk.previews.unreadable = {"event_20240518_181300.avi", "alwa_20240518_200000_F.avi"};
    app.open(folder.path());
    controller.clickDrivesViewButton();
    QCoreApplication::processEvents();
    app.desk.dispatcher.runAll();
    EXPECT_EQ(light(0), 2) << "its moment can't be read";
    EXPECT_EQ(light(1), -1);
    EXPECT_FALSE(app.find<QListView>("drivesListView").grab().isNull());
}

TEST_F(SmallPictures, AreGoneWhenTheCardIsLetGoOf)
{
    playDrive();
    pointAt(strip, 0.25);
    app.desk.dispatcher.runAll();
    pointAt(strip, 0.8);
    const size_t read = reading().size();
    controller.letGoOf(folder.path());
    app.desk.dispatcher.runAll();
    EXPECT_FALSE(tip.isVisible());
    EXPECT_EQ(Calls(reading().begin() + std::ptrdiff_t(read), reading().end()), Calls{"close"});
    pointAt(slider, 0.5);
    EXPECT_FALSE(tip.isVisible());
    controller.cardFormatted(folder.path(), {});
    app.desk.dispatcher.runAll();
    EXPECT_EQ(reading().back(), "alwa_20240518_200000_F.avi 1.00") << "given back, the rows have theirs";
}

} // namespace
