// Plays two recordings at once in a window of 1280x720, and says how much processor time ten seconds took,
// and how long changes of the camera do until the new picture is there. usage: two_cameras FRONT REAR;
// two_cameras --graph: the graph of both as files of 1920x1080

#include "platform/mpv/MpvCameras.h"
#include "platform/mpv/MpvPlayer.h"
#include "platform/mpv/VideoView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <string>

using namespace platform;

namespace {

bool waitFor(const std::function<bool()>& condition, int64_t milliseconds = 20'000)
{
    QElapsedTimer clock;
    clock.start();
    while (!condition() && clock.elapsed() < milliseconds)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return condition();
}

double processorSeconds()
{
    return double(std::clock()) / CLOCKS_PER_SEC;
}

/// The median and the longest of several changes, in milliseconds.
void sayChanges(MediaPlayer& player, VideoView& view)
{
    for (const CameraView other :
        {CameraView::second, CameraView::pictureInPicture, CameraView::sideBySide}) {
        std::vector<int64_t> taken;
        for (int i = 0; i < 20; ++i) {
            const CameraView next = i % 2 == 0 ? other : CameraView::first;
            waitFor([] { return false; }, 200);
            QElapsedTimer clock;
            clock.start();
            player.setCameraView(next, CameraChoice::nextFilesToo);
            waitFor([&] { return player.shownCameraView() == next; });
            const auto before = view.pictures();
            waitFor([&] { return view.pictures() > before; });
            taken.push_back(clock.elapsed());
        }
        std::sort(taken.begin(), taken.end());
        std::printf("first camera and view %d: %lld ms at the median, %lld ms at most\n", int(other),
            static_cast<long long>(taken[taken.size() / 2]), static_cast<long long>(taken.back()));
    }
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc < 3) {
        const VideoSize size{1920, 1080};
        std::puts(cameraGraph(CameraView::pictureInPicture, {1, 2, size, size, {}}).c_str());
        return 0;
    }
    QApplication application(argc, argv);
    QTimer look;
    look.start(5);
    VideoView view;
    view.resize(1280, 720);
    view.show();
    const auto player = makeMpvPlayer(view);
    player->setMute(true);
    if (argc > 3)
        player->setRate(std::stof(argv[3]));
    player->setMedia(Media::mediaWithPath(argv[1]));
    player->setSecondMedia(Media::mediaWithPath(argv[2]));
    player->setCameraView(CameraView::pictureInPicture, CameraChoice::nextFilesToo);
    player->play();
    if (!waitFor(
            [&] { return player->shownCameraView() == CameraView::pictureInPicture && player->isPlaying(); }))
        return 1;
    look.stop();
    waitFor([] { return false; }, 3000);
    const double before = processorSeconds();
    const auto pictures = view.pictures();
    waitFor([] { return false; }, 10'000);
    std::printf("%.0f ms of processor time, %lld pictures\n", (processorSeconds() - before) * 1000,
        static_cast<long long>(view.pictures() - pictures));
    look.start(5);
    sayChanges(*player, view);
}
