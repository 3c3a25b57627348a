// What the transport controls do: play and pause, seeks and jumps, volume, speed, window size.

#include "app/ZVKAppDelegate.h"

#include "app/window/MainWindowOutlets.h"
#include "common/Log.h"
#include "lib/PositionSlider.h"

#include <algorithm>

namespace {

constexpr double endOfFile = 0.998;
constexpr double jumpMs = 10000;
constexpr uint64_t maximumVolume = 200;
constexpr uint64_t volumeStep = 10;
constexpr double maximumSpeed = 2;

double lengthMs(const platform::MediaPlayer& player)
{
    return double(player.media()->length().intValue());
}

} // namespace

void ZVKAppDelegate::clickPlayButton()
{
    if (!player1->media()) {
        playFirstChoice();
        return;
    }
    if (playInfo.isPlaying()) {
        if (isPlaying(*player1))
            player1->pause();
        return;
    }
    // Its telemetry is still being read; it plays as soon as that is done.
    if (waitingForPlayStart)
        return;
    if (!isPrepared()) {
        restartMedia();
        return;
    }
    const bool breaksOff = player1->breaksOff();
    if (double(player1->position()) < endOfFile && !breaksOff) {
        player1->play();
        return;
    }
    beginSeek();
    const double slider = outlets->videoPositionSlider->doubleValue();
    const bool isReplay = breaksOff || slider >= endOfFile;
    if (isReplay && playsEntry(mediaIndex)) {
        player1->setMedia(nullptr);
        playAtIndex(mediaIndex);
    } else if (isReplay) {
        restartMedia();
    } else {
        player1->setTime(platform::MediaTime::timeWithInt(int64_t(slider * lengthMs(*player1))));
        afterForThisSeek(0.1, [this] { player1->play(); });
    }
}

void ZVKAppDelegate::videoPositionSliderMoved()
{
    const double target = playInfo.position();
    logFormat("[%s] position slider moved:%f <=> %f", "D ", playInfo.position(), target);
    playInfo.setIsPlaying(isPlaying(*player1));
    if (!player1->media() || waitingForPlayStart)
        return;
    beginSeek();
    if (target >= endOfFile) {
        player1->setTime(player1->media()->length());
        return;
    }
    const double before = double(player1->position());
    movingPosition = target;
    player1->setPosition(float(target));
    // The graph's bar follows the player's own position, which is the new one only now.
    updateGsensorUIByPlayPositon();
    if (before <= target) {
        syncVideoPositionDelay(0.3);
        return;
    }
    afterForThisSeek(0.1, [this] {
        player1->setPosition(float(movingPosition));
        syncVideoPositionDelay(0.2);
    });
}

/// A jump within the settling time of another is ignored; after that it goes on from where that one leads,
/// however long its picture takes.
bool ZVKAppDelegate::canJump() const
{
    return player1->media() && !waitingForPlayStart && (!moving || settlingTimeIsOver);
}

void ZVKAppDelegate::jumpForward()
{
    logFormat("[%s] _player1.time=%s,remainingTime.stringValue=%s", "D ",
        player1->time().stringValue().c_str(), player1->remainingTime().stringValue().c_str());
    if (!canJump())
        return;
    beginSeek();
    const double remainingSeconds = double(player1->remainingTime().intValue()) / 1000;
    if (remainingSeconds > -jumpMs / 1000) {
        player1->setTime(player1->media()->length());
        return;
    }
    moving = true;
    movingPosition = double(player1->position()) + jumpMs / lengthMs(*player1);
    player1->jumpForward(int(jumpMs / 1000));
    playInfo.setPosition(movingPosition);
    syncVideoPositionDelay(0.3);
}

void ZVKAppDelegate::jumpBackward()
{
    if (!canJump())
        return;
    beginSeek();
    if (double(player1->time().intValue()) < jumpMs) {
        player1->setTime(platform::MediaTime::nullTime());
        player1->setPosition(0);
        afterForThisSeek(0, [this] {
            player1->setPosition(0);
            syncVideoPositionDelay(0.1);
        });
        return;
    }
    moving = true;
    movingPosition = std::max(double(player1->position()) - jumpMs / lengthMs(*player1), 0.0);
    player1->setPosition(float(movingPosition));
    playInfo.setPosition(movingPosition);
    afterForThisSeek(0.2, [this] {
        player1->setPosition(float(movingPosition));
        syncVideoPositionDelay(0.1);
    });
}

void ZVKAppDelegate::volumeSliderMoved(int value)
{
    setVolume(uint64_t(std::max(value, 0)));
}

void ZVKAppDelegate::volumeUp()
{
    setVolume(std::min(volume + volumeStep, maximumVolume));
}

void ZVKAppDelegate::volumeDown()
{
    setVolume(volume > volumeStep ? volume - volumeStep : 0);
}

void ZVKAppDelegate::increaseSpeed()
{
    if (playInfo.speed() + 1 > maximumSpeed)
        return;
    player1->setRate(player1->rate() + 1);
    playInfo.setSpeed(playInfo.speed() + 1);
}

void ZVKAppDelegate::decreaseSpeed()
{
    if (playInfo.speed() <= 1)
        return;
    player1->setRate(player1->rate() - 1);
    playInfo.setSpeed(playInfo.speed() - 1);
}

void ZVKAppDelegate::sizeUp()
{
    if (player1->isPlaying())
        setVideoScaleIndex(1);
}

void ZVKAppDelegate::sizeDown()
{
    if (player1->isPlaying())
        setVideoScaleIndex(-1);
}
