#include "tests/support/HungFile.h"
#include "tests/support/RealPlayer.h"

#include <unistd.h>

namespace {

constexpr CameraView otherViews[] = {CameraView::second, CameraView::pictureInPicture,
    CameraView::pictureInPictureSwapped, CameraView::sideBySide};

enum class Camera { front, rear };

/// Each picture tells its number by its lightness, and its camera by its colour.
void counted(const std::string& path, Camera camera, const QString& size = "320x240", int rate = 30,
    double seconds = 2, const QStringList& options = {"-c:v", "mpeg4", "-q:v", "1", "-g", "30"})
{
    const QString picture = QString("nullsrc=size=%1:rate=%2:duration=%3,geq=lum='60+60*T':cb=128:cr=%4")
                                .arg(size)
                                .arg(rate)
                                .arg(seconds)
                                .arg(camera == Camera::rear ? 152 : 128);
    QProcess::execute("ffmpeg",
        QStringList{"-v", "error", "-y", "-f", "lavfi", "-i", picture, "-f", "lavfi", "-i",
            QString("sine=440:duration=%1").arg(seconds), "-c:a", "pcm_s16le"}
            + options + QStringList{QString::fromStdString(path)});
}

const std::string& countedFile(Camera camera)
{
    static const TempFolder folder;
    static const bool areMade = [] {
        counted(folder.path("front.avi"), Camera::front);
        counted(folder.path("rear.avi"), Camera::rear);
        return true;
    }();
    static const std::string paths[] = {folder.path("front.avi"), folder.path("rear.avi")};
    EXPECT_TRUE(areMade);
    return paths[size_t(camera)];
}

struct Seen {
    Camera camera = Camera::front;
    double seconds = 0;
};

Seen seenAt(const QImage& image, double x, double y)
{
    const QColor colour = image.pixelColor(int(x * image.width()), int(y * image.height()));
    const double lightness = 0.299 * colour.red() + 0.587 * colour.green() + 0.114 * colour.blue();
    return {colour.red() > colour.green() + 20 ? Camera::rear : Camera::front,
        (16 + lightness * 219 / 255 - 60) / 60};
}

class TwoCamerasTest : public RealPlayerTest {
protected:
    void give(const std::string& first, const std::string& second)
    {
        player->setMedia(Media::mediaWithPath(first));
        player->setSecondMedia(Media::mediaWithPath(second));
    }
    bool playsBoth(const std::string& first = countedFile(Camera::front),
        const std::string& second = countedFile(Camera::rear))
    {
        give(first, second);
        player->play();
        return waitFor([this] { return player->isPlaying() && player->secondFile() != SecondFile::opening; });
    }
    bool shows(CameraView chosen)
    {
        return waitFor([&] { return player->shownCameraView() == chosen; });
    }
    bool rests(int64_t milliseconds)
    {
        player->pause();
        player->setTime(MediaTime::timeWithInt(milliseconds));
        return waitFor([this] { return !player->isSeeking(); })
            && std::abs(player->time().intValue() - milliseconds) <= 1;
    }
    /// What is on screen where each of the two is expected; the same where there is one.
    bool showsBoth(CameraView chosen, double seconds)
    {
        Seen large, other;
        const bool isSwapped = chosen == CameraView::pictureInPictureSwapped
            || chosen == CameraView::sideBySideSwapped || chosen == CameraView::second;
        const bool isSettled = waitFor([&] {
            const QImage image = shown();
            const bool isSide = chosen == CameraView::sideBySide || chosen == CameraView::sideBySideSwapped;
            large = seenAt(image, isSide ? 0.25 : 0.5, isSide ? 0.5 : 0.7);
            other = seenAt(image, isSide ? 0.75 : 0.5, isSide ? 0.5 : 0.7);
            if (const auto area = player->smallPicture())
                other = seenAt(image, area->x + area->width / 2, area->y + area->height / 2);
            const bool isOfTwo = chosen != CameraView::first && chosen != CameraView::second;
            return large.camera == (isSwapped ? Camera::rear : Camera::front)
                && other.camera == (isSwapped != isOfTwo ? Camera::rear : Camera::front)
                && std::abs(large.seconds - seconds) < 0.02 && std::abs(other.seconds - seconds) < 0.02;
        });
        EXPECT_TRUE(isSettled) << "view " << int(chosen) << " at " << seconds << ": camera "
                               << int(large.camera) << " at " << large.seconds << ", camera "
                               << int(other.camera) << " at " << other.seconds;
        return isSettled;
    }
    void choose(CameraView chosen) { player->setCameraView(chosen, CameraChoice::nextFilesToo); }
    /// The first is untouched: it plays, has its picture and comes to its own end.
    void endsAsTheFirst(int64_t length = clipLength)
    {
        ASSERT_TRUE(reachesEnd());
        EXPECT_EQ(player->time().intValue(), length);
        EXPECT_TRUE(recorder.failures.empty());
        EXPECT_FALSE(player->breaksOff());
        EXPECT_TRUE(player->hasVideoOut());
        EXPECT_FALSE(isBlack(shown()));
    }
};

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
