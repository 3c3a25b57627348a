#include "telemetry/views/GraphView.h"
#include "tests/support/AppDelegateProbe.h"
#include "tools/samplecard/AviWriter.h"
#include "tools/samplecard/DeviceSentence.h"

namespace {

/// A recording whose samples all have the given x, with one GPS record at their end.
std::vector<std::byte> recording(int32_t x, int samples)
{
    SideDataWriter sideData;
    for (int i = 0; i < samples; ++i)
        sideData.gsensor(1000 + i * 100, x, 0, 256);
    const std::string text = deviceText({.satellitesUsed = 7, .hdop = 0.9});
    sideData.gps({1000 + samples * 100, 1, 3723.4567, 12701.5, 54, '0', text});
    return AviWriter().filler(64).junk(sideData).bytes();
}

/// Three recordings: front, rear, and a later one that is no recording inside.
class Playback : public AppTest {
protected:
    Playback()
    {
        folder.file("alwa_20150321_142530_F.avi", recording(256, 10));
        folder.file("alwa_20150321_142600_R.avi", recording(-512, 20));
        folder.file("alwa_20150321_142700_F.avi");
        app.open(folder.path());
    }
};

TEST_F(Playback, ReadsTelemetryBeforeThePictureStarts)
{
    EXPECT_TRUE(controller.playAtIndex(0));
    EXPECT_EQ(app.selectedRow(), 0);
    EXPECT_EQ(app.player().countOf("play"), 0u);
    app.desk.dispatcher.runBackground();
    EXPECT_TRUE(app.telemetry().m_GSensors.empty()) << "the result is published on the main thread only";
    app.desk.dispatcher.runMain();
    EXPECT_EQ(app.player().countOf("play"), 1u);
    EXPECT_EQ(app.find<GraphView>("graphView").graphData().size(), 10u);
    EXPECT_EQ(app.texts({"gsensorXField", "speedField"}), "X=+0.00|");

    app.player().reportState(PlayerState::playing);
    EXPECT_TRUE(app.playInfo().isPlaying());
    EXPECT_EQ(app.find<TKImageButton>("playButton").imageName(), "icon_pause_n");
    EXPECT_EQ(app.text("speedTextButton"), "1.0x");
    EXPECT_EQ(app.playInfo().audioMediaDirection(), 0);
    EXPECT_TRUE(app.isShown("video1View"));
    EXPECT_GT(app.playInfo().scale(), 0);
    for (int i = 0; i < 3; ++i) // every third one is published
        app.player().reportTime(0.5f);
    EXPECT_EQ(app.texts({"gsensorXField", "speedField", "latitudeField", "hdopField", "sateliteField"}),
        "X=+1.00|54 Km/h|37.3909|0.9|7");
}

TEST_F(Playback, OnlyWhatTheUserChoosesTakesThePlaceOfAPendingStart)
{
    EXPECT_TRUE(controller.playAtIndex(0));
    EXPECT_FALSE(controller.playAtIndex(1)) << "a repeated report, a timer";
    EXPECT_FALSE(controller.playNext());
    const std::pair<std::function<void()>, int> choices[] = {{[this] { controller.playFollowing(); }, 1},
        {[this] { app.table().selectRow(2), controller.changeAndPlay(); }, 2},
        {[this] { controller.playPrevious(); }, 1}};
    for (const auto& [choose, expected] : choices) {
        choose();
        EXPECT_EQ(app.mediaIndex(), expected);
        EXPECT_EQ(app.selectedRow(), expected);
        const size_t started = app.player().calls.size();
        controller.changeAndPlay(); // the same row again
        EXPECT_EQ(app.player().calls.size(), started);
    }
    app.desk.dispatcher.runAll();
    EXPECT_EQ(app.player().countOf("play"), 1u);
    EXPECT_EQ(app.player().current->url(), folder.path("alwa_20150321_142600_R.avi"));
    EXPECT_EQ(app.telemetry().m_GSensors.size(), 20u);
}

TEST_F(Playback, SaysByNameWhatIsPreparedUntilItPlaysFailsOrIsGivenUp)
{
    const std::pair<const char*, std::function<void()>> endings[] = {
        {"", [this] { app.player().reportState(PlayerState::playing); }},
        {"cannot be played", [this] { app.player().reportFailure("broken"); }},
        {"was given up", [this] { controller.giveUpStart(); }},
    };
    for (const auto& [said, end] : endings) {
        SCOPED_TRACE(said);
        controller.playAtIndex(0);
        app.desk.dispatcher.advance(499ms);
        EXPECT_EQ(app.text("videoStateLabel"), "");
        for (const auto wait : {1ms, 16000ms}) {
            app.desk.dispatcher.advance(wait);
            EXPECT_TRUE(app.text("videoStateLabel").contains("Preparing alwa_20150321_142530_F.avi"));
        }
        app.desk.dispatcher.runAll();
        end();
        app.desk.dispatcher.advance(1s);
        EXPECT_TRUE(app.text("videoStateLabel").contains(said));
        EXPECT_EQ(app.text("videoStateLabel").isEmpty(), !*said);
        EXPECT_FALSE(app.isWaiting());
    }
    EXPECT_EQ(app.player().calls.back(), "stop");
    EXPECT_FALSE(app.isShown("progressIndicator"));
    controller.clickPlayButton();
    EXPECT_TRUE(app.isWaiting()) << "what was given up can be tried again";
    controller.giveUpStart();
    app.desk.dispatcher.advance(300ms);
    EXPECT_FALSE(app.isShown("progressIndicator")) << "the bar goes, too";
    app.start(0);
    app.player().reportTime(0.1f);
    app.desk.dispatcher.advance(600ms);
    EXPECT_EQ(app.text("videoStateLabel"), "") << "nobody waits for what plays";
    EXPECT_FALSE(app.isShown("progressIndicator"));
}

TEST_F(Playback, ClampsTheIndexAndPlaysNothingFromAnEmptyList)
{
    for (const auto& [index, expected] : {std::pair{-5, 0}, {99, 2}}) {
        app.start(index);
        EXPECT_EQ(app.mediaIndex(), expected);
    }
    AppDelegateProbe empty;
    EXPECT_FALSE(empty.controller->playAtIndex(0));
    EXPECT_FALSE(empty.controller->playNext());
    empty.controller->clickPlayButton();
    empty.controller->changeAndPlay();
    empty.controller->jumpForward();
    empty.controller->jumpBackward();
    EXPECT_EQ(empty.player().countOf("play"), 0u);
}

TEST_F(Playback, NeverShowsTheTelemetryOfTheFileBefore)
{
    app.start(1);
    app.player().reportTime(0.5f);
    ASSERT_EQ(app.telemetry().m_GSensors.size(), 20u);
    controller.playAtIndex(2);
    EXPECT_TRUE(app.telemetry().m_GSensors.empty());
    EXPECT_EQ(app.texts({"gsensorXField", "speedField", "timeField"}), "X=+0.00||");
    EXPECT_FALSE(app.playInfo().isPlaying());
    app.desk.map.scripts.clear();
    app.playInfo().setPosition(0.3);
    EXPECT_TRUE(app.desk.map.scripts.empty()) << "no word of missing GPS before the file was read";
    app.desk.dispatcher.runAll();
    EXPECT_TRUE(app.find<GraphView>("graphView").graphData().empty());
    EXPECT_EQ(app.texts({"gsensorXField", "speedField"}), "X=+0.00|");
}

TEST_F(Playback, MovesOnOneToTwoSecondsAfterTheEndAndStaysAfterTheLast)
{
    app.start(0);
    app.desk.dispatcher.advance(10s);
    EXPECT_EQ(app.mediaIndex(), 0) << "a playing file is left alone";
    app.player().reportEnd();
    EXPECT_FALSE(app.playInfo().isPlaying());
    EXPECT_EQ(app.playInfo().position(), 1);
    app.desk.dispatcher.advance(999ms);
    EXPECT_EQ(app.mediaIndex(), 0);
    app.desk.dispatcher.advance(1002ms);
    EXPECT_EQ(app.mediaIndex(), 1);
    EXPECT_EQ(app.selectedRow(), 1);
    EXPECT_TRUE(app.isWaiting());
    app.begin();
    EXPECT_EQ(app.playInfo().audioMediaDirection(), 1);

    app.start(2);
    app.player().reportEnd();
    const size_t calls = app.player().calls.size();
    app.desk.dispatcher.advance(60s);
    EXPECT_EQ(app.mediaIndex(), 2);
    EXPECT_EQ(app.player().calls.size(), calls);
}

TEST_F(Playback, AFolderChosenMeanwhileVoidsWhatWasPending)
{
    TempFolder other;
    other.file("alwa_20160101_000000_F.avi", recording(128, 3));
    const std::pair<const char*, std::function<void()>> cases[] = {
        {"extraction", [this] { controller.playAtIndex(0); }},
        {"extracted", [this] { controller.playAtIndex(0), app.desk.dispatcher.runBackground(); }},
        {"move to the next file",
            [this] { app.start(0), app.player().reportEnd(), app.desk.dispatcher.advance(1500ms); }},
        {"second seek of a jump back",
            [this] { app.start(0), app.player().reportTime(0.5f), controller.jumpBackward(); }},
    };
    for (const auto& [name, before] : cases) {
        SCOPED_TRACE(name);
        before();
        controller.openMediaDirectory(other.path());
        EXPECT_EQ(app.list().count(), 0);
        controller.playFollowing();
        const size_t calls = app.player().calls.size();
        app.desk.dispatcher.runAll();
        app.desk.dispatcher.advance(20s);
        EXPECT_EQ(app.player().calls.size(), calls);
        EXPECT_EQ(app.list().count(), 1);
        app.open(folder.path());
        EXPECT_FALSE(app.isWaiting());
        EXPECT_FALSE(app.isMoving());
        EXPECT_FALSE(app.isShown("progressIndicator"));
    }
}

TEST_F(Playback, NothingOfAFolderStaysWhenAnotherIsOpened)
{
    TempFolder other;
    other.file("alwa_20160101_000000_F.avi", recording(128, 3));
    other.file("alwa_20160101_000100_F.avi", recording(128, 4));
    auto& graph = app.find<GraphView>("graphView");
    const std::pair<std::function<void()>, int> roads[] = {{[this] { controller.clickPlayButton(); }, 0},
        {[this] { controller.changeAndPlay(); }, 0}, {[this] { controller.playFollowing(); }, 0},
        {[this] { app.table().selectRow(1), controller.clickPlayButton(); }, 1}};
    for (const auto& [play, expected] : roads) {
        app.open(folder.path());
        app.start(1);
        app.player().reportEnd();
        ASSERT_EQ(graph.graphData().size(), 20u);
        app.player().reportFailure("broken");
        app.desk.map.scripts.clear();
        controller.openMediaDirectory(other.path());
        EXPECT_EQ(app.table().model()->rowCount(), 0);
        EXPECT_TRUE(graph.graphData().empty());
        EXPECT_EQ(graph.timePosition(), 0);
        EXPECT_EQ(app.desk.map.scripts, std::vector<std::string>{"zavikNewRecording()"});
        EXPECT_EQ(app.texts({"titleLabel", "sizeTextButton", "videoStateLabel", "timeField", "speedField",
                      "latitudeField", "hdopField"}),
            "||||||");
        app.desk.dispatcher.runAll();
        EXPECT_EQ(app.selectedRow(), -1);
        play();
        EXPECT_EQ(app.player().current->url(), app.list().mediaAtIndex(expected)->path());
        app.desk.dispatcher.runAll();
        EXPECT_EQ(app.telemetry().m_GSensors.size(), size_t(3 + expected));
    }
}

TEST_F(Playback, AFolderThatIsReadAgainKeepsTheFileAtHandInItsRow)
{
    app.start(1);
    folder.file("alwa_20140101_000000_F.avi", recording(128, 3));
    app.open(folder.path());
    EXPECT_EQ(app.mediaIndex(), 2);
    EXPECT_EQ(app.selectedRow(), 2);
    controller.clickPlayButton();
    EXPECT_EQ(app.player().current->url(), folder.path("alwa_20150321_142600_R.avi"));
}

TEST_F(Playback, ShowsNoPictureOfAnotherFileWhereThereIsOnlySound)
{
    EXPECT_FALSE(app.isShown("video1View"));
    app.start(0);
    EXPECT_TRUE(app.isShown("video1View"));
    controller.playAtIndex(1);
    EXPECT_EQ(app.text("sizeTextButton"), "");
    app.desk.dispatcher.runAll();
    app.player().size = {};
    app.player().reportState(PlayerState::playing);
    app.player().reportTime(0.1f);
    EXPECT_FALSE(app.isShown("video1View"));
    EXPECT_EQ(app.text("sizeTextButton"), "");
}

TEST_F(Playback, TellsOfARecordingThatBreaksOffAndGoesOn)
{
    app.start(0);
    app.player().reportTime(0.4f);
    app.player().brokenOff = true;
    app.player().reportState(PlayerState::paused);
    EXPECT_EQ(app.text("listStateLabel"), "“alwa_20150321_142530_F.avi” breaks off before its end.");
    EXPECT_FLOAT_EQ(float(app.playInfo().position()), 0.4f);
    controller.clickPlayButton();
    EXPECT_TRUE(app.isWaiting()) << "it begins again";
    app.begin();
    app.player().reportState(PlayerState::paused);
    app.desk.dispatcher.advance(2s);
    EXPECT_EQ(app.mediaIndex(), 1);
}

TEST_F(Playback, SaysWhoseReadingsCouldNotBeRead)
{
    fs::remove(folder.path("alwa_20150321_142600_R.avi"));
    app.start(1);
    EXPECT_TRUE(app.text("listStateLabel").contains("readings of “alwa_20150321_142600_R.avi”"));
    app.start(0);
    EXPECT_EQ(app.text("listStateLabel"), "");
}

TEST_F(Playback, ADriveGoesOnPastAFileThatCannotBePlayed)
{
    app.start(0);
    app.player().reportEnd();
    app.desk.dispatcher.advance(2s);
    ASSERT_EQ(app.mediaIndex(), 1);
    app.desk.dispatcher.runAll();
    app.player().reportFailure("broken");
    EXPECT_TRUE(app.text("videoStateLabel").contains("cannot be played"));
    app.desk.dispatcher.advance(999ms);
    EXPECT_FALSE(app.isShown("progressIndicator"));
    EXPECT_EQ(app.mediaIndex(), 1);
    app.desk.dispatcher.advance(1ms);
    EXPECT_EQ(app.mediaIndex(), 2);
    EXPECT_EQ(
        app.text("listStateLabel"), "“alwa_20150321_142600_R.avi” could not be played and was passed over.");

    app.begin();
    app.start(1); // chosen
    app.player().reportFailure("broken");
    app.desk.dispatcher.advance(10s);
    EXPECT_EQ(app.mediaIndex(), 1);
    for (const bool byButton : {true, false}) {
        byButton ? controller.clickPlayButton() : controller.changeAndPlay();
        EXPECT_TRUE(app.isWaiting()) << "it is prepared anew";
        app.desk.dispatcher.runAll();
        app.player().reportFailure("broken");
    }
}

TEST_F(Playback, DoubleClickOnThePlayingRowRestartsOnlyWhenPausedOrEnded)
{
    app.start(0);
    app.player().reportTime(0.4f);
    controller.changeAndPlay();
    EXPECT_FLOAT_EQ(app.player().fraction, 0.4f);
    app.player().reportState(PlayerState::paused);
    controller.changeAndPlay();
    EXPECT_FLOAT_EQ(app.player().fraction, 0);
    EXPECT_EQ(app.player().calls.back(), "play");
}

TEST_F(Playback, TheScaleIsTheShownHeightOverTheOneOfTheFileThatPlays)
{
    app.start(0);
    EXPECT_EQ(app.text("sizeTextButton"), "0.52x"); // 372 of 720
    app.player().size = {640, 480};
    app.start(1);
    EXPECT_EQ(app.text("sizeTextButton"), "0.78x");
    controller.sizeUp();
    EXPECT_EQ(app.text("sizeTextButton"), "1.04x");
    app.player().reportState(PlayerState::paused);
    controller.toggleFullScreen();
    EXPECT_EQ(app.text("sizeTextButton"), "2.17x") << "paused as well";
    controller.toggleFullScreen();
    EXPECT_EQ(app.text("sizeTextButton"), "0.78x");
}

} // namespace
