#include "lib/PositionSlider.h"
#include "lib/TKImageButton.h"
#include "telemetry/GraphView.h"
#include "tests/support/AppDelegateProbe.h"
#include "tests/support/TempFolder.h"
#include "tools/samplecard/AviWriter.h"
#include "tools/samplecard/DeviceSentence.h"

#include <QLabel>
#include <QTableView>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using platform::PlayerState;

namespace {

/// A recording whose samples all have the given x, with one GPS record at their end.
std::vector<std::byte> recording(int32_t x, int samples)
{
    SideDataWriter sideData;
    for (int i = 0; i < samples; ++i)
        sideData.gsensor(1000 + i * 100, x, 0, 256);
    DeviceFix fix;
    fix.satellitesUsed = 7;
    fix.hdop = 0.9;
    GpsRecordFields gps;
    gps.timestamp = 1000 + samples * 100;
    gps.latitude = 3723.4567;
    gps.longitude = 12701.5;
    gps.speed = 54;
    gps.km = '0';
    gps.text = deviceText(fix);
    sideData.gps(gps);
    return AviWriter().filler(64).junk(sideData).bytes();
}

/// Three recordings: front, rear, and a later one that is no recording inside.
class Playback : public testing::Test {
protected:
    Playback()
    {
        folder.file("alwa_20150321_142530_F.avi", recording(256, 10));
        folder.file("alwa_20150321_142600_R.avi", recording(-512, 20));
        folder.file("alwa_20150321_142700_F.avi");
        app.open(folder.path());
    }

    int selectedRow()
    {
        const auto rows = app.find<QTableView>("mediaListTableView").selectionModel()->selectedRows();
        return rows.size() == 1 ? rows.first().row() : -1;
    }

    QString text(const char* field) { return app.find<QLabel>(field).text(); }

