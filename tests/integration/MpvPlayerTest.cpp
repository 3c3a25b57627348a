#include "platform/disks/OpenFiles.h"
#include "tests/support/HungFile.h"
#include "tests/support/RealPlayer.h"

using testing::AllOf;
using testing::Ge;
using testing::Le;

namespace {

using MpvPlayerTest = RealPlayerTest;

/// Overwrites a number of the first header of that kind.
void claim(std::string& avi, const char* header, size_t offset, uint32_t value)
{
    std::memcpy(&avi[avi.find(header) + 8 + offset], &value, sizeof value);
}

TEST_F(MpvPlayerTest, APausedFileIsOpenUntilItsMediaIsTakenAway)
{
    const std::string clips = fs::path(clip()).parent_path().native();
    openPaused();
    EXPECT_FALSE(openFilesBelow(clips).empty()) << "a card could not be unmounted";
    player->setMedia(nullptr);
    EXPECT_TRUE(waitFor([&] { return openFilesBelow(clips).empty(); }));
}

TEST_F(MpvPlayerTest, ACardThatHangsHoldsUpNoOtherFile)
{
    const TempFolder card;
    fs::copy_file(clip(), card.path("hung.avi"));
    const HungFile hung(card.path("hung.avi"));
    ASSERT_TRUE(hung.isHung);
    open(card.path("hung.avi"));
    ASSERT_TRUE(waitFor([this] { return !recorder.states.empty(); }));
    EXPECT_EQ(player->state(), PlayerState::opening);
    open(clip());
    EXPECT_TRUE(waitFor([this] { return player->isPlaying() && view->pictures() > 0; }));
}

} // namespace

TEST_F(MpvPlayerTest, PlaysToTheEndAndRestsThereWithTheLastPicture)
{
    open(clip());
    EXPECT_EQ(player->state(), PlayerState::opening);
    EXPECT_FALSE(player->isPlaying());
    bool completeWhenPlaying = false;
    recorder.onState = [&](MediaPlayer& reporting) {
        if (reporting.isPlaying())
            completeWhenPlaying = reporting.hasVideoOut() && reporting.videoSize().height == 120
                && reporting.audioTrackIndexes().size() == 1
                && reporting.media()->length().intValue() == clipLength;
    };
    ASSERT_TRUE(waitFor([this] { return view->pictures() >= 5; }));
    const QImage early = shown();
    ASSERT_TRUE(reachesEnd());

    EXPECT_TRUE(completeWhenPlaying);
    EXPECT_THAT(
        recorder.states, ElementsAre(PlayerState::opening, PlayerState::playing, PlayerState::paused));
    EXPECT_TRUE(std::is_sorted(recorder.times.begin(), recorder.times.end()));
    EXPECT_THAT(recorder.times.size(), AllOf(Ge(20U), Le(62U)));
    EXPECT_FALSE(player->isPlaying());
    EXPECT_EQ(player->remainingTime().stringValue(), "00:00");
    EXPECT_FALSE(isBlack(early));
    EXPECT_FALSE(isBlack(shown()));
    EXPECT_NE(early, shown());

    player->play();
    EXPECT_EQ(player->state(), PlayerState::paused);
    EXPECT_EQ(player->position(), end);
}

TEST_F(MpvPlayerTest, StartsAgainFromTheEndAfterASeekToTheStart)
{
    openPaused();
    const QImage atStart = shown();
    player->setTime(player->media()->length());
    ASSERT_TRUE(waitFor([this] { return recorder.times == std::vector<int64_t>{clipLength}; }));
    EXPECT_EQ(player->position(), end);
    ASSERT_TRUE(waitFor([&] { return shown() != atStart; }));
    const QImage lastPicture = shown();
    recorder = {};
    player->setPosition(0);
    player->play();
    EXPECT_TRUE(player->isPlaying());
    ASSERT_TRUE(waitFor([this] { return recorder.times.size() > 5; }));
    EXPECT_LT(recorder.times.back(), 1000);
    ASSERT_TRUE(reachesEnd());
    EXPECT_THAT(recorder.states, ElementsAre(PlayerState::playing, PlayerState::paused));
    EXPECT_TRUE(waitFor([&] { return shown() == lastPicture; }));
}

