#include "tests/support/TwoCameras.h"

namespace {

class FrameStepTest : public TwoCamerasTest {
protected:
    /// Steps, and gives the times reported until no more come.
    std::vector<int64_t> stepped(const std::vector<int>& steps, size_t expected)
    {
        recorder.times.clear();
        for (const int frames : steps)
            player->stepFrame(frames);
        waitFor([&] { return recorder.times.size() >= expected; });
        // What comes after them comes before the answer to a change of the camera.
        bool isAnswered = false;
        recorder.onCameras = [&] { isAnswered = true; };
        player->setCameraView(CameraView(int(player->cameraView()) ^ 1), CameraChoice::thisFile);
        EXPECT_TRUE(waitFor([&] { return isAnswered; }));
        recorder.times.pop_back();
        recorder.onCameras = {};
        return recorder.times;
    }
};

TEST_F(FrameStepTest, MakesEveryStepAndTellsThePicturesTime)
{
    counted(folder.path("far.avi"), Camera::rear, "320x240", 30, 2,
        {"-c:v", "libx264", "-qp", "4", "-g", "60", "-bf", "2", "-pix_fmt", "yuv420p"});
    ASSERT_TRUE(playsBoth(countedFile(Camera::front), folder.path("far.avi")));
    ASSERT_TRUE(rests(1000));
    EXPECT_THAT(stepped({1}, 1), ElementsAre(1033));
    EXPECT_THAT(stepped({1, 1, 2}, 4), ElementsAre(1067, 1100, 1133, 1167));
    EXPECT_THAT(stepped({-1, -1, -1}, 3), ElementsAre(1133, 1100, 1067));
    EXPECT_THAT(stepped({-3, 1}, 2), ElementsAre(1033, 1000));
    choose(CameraView::pictureInPicture);
    ASSERT_TRUE(shows(CameraView::pictureInPicture));
    recorder.times.clear();
    player->stepFrame(-2);
    ASSERT_TRUE(waitFor([this] { return recorder.times.size() == 2; }));
    EXPECT_THAT(recorder.times, ElementsAre(967, 933));
    showsBoth(CameraView::pictureInPicture, 28 / 30.0);

    player->play();
    ASSERT_TRUE(waitFor([this] { return recorder.times.size() > 4; }));
    recorder.times.clear();
    player->stepFrame(1);
    EXPECT_EQ(player->state(), PlayerState::paused);
    ASSERT_TRUE(waitFor([this] { return !recorder.times.empty(); }));
    EXPECT_FALSE(player->isPlaying());
}

TEST_F(FrameStepTest, StaysAtTheFirstAndTheLastPicture)
{
    ASSERT_TRUE(playsBoth());
    ASSERT_TRUE(rests(33));
    EXPECT_THAT(stepped({-3}, 1), ElementsAre(0));
    EXPECT_THAT(stepped({-1, -1}, 0), ElementsAre());
    EXPECT_THAT(stepped({1}, 1), ElementsAre(33));
    ASSERT_TRUE(rests(1900));
    recorder.states.clear();
    EXPECT_THAT(stepped({8}, 2), ElementsAre(1933, 1967));
    EXPECT_THAT(stepped({1, 1}, 0), ElementsAre());
    EXPECT_LT(player->position(), end) << "the file has not ended";
    EXPECT_TRUE(recorder.states.empty());
    EXPECT_THAT(stepped({-1}, 1), ElementsAre(1933));

    player->play();
    ASSERT_TRUE(reachesEnd());
    EXPECT_THAT(stepped({1}, 0), ElementsAre());
    EXPECT_EQ(player->position(), end);
    EXPECT_THAT(stepped({-1, -1}, 2), ElementsAre(1933, 1900));
    EXPECT_LT(player->position(), end);
    player->play();
    EXPECT_TRUE(reachesEnd());
}

TEST_F(FrameStepTest, PlaysOnWhenAskedToWhileAStepIsMade)
{
    counted(folder.path("silent.avi"), Camera::front, "320x240", 30, 2, {"-c:v", "mpeg4", "-an"});
    for (const auto& path : {countedFile(Camera::front), folder.path("silent.avi")}) {
        for (const int step : {1, -1, 3}) {
            SCOPED_TRACE(path + " " + std::to_string(step));
            ASSERT_TRUE(plays(path));
            ASSERT_TRUE(rests(1000));
            player->stepFrame(step);
            player->play();
            EXPECT_TRUE(reachesEnd());
        }
    }
}

TEST_F(FrameStepTest, KeepsEveryRate)
{
    counted(folder.path("long.avi"), Camera::front, "160x120", 30, 16);
    ASSERT_TRUE(plays(folder.path("long.avi")));
    for (const float rate : {0.25F, 0.5F, 1.0F, 2.0F, 4.0F, 8.0F}) {
        player->setRate(rate);
        EXPECT_EQ(player->rate(), rate);
        // A machine that is busy may hold it up, but not each time.
        constexpr int attempts = 10;
        std::vector<double> measured;
        const auto isKept = [&] { return !measured.empty() && std::abs(measured.back() / rate - 1) < 0.2; };
        while (!isKept() && measured.size() < attempts) {
            ASSERT_TRUE(rests(1000));
            player->play();
            ASSERT_TRUE(waitFor([this] { return player->time().intValue() > 1000; }));
            const int64_t from = player->time().intValue();
            QElapsedTimer clock;
            clock.start();
            ASSERT_TRUE(waitFor([&] { return clock.elapsed() >= 800; }));
            measured.push_back(double(player->time().intValue() - from) / double(clock.elapsed()));
        }
        EXPECT_TRUE(isKept()) << rate << ": " << testing::PrintToString(measured);
    }
}

} // namespace
