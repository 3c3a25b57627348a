#include "app/player/PlaybackSession.h"
#include "app/player/PlaybackScreen.h"
#include "media/ZVKMediaList.h"
#include "telemetry/ZVKBlackBoxData.h"
#include "tests/support/ScriptedPlayer.h"
#include "tests/support/Testing.h"
#include "tests/support/VirtualDispatcher.h"

using platform::PlayerState;

namespace {

/// Playing without a window: what the session tells is written down in one line.
class Session : public testing::Test, public PlaybackSessionDelegate, public PlaybackScreen {
protected:
    Session()
    {
        for (const char* name : {"/card/alwa_20150321_142530_F.avi", "/card/alwa_20150321_142600_F.avi"})
            list.addMedia(*ZVKMediaList::createMediaByPath(name));
    }
    ~Session() override { session.end(); }

    void entryChosen(int64_t index) override { told += "entry " + std::to_string(index) + ", "; }
    void titleChanged(const QString& name) override { told += name.left(9).toStdString() + ", "; }
    void momentCleared() override { told += "cleared, "; }
    void telemetryRead(ZVKBlackBoxData) override { told += "telemetry, "; }
    void playerStarts() override { told += "starts, "; }
    void remarksChanged() override { }
    bool isKnobHeld() const override { return false; }
    double heightOf(platform::VideoSize) const override { return 360; }
    void say(const QString&) override { }
    void showPictureOf(const platform::MediaPlayer&) override { }
    void showSeeking(platform::MediaTime) override { }
    void hideSeeking() override { }
    void remark(const QString&) override { }
    void showFrameTime(platform::MediaTime) override { }
    void hideFrameTime() override { }
    LoadingBar& loading() override { return bar; }

    VirtualDispatcher dispatcher;
    LoadingBar bar{dispatcher, {std::chrono::milliseconds(300)}, {[](double) {}, [](bool) {}}};
    ZVKMediaList list{dispatcher};
    ScriptedPlayer* player = new ScriptedPlayer;
    std::string told;
    PlaybackSession session{dispatcher, std::unique_ptr<platform::MediaPlayer>(player), list, *this, *this};
};

TEST_F(Session, WalksAStartStraightAndEntersEachStepOnce)
{
    using State = PlaybackSession::State;
    session.playAtIndex(1);
    EXPECT_EQ(session.state(), State::preparing);
    dispatcher.runBackground();
    EXPECT_EQ(told, "entry 1, alwa_2015, cleared, ");
    dispatcher.runMain();
    EXPECT_EQ(told, "entry 1, alwa_2015, cleared, telemetry, starts, ");
    EXPECT_EQ(session.state(), State::starting);
    EXPECT_EQ(player->calls.back(), "play");
    player->reportState(PlayerState::playing);
    EXPECT_EQ(session.state(), State::open);
    EXPECT_FLOAT_EQ(float(session.playInfo().scale()), 0.5F);
    EXPECT_EQ(player->countOf("play"), 1u);
}

TEST_F(Session, TheEndOfAFileThatBeginsAgainDoesNotCount)
{
    session.playAtIndex(0);
    dispatcher.runAll();
    player->reportState(PlayerState::playing);
    player->reportEnd();
    session.restartMedia();
    dispatcher.advance(std::chrono::milliseconds(1500)); // its telemetry takes its time
    EXPECT_EQ(session.state(), PlaybackSession::State::preparing);
    dispatcher.runAll();
    player->fraction = 0;
    player->reportState(PlayerState::playing);
    dispatcher.advance(std::chrono::milliseconds(600));
    EXPECT_EQ(session.index(), 0) << "the file plays, not the next one";
}

} // namespace