TEST_F(MpvPlayerTest, SeeksExactlyWhilePausedAndShowsThePicture)
{
    openPaused();
    const std::tuple<const char*, std::function<void()>, int64_t> seeks[] = {
        {"back, between key frames", [this] { player->setTime(MediaTime::timeWithInt(700)); }, 700},
        {"forward", [this] { player->jumpForward(1); }, 1700},
        {"no time is the start", [this] { player->setTime(MediaTime::nullTime()); }, 0},
        {"the last of several",
            [this] { player->setPosition(0.9F), player->setPosition(0.1F), player->setPosition(0.5F); },
            1000},
        {"to the end", [this] { player->setTime(MediaTime::timeWithInt(99'000)); }, clipLength},
        {"back from the end", [this] { player->setPosition(0.25F); }, 500},
        {"jump beyond the end", [this] { player->jumpForward(10); }, clipLength},
        {"not a number is the start", [this] { player->setPosition(NAN); }, 0}};
    QImage before = shown();
    for (const auto& [what, seek, milliseconds] : seeks) {
        SCOPED_TRACE(what);
        EXPECT_NEAR(static_cast<double>(timeAfter(seek)), static_cast<double>(milliseconds), 20);
        EXPECT_TRUE(waitFor([&] { return shown() != before; }));
        before = shown();
        EXPECT_FALSE(isBlack(before));
        EXPECT_EQ(recorder.times.size(), 1U);
        EXPECT_EQ(player->state(), PlayerState::paused);
        EXPECT_EQ(player->position() == end, milliseconds == clipLength);
    }
}

TEST_F(MpvPlayerTest, RemembersASeekMadeWhileOpening)
{
    open(clip());
    player->setPosition(0.5F);
    ASSERT_TRUE(waitFor([this] { return recorder.times.size() > 1; }));
    EXPECT_THAT(recorder.times.back(), AllOf(Ge(980), Le(1400)));
}

TEST_F(MpvPlayerTest, ReportsWhatCannotBePlayedAndPlaysTheNextFile)
{
    const std::string whole = contents(clip());
    const auto data = whole.find("movi") + 4;
    for (const auto& path : {folder.path("missing.avi"), folder.path(), folder.file("empty.avi"),
             folder.file("header.avi", whole.substr(0, data)),
             folder.file("garbage.avi", whole.substr(0, data) + std::string(100'000, '\x5a'))}) {
        SCOPED_TRACE(path);
        ASSERT_TRUE(fails(path));
        EXPECT_GT(recorder.failures.front().size(), 5U);
        EXPECT_EQ(recorder.states.back(), PlayerState::error);
        EXPECT_FALSE(player->isPlaying());
    }
    EXPECT_TRUE(plays(clip()));
}

TEST_F(MpvPlayerTest, DecodesOnlyWhatCamerasRecord)
{
    const std::string path = folder.path("film.avi");
    for (const auto& [codec, sound] : {std::pair("libx264", "aac"), {"mpeg4", "mp3"}, {"mjpeg", "ac3"},
             {"mjpeg", "pcm_mulaw"}, {"mjpeg", "adpcm_ima_wav"}}) {
        SCOPED_TRACE(std::string(codec) + " " + sound);
        film(path, "160x120", {"-c:v", codec, "-c:a", sound});
        ASSERT_TRUE(plays(path));
        EXPECT_EQ(player->videoSize().width, 160);
        EXPECT_EQ(player->audioTrackIndexes().size(), 1U);
    }
    for (const auto& [codec, pixels] :
        {std::pair("png", "rgb24"), {"rawvideo", "bgr24"}, {"ffv1", "yuv420p"}, {"cinepak", "rgb24"}}) {
        SCOPED_TRACE(codec);
        film(path, "160x120", {"-t", "0.2", "-c:v", codec, "-pix_fmt", pixels, "-an"});
        ASSERT_GT(fs::file_size(path), 10'000U);
        EXPECT_TRUE(fails(path));
    }
}

/// The header tells the truth, or a small size.
TEST_F(MpvPlayerTest, OpensNothingButTheOneAviFile)
{
    const std::string path = folder.path("film.avi");
    film(folder.path("film.wav"), "160x120", {"-vn"});
    fs::copy_file(clip(), path);
    ASSERT_TRUE(plays(path));
    EXPECT_EQ(player->audioTrackIndexes().size(), 1U) << "the sound beside it is not its own";

    film(folder.path("film.mkv"), "160x120", {"-c:v", "mpeg4"});
    film(folder.path("sound.avi"), "160x120", {"-vn", "-c:a", "wmav2"});
    for (const std::string& content : {contents(folder.path("film.mkv")), contents(folder.path("film.wav")),
             contents(folder.path("sound.avi")), "#EXTM3U\n" + clip() + "\n",
             "# mpv EDL v0\n" + clip() + "\n", "ffconcat version 1.0\nfile " + clip() + "\n"}) {
        SCOPED_TRACE(content.substr(0, 12));
        ASSERT_FALSE(content.empty());
        EXPECT_TRUE(fails(folder.file("stranger.avi", content)));
    }
}

TEST_F(MpvPlayerTest, RestsAtItsLastMomentWhereARecordingBreaksOff)
{
    const std::string path = folder.path("film.avi");
    film(path, "160x120", {"-c:v", "mpeg4", "-an"}, 10);
    ASSERT_TRUE(plays(path));
    player->setTime(player->media()->length());
    ASSERT_TRUE(reachesEnd());
    EXPECT_FALSE(player->breaksOff());

    // The index leads nowhere, so that nothing after the first pictures is found.
    std::string broken = contents(path);
    for (size_t entry = broken.rfind("idx1") + 8; entry + 16 <= broken.size(); entry += 16)
        broken.replace(entry + 8, 4, 4, '\xff');
    open(folder.file("film.avi", broken));
    ASSERT_TRUE(waitFor([this] { return player->breaksOff(); }));
    EXPECT_EQ(player->state(), PlayerState::paused);
    EXPECT_EQ(player->media()->length().intValue(), 10000);
    EXPECT_LT(player->position(), 0.5F);
    EXPECT_LT(player->time().intValue(), 5000);
}

TEST_F(MpvPlayerTest, RefusesPicturesThatAreTooLargeWhateverTheHeaderSays)
{
    const std::string path = folder.path("large.avi");
    film(path, "8256x4352", {"-t", "0.1", "-c:v", "mjpeg", "-an"});
    std::string large = contents(path);
    ASSERT_GT(large.size(), 100'000U);
    for (const bool lies : {false, true}) {
        SCOPED_TRACE(lies);
        for (const auto& [header, offset] : {std::pair("avih", 32U), std::pair("strf", 4U)}) {
            claim(large, header, offset, lies ? 160 : 8256);
            claim(large, header, offset + 4, lies ? 120 : 4352);
        }
        EXPECT_TRUE(fails(folder.file("large.avi", large)));
        EXPECT_EQ(view->pictures(), 0U);
    }
}

TEST_F(MpvPlayerTest, GivesUpAFileThatTakesTooMuchMemory)
{
    player.reset();
    player = makeMpvPlayer(*view, 64 << 20);
    player->setDelegate(&recorder);
    ASSERT_TRUE(plays(clip()));
    // What the file before gave back is used again, so that a small file may take nothing anew.
    const std::string taken(256 << 20, 'x');
    ASSERT_TRUE(waitFor([this] { return !recorder.failures.empty(); }));
    EXPECT_EQ(recorder.failures.front(), "It takes too much memory");
    EXPECT_EQ(player->state(), PlayerState::error);
}

TEST_F(MpvPlayerTest, ShowsNoLengthThatCannotBe)
{
    for (const uint32_t secondsAPicture : {1U, 0xFFFF'FFFFU}) {
        SCOPED_TRACE(secondsAPicture);
        std::string bytes = contents(clip());
        // dwScale, dwRate, dwLength
        for (const auto& [offset, value] : {std::pair(20U, secondsAPicture), {24U, 1U}, {32U, 0xFFFF'FFFFU}})
            claim(bytes, "strh", offset, value);
        ASSERT_TRUE(plays(folder.file("years.avi", bytes)));
        EXPECT_TRUE(player->media()->length().isNull());
        EXPECT_TRUE(player->remainingTime().isNull());
        EXPECT_EQ(player->position(), 0);
        EXPECT_LT(player->time().intValue(), 86'400'001);
    }
}

TEST_F(MpvPlayerTest, TakesPathsLiterally)
{
    for (const char* name : {"-x.avi", "http:%2f ~~.avi", "not utf-8 \xff\xfe.avi"}) {
        SCOPED_TRACE(name);
        const std::string path = folder.path(name);
        fs::copy_file(clip(), path);
        EXPECT_TRUE(plays(path));
    }
}

TEST_F(MpvPlayerTest, ForgetsReportsOfTheFileBefore)
{
    open(folder.path("missing.avi"));
    ASSERT_TRUE(plays(clip()));
    player->setPosition(0.5F);
    player->pause();
    player->setMedia(nullptr);
    recorder = {};
    open(clip());
    ASSERT_TRUE(waitFor([this] { return recorder.times.size() > 3; }));
    EXPECT_THAT(recorder.states, ElementsAre(PlayerState::opening, PlayerState::playing));
    EXPECT_LT(recorder.times.front(), 200);
    EXPECT_TRUE(recorder.failures.empty());
    player->stop();
    recorder = {};
    EXPECT_TRUE(player->time().isNull());
    EXPECT_TRUE(waitFor([this] { return !recorder.states.empty(); }));
    EXPECT_THAT(recorder.states, ElementsAre(PlayerState::stopped));
    EXPECT_TRUE(recorder.times.empty());
}

TEST_F(MpvPlayerTest, OutlivesItsView)
{
    ASSERT_TRUE(plays(clip()));
    view.reset();
    player->setPosition(0.5F);
    EXPECT_FALSE(player->saveVideoSnapshotAt(folder.path("none.png"), 0, 0));
    EXPECT_TRUE(fails(clip()));
}

TEST_F(MpvPlayerTest, KeepsTheShapeOrFillsTheView)
{
    view->resize(320, 120);
    openPaused();
    const auto leftEdgeIsBlack = [this] { return isBlack(shown().copy(0, 0, 60, 120)); };
    EXPECT_TRUE(leftEdgeIsBlack());
    view->setFillScreen(true);
    EXPECT_TRUE(waitFor([&] { return !leftEdgeIsBlack(); }));
    view->setFillScreen(false);
    EXPECT_TRUE(waitFor(leftEdgeIsBlack));
}

TEST_F(MpvPlayerTest, WritesThePictureOnScreen)
{
    EXPECT_FALSE(player->saveVideoSnapshotAt(folder.path("early.png"), 0, 0));
    openPaused();
    player->setTime(player->media()->length());
    ASSERT_TRUE(reachesEnd());
    for (const QSize size : {QSize(160, 120), QSize(100, 50)}) {
        const std::string path = folder.path("frame.jpg");
        const bool isOwn = size.width() == 160;
        EXPECT_TRUE(player->saveVideoSnapshotAt(path, isOwn ? 0 : 100, isOwn ? 0 : 50));
        const QImage image(QString::fromStdString(path));
        EXPECT_EQ(image.size(), size);
        EXPECT_FALSE(isBlack(image));
    }
    player->stop();
    EXPECT_FALSE(player->saveVideoSnapshotAt(folder.path("late.png"), 0, 0));
    EXPECT_FALSE(fs::exists(folder.path("late.png")));
}
