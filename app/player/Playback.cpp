// Playing the library's files: start, telemetry first, the player's reports, the move to the next file.

#include "app/ZVKAppDelegate.h"

#include "app/window/MainWindowOutlets.h"
#include "common/Log.h"
#include "common/Text.h"
#include "lib/PositionSlider.h"
#include "lib/TKVideoBackgroundImageView.h"
#include "media/MediaDirection.h"
#include "platform/Texts.h"
#include "platform/mpv/VideoView.h"
#include "telemetry/views/GraphView.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace {

/// The player's time reports are thinned to every third; shared by the whole process.
int32_t timeReportCounter = -1;

constexpr double endOfFile = 0.998;
constexpr int seekLabelMargin = 24;

} // namespace

bool ZVKAppDelegate::isPlaying(const platform::MediaPlayer& player) const
{
    return player.media() && player.isPlaying() && player.remainingTime().stringValue() != "00:00";
}

bool ZVKAppDelegate::hasAudio(const platform::MediaPlayer&) const
{
    return player1->media() && !player1->audioTrackIndexes().empty();
}

bool ZVKAppDelegate::reportsPlaying() const
{
    return player1->media() && player1->isPlaying();
}

bool ZVKAppDelegate::isPaused() const
{
    return player1->state() == platform::PlayerState::paused;
}

void ZVKAppDelegate::resetReadouts()
{
    outlets->videoPositionSlider->setDoubleValue(0);
    outlets->videoPositionSliderForFullScreen->setDoubleValue(0);
    outlets->gsensorXField->setText(QStringLiteral("X=+0.00"));
    outlets->gsensorYField->setText(QStringLiteral("Y=+0.00"));
    outlets->gsensorZField->setText(QStringLiteral("Z=+0.00"));
    for (QLabel* field : {outlets->speedField, outlets->longitudeField, outlets->latitudeField,
             outlets->hdopField, outlets->sateliteField})
        field->clear();
    for (QLabel* field : {outlets->timeField, outlets->timeFieldForFullScreen})
        field->clear();
}

void ZVKAppDelegate::stopPlay()
{
    forgetPendingStart();
    hideLoading();
    player1->pause();
    player1->setMedia(nullptr);
}

void ZVKAppDelegate::startTimerPlayNext()
{
    playStopTimer = desktop.dispatcher.every(1000ms, [this] { timerPlayNext(); });
}

bool ZVKAppDelegate::isKnobHeld() const
{
    return outlets->videoPositionSlider->isSliderDown()
        || outlets->videoPositionSliderForFullScreen->isSliderDown();
}

void ZVKAppDelegate::timerPlayNext()
{
    const bool isAtEnd = player1->breaksOff() || player1->position() >= endOfFile;
    if (!preparingPlayNext && !isKnobHeld() && isPaused() && isAtEnd)
        moveOn();
}

/// Plays the next file in a second, unless the user seeks, plays or stops meanwhile.
void ZVKAppDelegate::moveOn()
{
    preparingPlayNext = true;
    // A file of a folder that is no longer listed has no next one.
    if (!playsEntry(mediaIndex))
        return;
    afterForThisSeek(1.0, [this] {
        if (isKnobHeld())
            moveOn();
        else
            reachedByItself = playNext();
    });
}

void ZVKAppDelegate::showOrHideVideo()
{
    // Of a file that has only sound there is nothing to see, least of all the last picture of another one.
    video1View->setVisible((reportsPlaying() || isPaused()) && player1->hasVideoOut());
}

void ZVKAppDelegate::mediaPlayerStateChanged(platform::MediaPlayer& player)
{
    showOrHideVideo();
    if (!player.media())
        return;
    if (isPaused()) {
        didFinishPlay();
    } else if (reportsPlaying()) {
        if (waitingForPlayStart) {
            waitingForPlayStart = false;
            didStartPlayer();
        } else {
            updateAudioUI();
        }
    }
}

void ZVKAppDelegate::mediaPlayerTimeChanged(platform::MediaPlayer& player)
{
    showOrHideVideo();
    preparingPlayNext = false;
    if (!stopVideoLoadingView) {
        hideLoading();
        chooseAudioAuto();
    }
    playInfo.setIsPlaying(isPlaying(player));
    if (!player.isSeeking())
        seekLabel->hide();
    if (settleSeek())
        return;
    if (moving) {
        timeReportCounter = -1;
        if (movingPosition > 0)
            playInfo.setPosition(movingPosition);
    } else if (&player == player1.get()) {
        // Reports come one by one while the picture stands, and none of them may be missed.
        timeReportCounter = player.isPlaying() ? (timeReportCounter + 1) % 3 : 0;
        if (timeReportCounter == 0)
            playInfo.setPosition(double(player.position()));
    }
}

