#include "tests/support/TwoCameras.h"
#include "tests/support/HungFile.h"

#include <unistd.h>

namespace {

constexpr CameraView otherViews[] = {CameraView::second, CameraView::pictureInPicture,
    CameraView::pictureInPictureSwapped, CameraView::sideBySide};

TEST_F(TwoCamerasTest, ShowsEveryViewAtTheSameMomentWithoutARestart)
{
    ASSERT_TRUE(playsBoth());
    EXPECT_EQ(player->audioTrackIndexes().size(), 1U) << "the second's sound is not the file's";
    EXPECT_TRUE(recorder.secondFailures.empty());
    ASSERT_TRUE(rests(500));
    using enum CameraView;
    for (const CameraView chosen :
        {second, pictureInPicture, pictureInPictureSwapped, sideBySide, first, sideBySideSwapped, second,
            first, pictureInPicture, pictureInPictureSwapped, second, sideBySide, first}) {
        SCOPED_TRACE(int(chosen));
        ASSERT_TRUE(player->canShow(chosen));
        choose(chosen);
        ASSERT_TRUE(shows(chosen));
        EXPECT_EQ(player->time().intValue(), 500);
        showsBoth(chosen, 0.5);
        ASSERT_TRUE(rests(1200));
        showsBoth(chosen, 1.2);
        EXPECT_EQ(player->videoSize().height, chosen >= sideBySide ? 120 : 240);
        ASSERT_TRUE(player->saveVideoSnapshotAt(folder.path("shown.png"), 0, 0));
        EXPECT_EQ(
            QImage(QString::fromStdString(folder.path("shown.png"))).height(), player->videoSize().height);
        ASSERT_TRUE(rests(500));
    }
    EXPECT_THAT(
        recorder.states, ElementsAre(PlayerState::opening, PlayerState::playing, PlayerState::paused));
    choose(sideBySide);
    ASSERT_TRUE(shows(sideBySide));
    view->outputReplaced();
    ASSERT_TRUE(rests(900));
    showsBoth(sideBySide, 0.9);
    player->setSecondMedia(nullptr);
    ASSERT_TRUE(shows(first));
    showsBoth(first, 0.9);
    EXPECT_FALSE(player->canShow(second));
    player->setSecondMedia(Media::mediaWithPath(countedFile(Camera::rear)));
    ASSERT_TRUE(shows(sideBySide));
    showsBoth(sideBySide, 0.9);
}

TEST_F(TwoCamerasTest, KeepsUpWithAUserWhoChangesAllTheTime)
{
    ASSERT_TRUE(playsBoth());
    int changes = 0;
    QTimer user;
    QObject::connect(&user, &QTimer::timeout, [&] {
        choose(CameraView(++changes % 5));
        if (changes % 7 == 0)
            player->setPosition(player->position());
    });
    user.start(40);
    ASSERT_TRUE(waitFor([&] { return changes >= 30; }));
    user.stop();
    ASSERT_TRUE(reachesEnd());
    EXPECT_TRUE(std::is_sorted(recorder.times.begin(), recorder.times.end()));
    choose(CameraView::pictureInPicture);
    ASSERT_TRUE(shows(CameraView::pictureInPicture));
    EXPECT_EQ(player->position(), end) << "a change of the camera at the end does not lead away from it";
    ASSERT_TRUE(rests(700));
    showsBoth(CameraView::pictureInPicture, 0.7);
}

TEST_F(TwoCamerasTest, BeginsTheNextFileAsTheUserSetIt)
{
    CameraView atStart = CameraView::first;
    for (const CameraView chosen : otherViews) {
        SCOPED_TRACE(int(chosen));
        choose(chosen);
        atStart = CameraView::first;
        recorder.onState = [&](MediaPlayer& reporting) {
            if (reporting.isPlaying())
                atStart = reporting.shownCameraView();
        };
        ASSERT_TRUE(playsBoth());
        EXPECT_EQ(atStart, chosen) << "the first camera would flash";
        ASSERT_TRUE(rests(300));
        showsBoth(chosen, 0.3);
        player->play();
        endsAsTheFirst();

        // A graph of the file before would switch the picture off.
        ASSERT_TRUE(plays(countedFile(Camera::rear)));
        EXPECT_EQ(player->cameraView(), chosen);
        EXPECT_EQ(player->shownCameraView(), CameraView::first);
        ASSERT_TRUE(rests(300));
        EXPECT_EQ(seenAt(shown(), 0.5, 0.5).camera, Camera::rear);
    }
    player->setCameraView(CameraView::sideBySide, CameraChoice::thisFile);
    ASSERT_TRUE(playsBoth());
    EXPECT_EQ(player->cameraView(), CameraView::first);
}

TEST_F(TwoCamerasTest, NoSecondFileStopsTheFirst)
{
    const std::string whole = contents(countedFile(Camera::rear));
    const auto data = whole.find("movi") + 4;
    counted(folder.path("sound.avi"), Camera::rear, "320x240", 30, 2, {"-vn"});
    counted(folder.path("strange.avi"), Camera::rear, "320x240", 30, 2, {"-c:v", "ffv1"});
    const std::string strangers[] = {folder.path("missing.avi"), folder.path(), folder.file("empty.avi"),
        folder.file("header.avi", whole.substr(0, data)),
        folder.file("noise.avi", whole.substr(0, data) + std::string(100'000, '\x5a')),
        folder.path("sound.avi"), folder.path("strange.avi")};
    for (const auto& path : strangers) {
        for (const CameraView chosen : {CameraView::second, CameraView::pictureInPicture}) {
            SCOPED_TRACE(path + " " + std::to_string(int(chosen)));
            recorder = {};
            choose(chosen);
            ASSERT_TRUE(playsBoth(countedFile(Camera::front), path));
            // A composite merely lacks what cannot be decoded.
            const bool isTold = chosen == CameraView::second || !path.ends_with("noise.avi");
            ASSERT_TRUE(waitFor([&] { return recorder.secondFailures.empty() != isTold; }));
            EXPECT_NE(player->canShow(chosen), isTold);
            ASSERT_TRUE(rests(500));
            showsBoth(CameraView::first, 0.5);

            // While it plays, and back to one that is whole.
            player->setSecondMedia(Media::mediaWithPath(countedFile(Camera::rear)));
            ASSERT_TRUE(shows(chosen));
            showsBoth(chosen, 0.5);
            player->play();
            player->setSecondMedia(Media::mediaWithPath(path));
            if (!path.ends_with("noise.avi")) {
                ASSERT_TRUE(waitFor([this] { return recorder.secondFailures.size() == 2; }));
            }
            endsAsTheFirst();
        }
    }
}

TEST_F(TwoCamerasTest, TakesASecondFileOfAnyShapeRateAndLength)
{
    counted(folder.path("tall.avi"), Camera::rear, "96x176", 25, 3);
    counted(
        folder.path("silent.avi"), Camera::front, "320x240", 30, 2, {"-c:v", "mpeg4", "-q:v", "1", "-an"});
    for (const char* first : {"", "silent.avi"}) {
        for (const CameraView chosen : otherViews) {
            SCOPED_TRACE(first + std::to_string(int(chosen)));
            choose(chosen);
            ASSERT_TRUE(
                playsBoth(*first ? folder.path(first) : countedFile(Camera::front), folder.path("tall.avi")));
            ASSERT_TRUE(rests(1000));
            showsBoth(chosen, 1);
            player->play();
            endsAsTheFirst();
            EXPECT_EQ(player->shownCameraView(), chosen);
        }
    }
    EXPECT_TRUE(recorder.secondFailures.empty());
}

TEST_F(TwoCamerasTest, TellsWhereTheSecondEndsAndGoesOnWithTheFirst)
{
    counted(folder.path("front.avi"), Camera::front, "320x240", 30, 3, {"-c:v", "mpeg4", "-q:v", "1", "-an"});
    counted(folder.path("short.avi"), Camera::rear, "320x240", 30, 0.6);
    // Cut off, and the header claims that it was not.
    std::string bytes = contents(countedFile(Camera::rear));
    bytes.resize(bytes.size() / 2);
    const auto size = uint32_t(bytes.size() - 8);
    std::memcpy(&bytes[4], &size, sizeof size);
    for (const auto& path : {folder.path("short.avi"), folder.file("cut.avi", bytes)}) {
        for (const CameraView chosen : otherViews) {
            const bool isKnown = path.ends_with("short.avi");
            if (!isKnown && chosen != CameraView::second)
                continue;
            SCOPED_TRACE(path + std::to_string(int(chosen)));
            recorder = {};
            choose(chosen);
            ASSERT_TRUE(playsBoth(folder.path("front.avi"), path));
            ASSERT_TRUE(shows(chosen));
            ASSERT_TRUE(waitFor([this] { return player->secondFile() == SecondFile::ended; }));
            ASSERT_TRUE(shows(CameraView::first));
            ASSERT_TRUE(rests(300));
            ASSERT_TRUE(shows(chosen)) << "it has pictures here";
            showsBoth(chosen, 0.3);
            ASSERT_TRUE(rests(2500));
            ASSERT_TRUE(shows(CameraView::first));
            showsBoth(CameraView::first, 2.5);
            player->play();
            endsAsTheFirst(3000);
            EXPECT_EQ(recorder.secondFailures.size(), 1U);
        }
    }
}

TEST_F(TwoCamerasTest, GivesUpASecondFileThatHangsOrGoesAway)
{
    counted(folder.path("front.avi"), Camera::front, "320x240", 30, 8);
    const auto copyOfRear = [this](const char* name) {
        counted(folder.path(name), Camera::rear, "320x240", 30, 8);
        std::string bytes = contents(folder.path(name));
        return folder.path(name);
    };
    choose(CameraView::pictureInPicture);
    const std::string hungPath = copyOfRear("hung.avi");
    {
        const HungFile hung(hungPath);
        ASSERT_TRUE(hung.isHung);
        give(folder.path("front.avi"), hungPath);
        player->play();
        ASSERT_TRUE(waitFor([this] { return player->isPlaying() && view->pictures() > 0; }));
        EXPECT_EQ(player->secondFile(), SecondFile::opening);
        ASSERT_TRUE(waitFor([this] { return player->secondFile() == SecondFile::failed; }));
        ASSERT_TRUE(waitFor([this] { return recorder.secondFailures.size() == 1; }));
    }
    // Cut off while it plays; then a card that is pulled: its open file gives errors.
    for (const bool isPulled : {false, true}) {
        for (const CameraView chosen : {CameraView::pictureInPicture, CameraView::second}) {
            SCOPED_TRACE(std::to_string(isPulled) + std::to_string(int(chosen)));
            recorder = {};
            const std::string path = copyOfRear("rear.avi");
            choose(chosen);
            ASSERT_TRUE(playsBoth(folder.path("front.avi"), path));
            ASSERT_TRUE(shows(chosen));
            ASSERT_TRUE(rests(500));
            if (isPulled) {
                for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
                    std::error_code gone;
                    if (fs::read_symlink(entry, gone) == path)
                        ::dup2(::open("/", O_RDONLY | O_DIRECTORY | O_CLOEXEC),
                            std::stoi(entry.path().filename()));
                }
            } else {
                fs::resize_file(path, fs::file_size(path) / 8);
            }
            player->play();
            player->setTime(MediaTime::timeWithInt(4000));
            ASSERT_TRUE(waitFor([this] { return player->secondFile() == SecondFile::failed; }));
            ASSERT_TRUE(shows(CameraView::first));
            ASSERT_TRUE(waitFor([this] { return recorder.times.back() > 4300; }));
            EXPECT_TRUE(player->isPlaying());
            EXPECT_EQ(recorder.secondFailures.size(), 1U);
            EXPECT_TRUE(recorder.failures.empty());
            EXPECT_EQ(seenAt(shown(), 0.2, 0.5).camera, Camera::front);
        }
    }
}

} // namespace