    TempFolder folder;
    AppDelegateProbe app;
};

TEST_F(Playback, ReadsTelemetryBeforeThePictureStarts)
{
    EXPECT_TRUE(app.controller->playAtIndex(0));
    EXPECT_EQ(selectedRow(), 0);
    EXPECT_EQ(app.player().countOf("play"), 0u);
    app.desk.dispatcher.runBackground();
    EXPECT_TRUE(app.telemetry().m_GSensors.empty()) << "the result is published on the main thread only";
    app.desk.dispatcher.runMain();
    EXPECT_EQ(app.player().countOf("play"), 1u);
    EXPECT_EQ(app.find<GraphView>("graphView").graphData().size(), 10u);
    EXPECT_EQ(text("gsensorXField"), "X=+0.00");
    EXPECT_TRUE(text("speedField").isEmpty());

    app.player().reportState(PlayerState::playing);
    EXPECT_TRUE(app.playInfo().isPlaying());
    EXPECT_EQ(app.find<TKImageButton>("playButton").imageName(), "icon_pause_n");
    EXPECT_EQ(app.find<QLabel>("speedTextButton").text(), "1.0x");
    EXPECT_EQ(app.playInfo().audioMediaDirection(), 0);
    EXPECT_TRUE(app.find<QWidget>("video1View").isVisible());
    EXPECT_GT(app.playInfo().scale(), 0);
    app.player().reportTime(0.5f);
    app.player().reportTime(0.5f);
    app.player().reportTime(0.5f);
    EXPECT_EQ(text("gsensorXField"), "X=+1.00");
    EXPECT_EQ(text("speedField"), "54 Km/h");
    EXPECT_EQ(text("latitudeField"), "37.3909");
    EXPECT_EQ(text("hdopField"), "0.9");
    EXPECT_EQ(text("sateliteField"), "7");
}

TEST_F(Playback, OnlyWhatTheUserChoosesTakesThePlaceOfAPendingStart)
{
    EXPECT_TRUE(app.controller->playAtIndex(0));
    EXPECT_FALSE(app.controller->playAtIndex(1)) << "a repeated report, a timer";
    EXPECT_FALSE(app.controller->playNext());
    const std::pair<std::function<void()>, int> choices[] = {
        {[this] { app.controller->playFollowing(); }, 1},
        {[this] { app.find<QTableView>("mediaListTableView").selectRow(2), app.controller->changeAndPlay(); },
            2},
        {[this] { app.controller->playPrevious(); }, 1},
    };
    for (const auto& [choose, expected] : choices) {
        choose();
        EXPECT_EQ(app.mediaIndex(), expected);
        EXPECT_EQ(selectedRow(), expected);
        const size_t started = app.player().calls.size();
        app.controller->changeAndPlay(); // the same row again
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
        {"was given up", [this] { app.controller->giveUpStart(); }},
    };
    for (const auto& [said, end] : endings) {
        SCOPED_TRACE(said);
        app.controller->playAtIndex(0);
        app.desk.dispatcher.advance(499ms);
        EXPECT_EQ(text("videoStateLabel"), "");
        for (const auto wait : {1ms, 16000ms}) {
            app.desk.dispatcher.advance(wait);
            EXPECT_TRUE(text("videoStateLabel").contains("Preparing alwa_20150321_142530_F.avi"));
        }
        app.desk.dispatcher.runAll();
        end();
        app.desk.dispatcher.advance(1s);
        EXPECT_TRUE(text("videoStateLabel").contains(said));
        EXPECT_EQ(text("videoStateLabel").isEmpty(), !*said);
        EXPECT_FALSE(app.isWaiting());
    }
    EXPECT_EQ(app.player().calls.back(), "stop");
    EXPECT_FALSE(app.find<QWidget>("progressIndicator").isVisible());
    app.controller->clickPlayButton();
    EXPECT_TRUE(app.isWaiting()) << "what was given up can be tried again";
    app.controller->giveUpStart();
    app.desk.dispatcher.advance(300ms);
    EXPECT_FALSE(app.find<QWidget>("progressIndicator").isVisible()) << "the bar goes, too";
    app.start(0);
    app.player().reportTime(0.1f);
    app.desk.dispatcher.advance(600ms);
    EXPECT_EQ(text("videoStateLabel"), "") << "nobody waits for what plays";
    EXPECT_FALSE(app.find<QWidget>("progressIndicator").isVisible());
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
    app.controller->playAtIndex(2);
    EXPECT_TRUE(app.telemetry().m_GSensors.empty());
    EXPECT_EQ(text("gsensorXField"), "X=+0.00");
    EXPECT_TRUE(text("speedField").isEmpty());
    EXPECT_TRUE(text("timeField").isEmpty());
    EXPECT_FALSE(app.playInfo().isPlaying());
    app.desk.map.scripts.clear();
    app.playInfo().setPosition(0.3);
    EXPECT_TRUE(app.desk.map.scripts.empty()) << "no word of missing GPS before the file was read";
    app.desk.dispatcher.runAll();
    EXPECT_TRUE(app.find<GraphView>("graphView").graphData().empty());
    EXPECT_TRUE(text("speedField").isEmpty());
    EXPECT_EQ(text("gsensorXField"), "X=+0.00");
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
    EXPECT_EQ(selectedRow(), 1);
    EXPECT_TRUE(app.isWaiting());
    app.desk.dispatcher.runAll();
    app.player().reportState(PlayerState::playing);
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
    struct Case {
        const char* name;
        std::function<void()> before;
    };
    TempFolder other;
    other.file("alwa_20160101_000000_F.avi", recording(128, 3));
    const Case cases[] = {
        {"extraction", [this] { app.controller->playAtIndex(0); }},
        {"extracted", [this] { app.controller->playAtIndex(0), app.desk.dispatcher.runBackground(); }},
        {"move to the next file",
            [this] { app.start(0), app.player().reportEnd(), app.desk.dispatcher.advance(1500ms); }},
        {"second seek of a jump back",
            [this] { app.start(0), app.player().reportTime(0.5f), app.controller->jumpBackward(); }},
    };
    for (const auto& [name, before] : cases) {
        SCOPED_TRACE(name);
        before();
        app.controller->openMediaDirectory(other.path());
        EXPECT_EQ(app.list().count(), 0);
        app.controller->playFollowing();
        const size_t calls = app.player().calls.size();
        app.desk.dispatcher.runAll();
        app.desk.dispatcher.advance(20s);
        EXPECT_EQ(app.player().calls.size(), calls);
        EXPECT_EQ(app.list().count(), 1);
        app.open(folder.path());
        EXPECT_FALSE(app.isWaiting());
        EXPECT_FALSE(app.isMoving());
        EXPECT_FALSE(app.find<QWidget>("progressIndicator").isVisible());
    }
}

TEST_F(Playback, WhatWasStoppedOrFailedIsPreparedAnewNeverPlayedBare)
{
    struct Case {
        const char* name;
        std::function<void()> before;
    };
    const Case causes[] = {
        {"a folder chosen while it was prepared",
            [this] { app.controller->playAtIndex(1), app.open(folder.path()); }},
        {"a folder chosen while it played", [this] { app.start(1), app.open(folder.path()); }},
        {"a failure", [this] { app.start(1), app.player().reportFailure("card pulled"); }},
    };
    for (const auto& [name, before] : causes) {
        for (const bool byButton : {true, false}) {
            SCOPED_TRACE(name);
            before();
            app.find<QTableView>("mediaListTableView").selectRow(1);
            byButton ? app.controller->clickPlayButton() : app.controller->changeAndPlay();
            EXPECT_TRUE(app.isWaiting());
            app.player().calls.clear();
            app.desk.dispatcher.runAll();
            EXPECT_EQ(app.player().countOf("play"), 1u);
            EXPECT_EQ(app.telemetry().m_GSensors.size(), 20u);
            EXPECT_EQ(app.player().current->url(), folder.path("alwa_20150321_142600_R.avi"));
            app.player().reportState(PlayerState::playing);
        }
    }
}

TEST_F(Playback, NothingOfAFolderStaysWhenAnotherIsOpened)
{
    TempFolder other;
    other.file("alwa_20160101_000000_F.avi", recording(128, 3));
    other.file("alwa_20160101_000100_F.avi", recording(128, 4));
    auto& graph = app.find<GraphView>("graphView");
    const std::pair<std::function<void()>, int> roads[] = {
        {[this] { app.controller->clickPlayButton(); }, 0},
        {[this] { app.controller->changeAndPlay(); }, 0},
        {[this] { app.controller->playFollowing(); }, 0},
        {[this] {
             app.find<QTableView>("mediaListTableView").selectRow(1), app.controller->clickPlayButton();
         },
            1},
    };
    for (const auto& [play, expected] : roads) {
        app.open(folder.path());
        app.start(1);
        app.player().reportEnd();
        ASSERT_EQ(graph.graphData().size(), 20u);
        app.player().reportFailure("broken");
        app.desk.map.scripts.clear();
        app.controller->openMediaDirectory(other.path());
        EXPECT_EQ(app.find<QTableView>("mediaListTableView").model()->rowCount(), 0);
        EXPECT_TRUE(graph.graphData().empty());
        EXPECT_EQ(graph.timePosition(), 0);
        EXPECT_EQ(app.desk.map.scripts, std::vector<std::string>{"zavikNewRecording()"});
        for (const char* field : {"titleLabel", "sizeTextButton", "videoStateLabel", "timeField",
                 "speedField", "latitudeField", "hdopField"})
            EXPECT_EQ(text(field), "") << field;
        app.desk.dispatcher.runAll();
        EXPECT_EQ(selectedRow(), -1);
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
    EXPECT_EQ(selectedRow(), 2);
    app.controller->clickPlayButton();
    EXPECT_EQ(app.player().current->url(), folder.path("alwa_20150321_142600_R.avi"));
}

TEST_F(Playback, ShowsNoPictureOfAnotherFileWhereThereIsOnlySound)
{
    app.start(0);
    EXPECT_TRUE(app.find<QWidget>("video1View").isVisible());
    app.controller->playAtIndex(1);
    EXPECT_EQ(text("sizeTextButton"), "");
    app.desk.dispatcher.runAll();
    app.player().size = {};
    app.player().reportState(PlayerState::playing);
    app.player().reportTime(0.1f);
    EXPECT_FALSE(app.find<QWidget>("video1View").isVisible());
    EXPECT_EQ(text("sizeTextButton"), "");
}

TEST_F(Playback, TellsOfARecordingThatBreaksOffAndGoesOn)
{
    app.start(0);
    app.player().reportTime(0.4f);
    app.player().brokenOff = true;
    app.player().reportState(PlayerState::paused);
    EXPECT_EQ(text("listStateLabel"), "“alwa_20150321_142530_F.avi” breaks off before its end.");
    EXPECT_FLOAT_EQ(float(app.playInfo().position()), 0.4f);
    app.controller->clickPlayButton();
    EXPECT_TRUE(app.isWaiting()) << "it begins again";
    app.desk.dispatcher.runAll();
    app.player().reportState(PlayerState::playing);
    app.player().reportState(PlayerState::paused);
    app.desk.dispatcher.advance(2s);
    EXPECT_EQ(app.mediaIndex(), 1);
}

TEST_F(Playback, SaysWhoseReadingsCouldNotBeRead)
{
    std::filesystem::remove(folder.path("alwa_20150321_142600_R.avi"));
    app.start(1);
    EXPECT_TRUE(text("listStateLabel").contains("readings of “alwa_20150321_142600_R.avi”"));
    app.start(0);
    EXPECT_EQ(text("listStateLabel"), "");
}

TEST_F(Playback, ADriveGoesOnPastAFileThatCannotBePlayed)
{
    app.start(0);
    app.player().reportEnd();
    app.desk.dispatcher.advance(2s);
    ASSERT_EQ(app.mediaIndex(), 1);
    app.desk.dispatcher.runAll();
    app.player().reportFailure("broken");
    EXPECT_TRUE(text("videoStateLabel").contains("cannot be played"));
    app.desk.dispatcher.advance(999ms);
    EXPECT_FALSE(app.find<QWidget>("progressIndicator").isVisible());
    EXPECT_EQ(app.mediaIndex(), 1);
    app.desk.dispatcher.advance(1ms);
    EXPECT_EQ(app.mediaIndex(), 2);
    EXPECT_EQ(
        text("listStateLabel"), "“alwa_20150321_142600_R.avi” could not be played and was passed over.");

    app.desk.dispatcher.runAll();
    app.player().reportState(PlayerState::playing);
    app.start(1); // chosen
    app.player().reportFailure("broken");
    app.desk.dispatcher.advance(10s);
    EXPECT_EQ(app.mediaIndex(), 1);
}

TEST_F(Playback, DoubleClickOnThePlayingRowRestartsOnlyWhenPausedOrEnded)
{
    app.start(0);
    app.player().reportTime(0.4f);
    app.controller->changeAndPlay();
    EXPECT_FLOAT_EQ(app.player().fraction, 0.4f);
    app.player().reportState(PlayerState::paused);
    app.controller->changeAndPlay();
    EXPECT_FLOAT_EQ(app.player().fraction, 0);
    EXPECT_EQ(app.player().calls.back(), "play");
}

TEST_F(Playback, PublishesEveryThirdTimeReportAndTheTargetWhileAJumpSettles)
{
    app.start(0);
    app.player().reportTime(0.5f);
    app.controller->jumpForward();
    ASSERT_TRUE(app.isMoving());
    const double target = 0.5 + 10.0 / 60;
    EXPECT_NEAR(app.find<PositionSlider>("videoPositionSlider").doubleValue(), target, 1e-5);
    app.controller->jumpForward();
    EXPECT_EQ(app.player().countOf("jumpForward 10"), 1u) << "a second jump within the settling time";
    app.player().reportTime(0.52f);
    EXPECT_NEAR(app.playInfo().position(), target, 1e-6);
    app.desk.dispatcher.advance(300ms);
    EXPECT_FALSE(app.isMoving());
    EXPECT_FLOAT_EQ(float(app.playInfo().position()), 0.52f) << "the player's own, at once";
    std::vector<double> published;
    for (const float position : {0.70f, 0.71f, 0.72f, 0.73f}) {
        app.player().reportTime(position);
        published.push_back(app.playInfo().position());
    }
    EXPECT_FLOAT_EQ(float(published[0]), 0.70f);
    EXPECT_EQ(published[1], published[0]);
    EXPECT_EQ(published[2], published[0]);
    EXPECT_FLOAT_EQ(float(published[3]), 0.73f);
}

TEST_F(Playback, TheScaleIsTheShownHeightOverTheOneOfTheFileThatPlays)
{
    const auto label = [this] { return app.find<QLabel>("sizeTextButton").text().toStdString(); };
    app.start(0);
    EXPECT_EQ(label(), "0.52x"); // 372 of 720
    app.player().size = {640, 480};
    app.start(1);
    EXPECT_EQ(label(), "0.78x");
    app.controller->sizeUp();
    EXPECT_EQ(label(), "1.04x");
    app.player().reportState(PlayerState::paused);
    app.controller->toggleFullScreen();
    EXPECT_EQ(label(), "2.17x") << "paused as well";
    app.controller->toggleFullScreen();
    EXPECT_EQ(label(), "0.78x");
}

} // namespace
