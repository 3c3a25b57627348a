#include "platform/Texts.h"
#include "tests/support/AppDelegateProbe.h"
#include "tests/support/RecordingFile.h"

using platform::CameraView;
using platform::SecondFile;

namespace {

/// A drive of four takes: both cameras, both, the front one alone, both.
class CamerasTest : public AppTest {
protected:
    CamerasTest()
    {
        for (const char* name :
            {"181200_F", "181201_R", "181300_F", "181300_R", "181400_F", "181500_F", "181500_R"})
            folder.file(std::string("alwa_20240518_") + name + ".avi", recordingFile(60));
        app.open(folder.path());
    }

    /// The entry plays, its second file is open.
    void play(int64_t index)
    {
        app.start(index);
        openSecond();
    }
    void openSecond()
    {
        if (app.player().second)
            app.player().reportSecond(SecondFile::ready);
    }
    void playDrive()
    {
        controller.clickDrivesViewButton();
        QCoreApplication::processEvents();
        app.desk.dispatcher.runAll();
        auto& list = app.find<QListView>("drivesListView");
        list.setFocus();
        list.setCurrentIndex(list.model()->index(0, 0));
        press(list, Qt::Key_Return);
        app.begin();
        openSecond();
    }
    void endFile()
    {
        app.player().reportEnd();
        app.desk.dispatcher.advance(std::chrono::milliseconds(2100));
        app.begin();
    }
    std::string secondName()
    {
        const auto second = app.player().second;
        return second ? std::filesystem::path(*second->url()).filename().string().substr(14, 8) : "none";
    }
    /// Chooses, and what was chosen is on screen.
    void change(Qt::KeyboardModifiers modifiers = {})
    {
        press(app.window(), Qt::Key_C, {}, modifiers);
        app.player().delegate->mediaPlayerCamerasChanged(app.player());
    }
    std::string remark() { return app.isShown("remarkLabel") ? app.text("remarkLabel").toStdString() : ""; }
    QWidget& button() { return app.find<QWidget>("cameraButton"); }
};

TEST_F(CamerasTest, TheOtherRecordingOfTheMomentIsTheSecondFile)
{
    const std::pair<int64_t, const char*> seconds[] = {
        {0, "181201_R"}, {1, "181200_F"}, {3, "181300_F"}, {4, "none"}, {6, "181500_F"}};
    for (const auto& [index, second] : seconds) {
        play(index);
        EXPECT_EQ(secondName(), second) << index;
        EXPECT_EQ(app.player().shownCameraView(), CameraView::first) << "the recording that was chosen";
        EXPECT_EQ(button().isEnabled(), std::string_view(second) != "none");
        EXPECT_EQ(remark(), "");
    }
}

TEST_F(CamerasTest, CWalksThroughTheViewsInTheUsersWords)
{
    const std::string words[] = {"Front camera", "Rear camera", "Front camera, the rear one in the corner",
        "Front and rear camera side by side"};
    const std::vector<CameraView> views[] = {
        {CameraView::first, CameraView::second, CameraView::pictureInPicture, CameraView::sideBySide},
        {CameraView::second, CameraView::first, CameraView::pictureInPictureSwapped,
            CameraView::sideBySideSwapped}};
    for (const size_t begin : {0u, 1u}) {
        play(int64_t(begin));
        for (size_t at = begin + 1; at < begin + 5; ++at) {
            change();
            EXPECT_EQ(remark(), words[at % 4]);
            EXPECT_EQ(button().accessibleDescription().toStdString(), words[at % 4]);
            EXPECT_EQ(app.player().view, views[begin][at % 4]);
        }
        change(Qt::ShiftModifier);
        EXPECT_EQ(remark(), words[(begin + 3) % 4]);
    }
    app.desk.dispatcher.advance(std::chrono::seconds(4));
    EXPECT_EQ(remark(), "");
}

TEST_F(CamerasTest, QuickPressesAddUpAndOnlyWhatArrivesIsTold)
{
    play(0);
    for (int i = 0; i < 10; ++i)
        press(app.window(), Qt::Key_C);
    EXPECT_EQ(app.player().view, CameraView::pictureInPicture);
    EXPECT_EQ(app.player().countOf("setCameraView 1"), 3u);
    EXPECT_EQ(remark(), "");
    app.start(2);
    press(app.window(), Qt::Key_C);
    app.player().delegate->mediaPlayerCamerasChanged(app.player());
    EXPECT_EQ(remark(), "") << "it is still being opened";
    openSecond();
    EXPECT_EQ(remark(), "Rear camera");
}

TEST_F(CamerasTest, InADriveTheChoiceStaysOverFilesWithoutIt)
{
    playDrive();
    change();
    ASSERT_EQ(remark(), "Rear camera");
    app.desk.dispatcher.advance(std::chrono::seconds(4));
    endFile();
    EXPECT_EQ(secondName(), "181300_R");
    EXPECT_EQ(remark(), "") << "the rear one is being opened";
    openSecond();
    EXPECT_EQ(app.player().shownCameraView(), CameraView::second);
    EXPECT_EQ(remark(), "") << "nothing has changed for the user";
    endFile();
    EXPECT_EQ(secondName(), "none");
    EXPECT_EQ(remark(), "Front camera");
    change();
    EXPECT_EQ(remark(), platform::localized("camera.none").toStdString());
    endFile();
    openSecond();
    EXPECT_EQ(app.player().shownCameraView(), CameraView::second);
    EXPECT_EQ(remark(), "Rear camera");
    play(2);
    EXPECT_EQ(app.player().shownCameraView(), CameraView::first) << "from the list it begins as chosen";
}

TEST_F(CamerasTest, AClickOnTheSmallPictureSwaps)
{
    play(1);
    change(), openSecond();
    auto& picture = app.find<QWidget>("video1View");
    const QPoint small(int(picture.width() * 0.8), picture.height() / 5);
    const auto click = [&](QPoint at) {
        QTest::mouseClick(&picture, Qt::LeftButton, {}, at);
        app.player().delegate->mediaPlayerCamerasChanged(app.player());
    };
    ASSERT_EQ(app.player().view, CameraView::pictureInPictureSwapped);
    click({picture.width() / 4, picture.height() / 2});
    EXPECT_EQ(app.player().view, CameraView::pictureInPictureSwapped);
    click(small);
    EXPECT_EQ(app.player().view, CameraView::pictureInPicture);
    EXPECT_EQ(remark(), "Rear camera, the front one in the corner");
    QTest::mouseDClick(&picture, Qt::LeftButton, {}, small);
    EXPECT_EQ(app.player().view, CameraView::pictureInPictureSwapped);
    change();
    EXPECT_EQ(app.player().view, CameraView::sideBySideSwapped);
    click(small);
    EXPECT_EQ(app.player().view, CameraView::sideBySideSwapped);
}

TEST_F(CamerasTest, BesideEachOtherTheyKeepTheirShape)
{
    for (const auto& [row, view] :
        {std::pair(0, CameraView::sideBySide), {1, CameraView::sideBySideSwapped}}) {
        play(row);
        const double alone = app.playInfo().scale();
        app.player().size = {2560, 720};
        while (app.player().view != view)
            change();
        EXPECT_NEAR(app.playInfo().scale(), app.find<QWidget>("video1View").width() / 2560.0, 0.001);
        app.player().size = {1280, 720};
        change();
        EXPECT_EQ(app.playInfo().scale(), alone);
    }
}

TEST_F(CamerasTest, ASecondFileThatFailsOrEndsIsToldInItsPlaceAndTheFirstGoesOn)
{
    play(0);
    change();
    app.player().reportSecond(SecondFile::ended, "in words of the player");
    EXPECT_EQ(remark(), "The rear camera's recording ends here.");
    EXPECT_FALSE(button().isEnabled());
    app.player().reportSecond(SecondFile::ready);
    EXPECT_EQ(remark(), "Rear camera") << "after a seek back";
    app.player().reportSecond(SecondFile::ended);
    EXPECT_EQ(remark(), "The rear camera's recording ends here.");
    app.start(3);
    app.player().reportSecond(SecondFile::failed, "in words of the player");
    EXPECT_EQ(remark(), "The front camera's recording can't be played.");
    app.desk.dispatcher.advance(std::chrono::seconds(4));
    app.player().reportSecond(SecondFile::failed);
    EXPECT_EQ(remark(), "") << "told once";
    change();
    EXPECT_EQ(remark(), "The front camera's recording can't be played.");
    EXPECT_EQ(app.player().view, CameraView::first);
    EXPECT_EQ(app.mediaIndex(), 3);
    EXPECT_EQ(app.player().state(), PlayerState::playing);
    play(0);
    EXPECT_TRUE(button().isEnabled());
    app.player().reportFailure("of the first");
    EXPECT_FALSE(button().isEnabled()) << "without the first there is nothing to change";
}

TEST_F(CamerasTest, BothFilesAreLetGoOfAndMoveWithTheirFolder)
{
    play(0);
    app.playback().folderMoved(folder.path(), "/elsewhere");
    EXPECT_EQ(app.player().second->url(), "/elsewhere/alwa_20240518_181201_R.avi");
    app.playback().letGoOf("/elsewhere");
    EXPECT_EQ(app.player().second, nullptr);
    EXPECT_EQ(app.player().current, nullptr);
    play(0);
    app.player().current->moveTo("/another/alwa_20240518_181200_F.avi");
    app.playback().letGoOf(folder.path());
    EXPECT_EQ(app.player().second, nullptr) << "the rear one alone lies there";
    EXPECT_NE(app.player().current, nullptr);
    controller.close();
    EXPECT_EQ(app.player().second, nullptr);
}

TEST_F(CamerasTest, StepsShowTheTimeOfTheirPictureAndDoNotPileUp)
{
    press(app.window(), Qt::Key_Period);
    EXPECT_EQ(app.player().countOf("stepFrame 1"), 0u) << "nothing is open";
    play(0);
    app.player().now = PlayerState::paused;
    for (int i = 0; i < 100; ++i)
        press(app.window(), Qt::Key_Period);
    EXPECT_LE(app.player().countOf("stepFrame 1"), 10u) << "a held key waits for the player";
    app.player().fraction = 12345 / 60000.0F;
    app.player().reportTime(app.player().fraction);
    EXPECT_EQ(app.text("frameTimeLabel"), "00:12.345");
    EXPECT_NEAR(app.playInfo().position(), 12345 / 60000.0, 1e-6) << "the read-outs follow";
    const size_t before = app.player().countOf("stepFrame 1");
    press(app.window(), Qt::Key_Period);
    press(app.window(), Qt::Key_Comma);
    EXPECT_EQ(app.player().countOf("stepFrame 1"), before + 1);
    EXPECT_EQ(app.player().countOf("stepFrame -1"), 1u);
    app.player().reportState(PlayerState::playing);
    app.player().reportTime(0.5F);
    EXPECT_FALSE(app.isShown("frameTimeLabel"));
    press(app.window(), Qt::Key_Comma);
    app.player().reportState(PlayerState::paused);
    EXPECT_TRUE(app.isShown("frameTimeLabel"));
    app.start(1);
    EXPECT_FALSE(app.isShown("frameTimeLabel"));
}

TEST_F(CamerasTest, SteppingAtTheEndStaysThereUntilItIsPlayedOn)
{
    play(0);
    app.player().reportEnd();
    press(app.window(), Qt::Key_Comma);
    app.player().reportTime(0.999F);
    app.desk.dispatcher.advance(std::chrono::seconds(5));
    EXPECT_EQ(app.mediaIndex(), 0);
    press(app.window(), Qt::Key_Space);
    EXPECT_EQ(app.player().calls.back(), "play") << "the last pictures, not the file from its start";
    app.desk.dispatcher.advance(std::chrono::milliseconds(2100));
    EXPECT_EQ(app.mediaIndex(), 1);
}

} // namespace
