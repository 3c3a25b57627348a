// Playing the library's files: start, telemetry first, the player's reports, the move to the next file.

#include "app/ZVKAppDelegate.h"

#include "common/Log.h"
#include "lib/PositionSlider.h"
#include "lib/TKVideoBackgroundImageView.h"
#include "media/MediaDirection.h"
#include "platform/Texts.h"
#include "platform/VideoView.h"
#include "telemetry/GraphView.h"
#include "ui_ZVKAppDelegate.h"

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace {

/// The player's time reports are thinned to every third; shared by the whole process.
int32_t timeReportCounter = -1;

constexpr double endOfFile = 0.998;

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

bool ZVKAppDelegate::playAtIndex(int64_t index)
{
    if (mediaList->count() == 0 || waitingForPlayStart)
        return false;
    index = std::clamp<int64_t>(index, 0, mediaList->count() - 1);
    forgetPendingStart();
    waitingForPlayStart = true;
    player1->stop();
    player1->setMedia(nullptr);
    mediaIndex = index;
    selectRow(index);
    preparingPlayNext = false;
    startTimerPlayNext();
    updateVideoUI();
    showLoading();
    extractThenPlay();
    return true;
}

/// Whether the row's file is the one that the player has.
bool ZVKAppDelegate::playsEntry(int64_t row) const
{
    const auto media = player1->media();
    const ZVKMedia* entry = mediaList->mediaAtIndex(row);
    return media && entry && media->url() == entry->path();
}

/// Whether the player's file is open and its telemetry is the one on screen.
bool ZVKAppDelegate::isPrepared() const
{
    using enum platform::PlayerState;
    const auto state = player1->state();
    return hasTelemetry && (state == opening || state == buffering || state == playing || state == paused);
}

/// Starts the player's file from its beginning, telemetry first, wherever the list is by now.
void ZVKAppDelegate::restartMedia()
{
    forgetPendingStart();
    waitingForPlayStart = true;
    startTimerPlayNext();
    showTitle();
    showLoading();
    extractThenPlay();
}

void ZVKAppDelegate::extractThenPlay()
{
    // Until its own telemetry is there, a file shows no readings; never those of the file before.
    hasTelemetry = false;
    outlets->videoStateLabel->clear();
    blackBoxData.clear();
    playInfo.setIsPlaying(false);
    resetReadouts();
    evaluateMapScript("zavikNewRecording()");
    extractionStop = {};
    desktop.dispatcher.inBackground([this, path = *player1->media()->url(), generation = fileGeneration,
                                        stop = extractionStop.get_token(), &dispatcher = desktop.dispatcher,
                                        life = std::weak_ptr(alive)] {
        auto extracted = std::make_shared<ZVKBlackBoxData>();
        extracted->ExtractStreamInformation(path.c_str(), stop);
        dispatcher.onMain([this, life, generation, extracted] {
            if (!life.expired() && generation == fileGeneration)
                startExtracted(std::move(*extracted));
        });
    });
}

void ZVKAppDelegate::startExtracted(ZVKBlackBoxData extracted)
{
    blackBoxData = std::move(extracted);
    hasTelemetry = true;
    outlets->graphView->setGraphData(blackBoxData.m_GSensors);
    initMediaControlView();
    player1->play();
}

/// Whatever was begun for the file up to now (extraction, start, delayed seeks, the move on) is void.
void ZVKAppDelegate::forgetPendingStart()
{
    ++fileGeneration;
    extractionStop.request_stop();
    waitingForPlayStart = false;
    preparingPlayNext = false;
    moving = false;
}

void ZVKAppDelegate::initMediaControlView()
{
    waitingForPlayStart = true;
    outlets->videoPositionSlider->setDoubleValue(0);
    setVideoScaleIndex(0);
    updateSideViewButton();
    playInfo.setSpeed(1);
    player1->setRate(1);
    playInfo.setPosition(0);
    resetReadouts();
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

void ZVKAppDelegate::changeAndPlay()
{
    const int64_t row = selectedRow();
    logFormat("selectedRow=%ld,mediaIndex=%ld,isPlaying=%d,count=%ld", long(row), long(mediaIndex),
        int(player1->isPlaying()), long(mediaList->count()));
    if (row < 0)
        return;
    // After another folder was opened, the same row can be another file; and a file that was stopped or could
    // not be played is started anew.
    if (row != mediaIndex || !playsEntry(row) || (!waitingForPlayStart && !isPrepared())) {
        if (!playAtIndex(row))
            selectRow(mediaIndex);
        return;
    }
    if (waitingForPlayStart)
        return;
    if (isPaused())
        player1->setPosition(0);
    player1->play();
}

bool ZVKAppDelegate::playNext()
{
    return mediaIndex + 1 < mediaList->count() && playAtIndex(mediaIndex + 1);
}

void ZVKAppDelegate::playPrevious()
{
    if (mediaIndex > 0)
        playAtIndex(mediaIndex - 1);
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

void ZVKAppDelegate::timerPlayNext()
{
    const bool isHeld = outlets->videoPositionSlider->isSliderDown()
        || outlets->videoPositionSliderForFullScreen->isSliderDown();
    if (preparingPlayNext || isHeld || !isPaused() || player1->position() < endOfFile)
        return;
    preparingPlayNext = true;
    // A file of a folder that is no longer listed has no next one.
    if (playsEntry(mediaIndex))
        afterForThisFile(1.0, [this] { playNext(); });
}

void ZVKAppDelegate::showOrHideVideo()
{
    video1View->setVisible(reportsPlaying() || isPaused());
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
    if (moving) {
        timeReportCounter = -1;
        if (movingPosition > 0)
            playInfo.setPosition(movingPosition);
    } else if (&player == player1.get()) {
        timeReportCounter = (timeReportCounter + 1) % 3;
        if (timeReportCounter == 0)
            playInfo.setPosition(double(player.position()));
    }
}

void ZVKAppDelegate::mediaPlayerFailed(platform::MediaPlayer& player, const std::string& why)
{
    const auto media = player.media();
    logFormat("cannot play %s: %s", media && media->url() ? media->url()->c_str() : "", why.c_str());
    waitingForPlayStart = false;
    hideLoading();
    playInfo.setIsPlaying(false);
    outlets->videoStateLabel->setText(platform::localized("msg.cannot_play"));
    showOrHideVideo();
}

void ZVKAppDelegate::didStartPlayer()
{
    if (!player1->media())
        return;
    playInfo.setSpeed(double(player1->rate()));
    playInfo.setIsPlaying(isPlaying(*player1));
    chooseAudioAuto();
    if (playInfo.scale() == 0 && player1->hasVideoOut() && player1->videoSize().width > 0)
        updatePlayInfoScale();
}

void ZVKAppDelegate::didFinishPlay()
{
    playInfo.setPosition(double(player1->position()));
    playInfo.setIsPlaying(isPlaying(*player1));
}

void ZVKAppDelegate::syncVideoPositionDelay(double seconds)
{
    if (player1->media())
        afterForThisFile(seconds, [this] { moving = false; });
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

/// The name of the player's file.
void ZVKAppDelegate::showTitle()
{
    const std::string path = player1->media()->url().value_or("");
    outlets->titleLabel->setText(QString::fromStdString(path.substr(path.rfind('/') + 1)));
}

void ZVKAppDelegate::updatePlayInfoScale()
{
    if (player1->isPlaying() && player1->hasVideoOut() && player1->videoSize().height > 0)
        playInfo.setScale(outlets->videoContainerView->height() / player1->videoSize().height);
}
