// Plays a drive of eight hours, a file of a minute after the other, the rear camera in the corner, with the
// pointer over slider and strip, and says how much memory the program has taken by then. Every tenth file
// comes to its end and the next follows by itself, the others are left before. usage: long_drive [TIMES]

#include "app/ZVKAppDelegate.h"
#include "bench/Film.h"
#include "lib/DriveStrip.h"
#include "lib/PositionSlider.h"
#include "lib/PreviewTip.h"
#include "lib/Style.h"
#include "platform/desktop/LinuxPlatform.h"
#include "tests/support/TempFolder.h"
#include "tools/samplecard/AviContainer.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QListView>
#include <QMouseEvent>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <functional>

namespace {

constexpr int recordings = 480;

bool waitFor(const std::function<bool()>& condition, int64_t milliseconds = 60'000)
{
    QElapsedTimer clock;
    clock.start();
    QTimer look;
    look.start(10);
    while (!condition() && clock.elapsed() < milliseconds)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return condition();
}

/// A minute's telemetry with an impact in every third recording.
SideDataWriter telemetryOf(int recording)
{
    SideDataWriter sideData;
    const int64_t start = 1716012000000 + int64_t(recording) * 60'000;
    for (int i = 0; i < 600; ++i) {
        sideData.gsensor(start + i * 100, 0, recording % 3 == 0 && i == 300 ? 512 : i % 7, 256);
        if (i % 10 == 0)
            sideData.gps({start + i * 100, 1, 3730 + (recording * 60 + i / 10) * 0.01, 12700, 54, '9', ""});
    }
    return sideData;
}

void writeDrive(const TempFolder& folder)
{
    const std::string film = folder.path("film");
    writeFilm(film, "640x360:rate=10:duration=60", "-b:v 300k -g 10");
    const std::string bytes = contents(film);
    for (int i = 0; i < recordings; ++i) {
        const auto all = std::as_bytes(std::span(bytes));
        std::vector<std::byte> avi(all.begin(), all.end());
        samplecard::embedSideData(avi, telemetryOf(i));
        char name[64];
        std::snprintf(name, sizeof name, "alwa_20240518_%02d%02d00_F.avi", 6 + i / 60, i % 60);
        folder.file(name, avi);
        std::snprintf(name, sizeof name, "alwa_20240518_%02d%02d00_R.avi", 6 + i / 60, i % 60);
        std::filesystem::create_hard_link(film, folder.path(name));
    }
    std::filesystem::remove(film);
}

double residentMegabytes()
{
    std::ifstream table("/proc/self/statm");
    long total = 0;
    long resident = 0;
    table >> total >> resident;
    return double(resident) * 4096 / 1e6;
}

void pointAt(QWidget& line, double fraction)
{
    const QPointF place(7 + fraction * (line.width() - 14), line.height() / 2.0);
    QMouseEvent move(
        QEvent::MouseMove, place, line.mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&line, &move);
}

/// False when a picture does not come.
bool sweep(QWidget& line, const PreviewTip& tip)
{
    for (int i = 0; i < 10; ++i) {
        pointAt(line, (i + 0.5) / 10);
        if (!waitFor([&] { return !tip.picture().isNull(); }, 5000))
            return false;
    }
    return true;
}

/// False when a recording does not play.
bool playDrive(ZVKAppDelegate& program)
{
    CustomWindow& window = program.mainWindow();
    const auto& tip = *window.findChild<PreviewTip*>("previewTip");
    PlaybackSession& session = program.playback();
    const auto plays = [&](int recording) {
        return session.index() == 2 * recording && session.state() == PlaybackSession::State::open
            && session.player().isPlaying() && session.player().position() > 0;
    };
    const auto showsBoth = [&] {
        return session.player().shownCameraView() == platform::CameraView::pictureInPicture;
    };
    auto& strip = *window.findChild<QWidget*>("driveStrip");
    program.clickDrivesViewButton();
    auto& drives = *window.findChild<QListView*>("drivesListView");
    emit drives.doubleClicked(drives.model()->index(0, 0));
    if (!strip.isVisible()) {
        std::fprintf(stderr, "no drive is played\n");
        return false;
    }
    for (int i = 0; i < recordings; ++i) {
        if (!waitFor([&] { return plays(i); })) {
            std::fprintf(stderr, "recording %d does not play\n", i);
            return false;
        }
        if (i == 0)
            program.nextCamera(), program.nextCamera();
        if (!waitFor(showsBoth, 5000))
            std::fprintf(stderr, "recording %d: the rear camera is missing\n", i);
        if (!sweep(*window.findChild<QWidget*>("videoPositionSlider"), tip) || !sweep(strip, tip))
            std::fprintf(stderr, "recording %d: a picture is missing\n", i);
        if ((i + 1) % 60 == 0) {
            std::printf("%3d recordings: %.0f MB\n", i + 1, residentMegabytes());
            std::fflush(stdout);
        }
        if ((i + 1) % 10 == 0)
            program.goToEnd();
        else
            program.playFollowing();
    }
    return true;
}

int play(ZVKAppDelegate& program, const TempFolder& folder, int times)
{
    const auto& drives = *program.mainWindow().findChild<QListView*>("drivesListView");
    program.openMediaDirectory(folder.path());
    if (!waitFor([&] { return drives.model()->rowCount() == 1; })) {
        std::fprintf(stderr, "no drive\n");
        return 1;
    }
    for (int i = 0; i < times; ++i) {
        if (!playDrive(program))
            return 1;
    }
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    platform::initialiseLayer();
    style::apply(application);
    const TempFolder folder;
    writeDrive(folder);
    platform::LinuxPlatform layer(folder.path());
    ZVKAppDelegate program(layer.platform(), "en");
    program.awakeFromNib();
    program.applicationDidFinishLaunching();
    const int code = play(program, folder, argc > 1 ? std::atoi(argv[1]) : 1);
    program.applicationWillTerminate();
    return code;
}
