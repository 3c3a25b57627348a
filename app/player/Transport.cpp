#include "app/player/Transport.h"

#include "app/player/PlaybackSession.h"
#include "app/player/PlayerReports.h"
#include "common/Log.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr double jumpMs = 10000;
constexpr uint64_t maximumVolume = 200;
constexpr uint64_t volumeStep = 10;
constexpr double maximumSpeed = 2;
constexpr std::array rates = {0.25, 0.5, 1.0, 2.0, 4.0, 8.0};

double lengthMs(const platform::MediaPlayer& player)
{
    return double(player.media()->length().intValue());
}

} // namespace

Transport::Transport(PlaybackSession& played, Told listener)
    : session(played),
      told(std::move(listener))
{
}

void Transport::clickPlayButton(int64_t selectedRow, double shownPosition)
{
    platform::MediaPlayer& player = session.player();
    if (!player.media()) {
        session.playFirstChoice(selectedRow);
        return;
    }
    if (session.playInfo().isPlaying()) {
        if (isPlaying(player))
            player.pause();
        return;
    }
    // Its telemetry is still being read; it plays as soon as that is done.
    if (session.isWaiting())
        return;
    if (!session.isPrepared()) {
        session.restartMedia();
        return;
    }
    // From the last pictures on, too: its end comes, and the next file.
    if (session.isStepping()) {
        session.playOn();
        return;
    }
    const bool breaksOff = player.breaksOff();
    if (double(player.position()) < endPosition && !breaksOff) {
        player.play();
        return;
    }
    session.beginSeek();
    const bool isReplay = breaksOff || shownPosition >= endPosition;
    if (isReplay && session.playsEntry(session.index())) {
        player.setMedia(nullptr);
        session.playAgain();
    } else if (isReplay) {
        session.restartMedia();
    } else {
        player.setTime(platform::MediaTime::timeWithInt(int64_t(shownPosition * lengthMs(player))));
        session.seek().after(0.1, [&player] { player.play(); });
    }
}

void Transport::videoPositionSliderMoved(double target)
{
    platform::MediaPlayer& player = session.player();
    session.playInfo().setPosition(target);
    logFormat("[%s] position slider moved:%f <=> %f", "D ", target, target);
    session.playInfo().setIsPlaying(isPlaying(player));
    if (!player.media() || session.isWaiting())
        return;
    session.beginSeek();
    if (target >= endPosition) {
        player.setTime(player.media()->length());
        return;
    }
    const double before = double(player.position());
    player.setPosition(float(target));
    told.playerMoved();
    if (before <= target) {
        session.seek().settleAfter(0.3);
        return;
    }
    session.seek().after(0.1, [this, target] {
        session.player().setPosition(float(target));
        session.seek().settleAfter(0.2);
    });
}

bool Transport::canJump() const
{
    return session.player().media() && !session.isWaiting() && session.seek().takesJump();
}

void Transport::jumpForward()
{
    platform::MediaPlayer& player = session.player();
    logFormat("[%s] _player1.time=%s,remainingTime.stringValue=%s", "D ", player.time().stringValue().c_str(),
        player.remainingTime().stringValue().c_str());
    if (!canJump())
        return;
    session.beginSeek();
    const double remainingSeconds = double(player.remainingTime().intValue()) / 1000;
    if (remainingSeconds > -jumpMs / 1000) {
        player.setTime(player.media()->length());
        return;
    }
    const double target = double(player.position()) + jumpMs / lengthMs(player);
    session.seek().moveTo(target);
    player.jumpForward(int(jumpMs / 1000));
    session.playInfo().setPosition(target);
    session.seek().settleAfter(0.3);
}

void Transport::jumpBackward()
{
    platform::MediaPlayer& player = session.player();
    if (!canJump())
        return;
    session.beginSeek();
    Seek& seek = session.seek();
    if (double(player.time().intValue()) < jumpMs) {
        player.setTime(platform::MediaTime::nullTime());
        player.setPosition(0);
        seek.after(0, [&player, &seek] {
            player.setPosition(0);
            seek.settleAfter(0.1);
        });
        return;
    }
    const double target = std::max(double(player.position()) - jumpMs / lengthMs(player), 0.0);
    seek.moveTo(target);
    player.setPosition(float(target));
    session.playInfo().setPosition(target);
    seek.after(0.2, [&player, &seek, target] {
        player.setPosition(float(target));
        seek.settleAfter(0.1);
    });
}

void Transport::stepFrame(int direction)
{
    session.stepFrame(direction);
}

void Transport::goToStart()
{
    if (session.player().media() && !session.isWaiting())
        videoPositionSliderMoved(0);
}

void Transport::goToEnd()
{
    if (session.player().media() && !session.isWaiting())
        videoPositionSliderMoved(1);
}

void Transport::setRate(double rate)
{
    session.player().setRate(float(rate));
    session.playInfo().setSpeed(rate);
}

void Transport::increaseSpeed()
{
    const double speed = session.playInfo().speed();
    if (speed < maximumSpeed)
        setRate(speed < 1 ? 1 : maximumSpeed);
}

void Transport::decreaseSpeed()
{
    const double speed = session.playInfo().speed();
    if (speed > 1)
        setRate(speed > maximumSpeed ? maximumSpeed : 1);
}

void Transport::stepRate(int direction)
{
    const double speed = session.playInfo().speed();
    if (!session.player().media() || session.isWaiting())
        return;
    if (direction > 0) {
        const auto faster = std::ranges::upper_bound(rates, speed);
        if (faster != rates.end())
            setRate(*faster);
    } else {
        const auto slower = std::ranges::lower_bound(rates, speed);
        if (slower != rates.begin())
            setRate(*(slower - 1));
    }
}

void Transport::setVolume(uint64_t value)
{
    loudness = value;
    told.volumeChanged();
}

void Transport::volumeUp()
{
    setVolume(std::min(loudness + volumeStep, maximumVolume));
}

void Transport::volumeDown()
{
    setVolume(loudness > volumeStep ? loudness - volumeStep : 0);
}

void Transport::applyVolume()
{
    session.player().setMute(false);
    session.player().setVolume(int(loudness));
}