void ZVKAppDelegate::mediaPlayerFailed(platform::MediaPlayer& player, const std::string& why)
{
    const auto media = player.media();
    logFormat("cannot play %s: %s", media && media->url() ? media->url()->c_str() : "", why.c_str());
    forgetPendingStart();
    hideLoading();
    playInfo.setIsPlaying(false);
    outlets->videoStateLabel->setText(platform::localized("msg.cannot_play"));
    showOrHideVideo();
    if (reachedByItself) {
        passedOver += nameAtHand();
        showListState();
        moveOn();
    }
}

void ZVKAppDelegate::didStartPlayer()
{
    if (!player1->media())
        return;
    outlets->videoStateLabel->clear();
    playInfo.setSpeed(double(player1->rate()));
    playInfo.setIsPlaying(isPlaying(*player1));
    chooseAudioAuto();
    updatePlayInfoScale();
}

void ZVKAppDelegate::didFinishPlay()
{
    playInfo.setPosition(double(player1->position()));
    playInfo.setIsPlaying(isPlaying(*player1));
    if (player1->breaksOff() && !brokenOff.contains(nameAtHand())) {
        brokenOff += nameAtHand();
        showListState();
    }
}

/// The user goes elsewhere: what is left of an earlier seek, and the move to the next file, are void.
void ZVKAppDelegate::beginSeek()
{
    ++seekGeneration;
    preparingPlayNext = false;
    moving = false;
    settlingTimeIsOver = false;
    seekLabel->hide();
    afterForThisSeek(patienceSeconds, [this] { showSeeking(); });
}

/// Says where a seek leads whose picture takes its time.
void ZVKAppDelegate::showSeeking()
{
    const auto media = player1 ? player1->media() : nullptr;
    if (!media || !player1->isSeeking())
        return;
    seekLabel->setText(
        platform::localized("msg.seeking").arg(QString::fromStdString(player1->time().stringValue())));
    seekLabel->adjustSize();
    const QSize room = seekLabel->parentWidget()->size();
    seekLabel->move(
        (room.width() - seekLabel->width()) / 2, room.height() - seekLabel->height() - seekLabelMargin);
    seekLabel->show();
    seekLabel->raise();
}

void ZVKAppDelegate::syncVideoPositionDelay(double seconds)
{
    if (!player1->media())
        return;
    afterForThisSeek(seconds, [this] {
        settlingTimeIsOver = true;
        settleSeek();
    });
}

/// Ends a seek whose settling time is over and whose picture is there: what is shown is the player's own
/// position. False when there is none.
bool ZVKAppDelegate::settleSeek()
{
    if (!settlingTimeIsOver || player1->isSeeking())
        return false;
    settlingTimeIsOver = false;
    moving = false;
    timeReportCounter = -1;
    playInfo.setPosition(double(player1->position()));
    return true;
}

void ZVKAppDelegate::afterForThisSeek(double seconds, std::function<void()> work)
{
    afterForThisFile(seconds, [this, generation = seekGeneration, work = std::move(work)] {
        if (generation == seekGeneration)
            work();
    });
}

void ZVKAppDelegate::afterForThisFile(double seconds, std::function<void()> work)
{
    const auto delay = std::chrono::milliseconds(int64_t(seconds * 1000));
    desktop.dispatcher.after(delay, guarded([this, generation = fileGeneration, work = std::move(work)] {
        if (generation == fileGeneration)
            work();
    }));
}

void ZVKAppDelegate::chooseAudioAuto()
{
    const auto media = player1->media();
    playInfo.setAudioMediaDirection(hasAudio(*player1) && media ? mediaDirection(media->url()) : 2);
}

void ZVKAppDelegate::updateAudioUI()
{
    player1->setMute(false);
    player1->setVolume(int(volume));
    const QSignalBlocker silent(outlets->volumeSlider);
    outlets->volumeSlider->setValue(int(volume));
}

void ZVKAppDelegate::updateVideoUI()
{
    player1->setMedia(platform::Media::mediaWithPath(mediaList->mediaAtIndex(mediaIndex)->path()));
    outlets->player1BackgroundView->setLogoImage(platform::imageNamed(QStringLiteral("v1_front_logo")));
    showTitle();
}

void ZVKAppDelegate::showTitle()
{
    outlets->titleLabel->setText(nameAtHand());
}

QString ZVKAppDelegate::nameAtHand() const
{
    const auto media = player1->media();
    const std::string path = media ? media->url().value_or("") : "";
    return QString::fromStdString(visibleText(std::string_view(path).substr(path.rfind('/') + 1)));
}

void ZVKAppDelegate::updatePlayInfoScale()
{
    if (player1->hasVideoOut() && player1->videoSize().height > 0)
        playInfo.setScale(outlets->videoContainerView->height() / player1->videoSize().height);
}
