#pragma once

#include "tests/support/RealPlayer.h"

enum class Camera { front, rear };

/// Each picture tells its number by its lightness, and its camera by its colour.
inline void counted(const std::string& path, Camera camera, const QString& size = "320x240", int rate = 30,
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

inline const std::string& countedFile(Camera camera)
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

inline Seen seenAt(const QImage& image, double x, double y)
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
