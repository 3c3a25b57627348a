#pragma once

#include "platform/mpv/MpvPlayer.h"
#include "platform/mpv/VideoView.h"
#include "tests/support/Testing.h"
#include "tests/support/WaitFor.h"

#include <QtWidgets>

using namespace platform;

constexpr int clipLength = 2000;

struct Recorder final : MediaPlayerDelegate {
    std::vector<PlayerState> states;
    std::vector<int64_t> times;
    std::vector<std::string> failures;
    std::vector<std::string> secondFailures;
    std::function<void(MediaPlayer&)> onState;
    std::function<void()> onCameras;

    void mediaPlayerStateChanged(MediaPlayer& player) override
    {
        states.push_back(player.state());
        if (onState)
            onState(player);
    }
    void mediaPlayerTimeChanged(MediaPlayer& player) override { times.push_back(player.time().intValue()); }
    void mediaPlayerFailed(MediaPlayer&, const std::string& why) override { failures.push_back(why); }
    void mediaPlayerCamerasChanged(MediaPlayer&) override
    {
        if (onCameras)
            onCameras();
    }
    void mediaPlayerSecondFailed(MediaPlayer&, const std::string& why) override
    {
        secondFailures.push_back(why);
    }
};

/// A moving test card with a tone.
inline void film(const std::string& path, const QString& size, const QStringList& options, int seconds = 2)
{
    const QString length = ":duration=" + QString::number(seconds);
    const QStringList input = {"-v", "error", "-y", "-f", "lavfi", "-i",
        "testsrc=size=" + size + ":rate=30" + length, "-f", "lavfi", "-i", "sine=440" + length, "-g", "30"};
    QProcess::execute("ffmpeg", input + options + QStringList{QString::fromStdString(path)});
}

/// 30 pictures and one key frame a second.
inline const std::string& clip()
{
    static const TempFolder folder;
    static const std::string path = [] {
        film(folder.path("clip.avi"), "160x120", {"-c:v", "mpeg4", "-c:a", "pcm_s16le"});
        return folder.path("clip.avi");
    }();
    return path;
}

inline bool isBlack(const QImage& image)
{
    int lightest = 0;
    for (int y = 0; y < image.height(); y += 8)
        for (int x = 0; x < image.width(); x += 8)
            lightest = std::max(lightest, qGray(image.pixel(x, y)));
    return lightest <= 24;
}

/// The real player in a window of its own.
class RealPlayerTest : public testing::Test {
protected:
    static constexpr float end = 1.0F;

    RealPlayerTest()
    {
        view->setParent(&window);
        window.resize(320, 240);
        view->resize(320, 240);
        window.show();
        player->setDelegate(&recorder);
    }

    void open(const std::string& path)
    {
        player->setMedia(Media::mediaWithPath(path));
        player->play();
    }
    bool plays(const std::string& path)
    {
        open(path);
        return waitFor([this] { return player->isPlaying(); });
    }
    bool fails(const std::string& path)
    {
        recorder.failures.clear();
        open(path);
        return waitFor([this] { return !recorder.failures.empty(); });
    }

    void openPaused()
    {
        open(clip());
        ASSERT_TRUE(waitFor([this] { return player->isPlaying() && view->pictures() > 0; }));
        player->pause();
        ASSERT_TRUE(waitFor([this] { return recorder.states.back() == PlayerState::paused; }));
        recorder.times.clear();
    }

    bool reachesEnd()
    {
        return waitFor(
            [this] { return player->state() == PlayerState::paused && player->position() == end; });
    }

    /// Runs the seek and gives the time that the player reports when it has arrived.
    int64_t timeAfter(const std::function<void()>& seek)
    {
        recorder.times.clear();
        seek();
        return waitFor([this] { return !recorder.times.empty(); }) ? recorder.times.back() : -1;
    }

    /// What the user sees.
    QImage shown() { return view->grab().toImage(); }

    TempFolder folder;

    QWidget window;
    std::unique_ptr<VideoView> view = std::make_unique<VideoView>();
    Recorder recorder;
    std::unique_ptr<MediaPlayer> player = makeMpvPlayer(*view);
};
