#include "platform/mpv/MpvPlayer.h"

#include "platform/mpv/MpvPlayerImpl.h"
#include "platform/mpv/OwnMemory.h"
#include "platform/mpv/TimeLimit.h"
#include "platform/mpv/VideoSnapshot.h"

#include <algorithm>
#include <cmath>
#include <mpv/client.h>
#include <utility>

namespace platform {

namespace {

MediaTime milliseconds(double seconds)
{
    return MediaTime::timeWithInt(std::llround(seconds * 1000));
}

} // namespace

std::unique_ptr<MediaPlayer> makeMpvPlayer(VideoView& view, size_t memoryBound)
{
    return std::make_unique<MpvPlayer>(view, memoryBound);
}

MpvPlayer::MpvPlayer(VideoView& videoView, size_t bound)
    : mpv(makeMpvHandle()),
      view(&videoView),
      memoryBound(bound)
{
    constexpr auto watchInterval = std::chrono::milliseconds(250);
    clock.start();
    watchTimer.setInterval(watchInterval);
    connect(&watchTimer, &QTimer::timeout, this, [this] { watch(); });
    if (mpv && !streams.addTo(mpv.get()))
        mpv.reset();
    if (mpv)
        mpv_set_wakeup_callback(mpv.get(), wakeUp, this);
    if (mpv)
        mpv_hook_add(mpv.get(), 0, "on_preloaded", 0);
}

MpvPlayer::~MpvPlayer()
{
    if (!mpv)
        return;
    constexpr auto patience = std::chrono::seconds(3);
    const TimeLimit limit(patience);
    mpv_set_wakeup_callback(mpv.get(), nullptr, nullptr);
    if (view) {
        view->outputReplaced = nullptr;
        view->detach(mpv.get());
    }
    letOpen();
    streams.giveUp(MpvRole::second);
    mpv.reset();
}

void MpvPlayer::setMedia(std::shared_ptr<Media> media)
{
    close();
    current = std::move(media);
    cameras.media.reset();
    cameras.second = SecondFile::none;
    if (!cameras.isKept)
        cameras.wanted = CameraView::first;
}

void MpvPlayer::play()
{
    if (!current || !current->url())
        return;
    if (phase == Phase::closed || phase == Phase::failed)
        load();
    else if (!file.ended || file.target)
        setPaused(false);
}

void MpvPlayer::pause()
{
    if (phase == Phase::opening || isOpen())
        setPaused(true);
}

void MpvPlayer::stop()
{
    close();
}

void MpvPlayer::load()
{
    close();
    if (!(mpv && view && view->attach(mpv.get()))) {
        phase = Phase::failed;
        post([this] { fail("The player can't be started"); });
        return;
    }
    view->outputReplaced = [this] { outputLost(); };
    picturesBefore = view->pictures();
    phase = Phase::opening;
    secondDroppedAt = 0;
    memoryBefore = ownMemory();
    watchTimer.start();
    fileRequest = ++lastRequest;
    setMpvFlag(mpv.get(), "pause", false);
    const std::string address = streams.announce(*current->url(), MpvRole::first);
    sendMpvCommand(mpv.get(), fileRequest, {"loadfile", address.c_str(), "replace"});
    postState();
}

void MpvPlayer::close()
{
    if (phase == Phase::closed)
        return;
    if (mpv) {
        mpv_unobserve_property(mpv.get(), fileRequest);
        mpv_unobserve_property(mpv.get(), endRequest);
        letOpen();
        sendMpvCommand(mpv.get(), 0, {"stop"});
        // They would hold for the next file, too.
        sendMpvCommand(mpv.get(), 0, {"set", "lavfi-complex", ""});
        sendMpvCommand(mpv.get(), 0, {"set", "vid", "auto"});
        sendMpvCommand(mpv.get(), 0, {"set", "aid", "auto"});
        sendMpvCommand(mpv.get(), 0, {"set", "end", "none"});
        streams.giveUp(MpvRole::first);
        streams.giveUp(MpvRole::second);
    }
    fileRequest = seekRequest = endRequest = secondRequest = heldRequest = ++lastRequest;
    phase = Phase::closed;
    watchTimer.stop();
    file = {};
    cameras.fileClosed();
    paused = false;
    nextTimeReport = 0;
    reported.reset();
    postState();
}

void MpvPlayer::watch()
{
    watchSecond();
    watchMemory();
    const bool isBusy = file.target || file.stage != SeekStage::none || cameras.second == SecondFile::opening;
    if (isOpen() && paused && !isBusy)
        watchTimer.stop();
}

/// Decoders and demuxers have bounds of their own; this one limits the sum.
void MpvPlayer::watchMemory()
{
    // The core needs a moment to let go of the second file.
    constexpr int64_t patience = 2000;
    if (ownMemory() <= memoryBefore + memoryBound)
        return;
    if (cameras.isAsked && cameras.second != SecondFile::failed) {
        secondDroppedAt = clock.elapsed();
        secondFailed("It takes too much memory");
    } else if (secondDroppedAt == 0 || clock.elapsed() > secondDroppedAt + patience) {
        fail("It takes too much memory");
    }
}

void MpvPlayer::setPaused(bool pause)
{
    paused = pause;
    watchTimer.start();
    if (!pause) {
        file.steps = 0;
        file.isAtLastPicture = file.isTimeHeld = false;
        // mpv pauses after the step, and may be done with it by now.
        if (file.errand == MpvErrand::step && file.stage != SeekStage::none) {
            postState();
            return;
        }
        if (isOpen() && file.stage == SeekStage::none)
            watchEnd();
        if (std::exchange(file.isSilenced, false))
            bringSoundBack();
    }
    setMpvFlag(mpv.get(), "pause", pause);
    postState();
}

/// mpv may wait for good for a sound that comes back near the end, so it begins anew where it is.
void MpvPlayer::bringSoundBack()
{
    if (file.audioTracks.empty())
        return;
    sendMpvCommand(mpv.get(), 0, {"set", "aid", std::to_string(file.audioTracks.front()).c_str()});
    if (!file.target)
        seekTo({SeekTarget::Unit::seconds, file.time});
}

PlayerState MpvPlayer::state() const
{
    switch (phase) {
    case Phase::closed:
        return PlayerState::stopped;
    case Phase::opening:
        return PlayerState::opening;
    case Phase::failed:
        return PlayerState::error;
    case Phase::open:
        break;
    }
    return paused ? PlayerState::paused : PlayerState::playing;
}

float MpvPlayer::position() const
{
    return static_cast<float>(file.currentFraction());
}

void MpvPlayer::setPosition(float position)
{
    const double fraction = std::isnan(position) ? 0 : std::clamp<double>(position, 0, 1);
    seekTo({SeekTarget::Unit::fraction, fraction});
}

MediaTime MpvPlayer::time() const
{
    return isOpen() ? milliseconds(file.currentTime()) : MediaTime::nullTime();
}

void MpvPlayer::setTime(MediaTime time)
{
    seekTo({SeekTarget::Unit::seconds, static_cast<double>(std::max<int64_t>(time.intValue(), 0)) / 1000});
}

MediaTime MpvPlayer::remainingTime() const
{
    if (!isOpen() || file.duration <= 0)
        return MediaTime::nullTime();
    return milliseconds(std::min(file.currentTime() - file.duration, 0.0));
}

void MpvPlayer::setRate(float rate)
{
    if (!mpv || !(rate > 0) || std::isinf(rate))
        return;
    speed = rate;
    setMpvNumber(mpv.get(), "speed", rate);
}

void MpvPlayer::jumpForward(int seconds)
{
    if (isOpen())
        seekTo({SeekTarget::Unit::seconds, std::max(file.currentTime() + seconds, 0.0)});
}

void MpvPlayer::seekTo(SeekTarget target)
{
    if (phase != Phase::opening && !isOpen())
        return;
    // A seek to the same place is pending already.
    if (isOpen() && file.target == target && !file.targetIsNewer)
        return;
    file.target = target;
    file.targetIsNewer = true;
    file.steps = 0;
    watchTimer.start();
    next();
}

void MpvPlayer::sendSeek()
{
    const auto target = *file.target;
    const bool byFraction = target.unit == SeekTarget::Unit::fraction && file.duration <= 0;
    double value = byFraction ? target.value * 100 : file.seconds(target);
    if (file.duration > 0)
        value = std::min(value, file.duration);
    file.targetIsNewer = false;
    file.isAtLastPicture = false;
    beginErrand(MpvErrand::seek, true);
    sendMpvCommand(mpv.get(), seekRequest,
        {"seek", std::to_string(value).c_str(), byFraction ? "absolute-percent+exact" : "absolute+exact"});
}

VideoSize MpvPlayer::videoSize() const
{
    return isOpen() ? file.size : VideoSize();
}

void MpvPlayer::setMute(bool mute)
{
    if (mpv)
        setMpvFlag(mpv.get(), "mute", mute);
}

void MpvPlayer::setVolume(int volume)
{
    // mpv's volume is the cube root of the amplitude.
    if (mpv)
        setMpvNumber(mpv.get(), "volume", 100 * std::cbrt(std::clamp(volume, 0, 200) / 100.0));
}

std::vector<int> MpvPlayer::audioTrackIndexes() const
{
    return isOpen() ? file.audioTracks : std::vector<int>();
}

bool MpvPlayer::saveVideoSnapshotAt(const std::string& path, int width, int height)
{
    if (!hasVideoOut() || !view || view->pictures() == picturesBefore)
        return false;
    QImage picture = view->picture(QSize(qRound(file.size.width), qRound(file.size.height)));
    if (!picture.isNull() && width > 0 && height > 0)
        picture = picture.scaled(width, height, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return writeVideoSnapshot(picture, path);
}

} // namespace platform
