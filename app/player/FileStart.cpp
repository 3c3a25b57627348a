// A file's way to its first picture: chosen or reached, prepared (telemetry first), played, or given up.

#include "app/ZVKAppDelegate.h"

#include "app/window/MainWindowOutlets.h"
#include "common/Log.h"
#include "lib/PositionSlider.h"
#include "platform/Texts.h"
#include "telemetry/views/GraphView.h"

#include <algorithm>
#include <utility>

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
    reachedByItself = false;
    selectRow(index);
    startTimerPlayNext();
    updateVideoUI();
    showLoading();
    extractThenPlay();
    return true;
}

/// What the user chooses takes the place of a start that is still pending.
bool ZVKAppDelegate::playChosen(int64_t index)
{
    waitingForPlayStart = false;
    return playAtIndex(index);
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
    reachedByItself = false;
    startTimerPlayNext();
    showTitle();
    showLoading();
    extractThenPlay();
}

void ZVKAppDelegate::extractThenPlay()
{
    // Until its own telemetry is there, a file shows no readings; never those of the file before.
    clearMoment();
    afterForThisFile(patienceSeconds, [this] { showPreparing(); });
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
    showListState();
    outlets->graphView->setGraphData(blackBoxData.m_GSensors);
    initMediaControlView();
    player1->play();
}

/// Takes from the screen what belongs to a file and a moment of it.
void ZVKAppDelegate::clearMoment()
{
    hasTelemetry = false;
    blackBoxData.clear();
    outlets->videoStateLabel->clear();
    outlets->graphView->setGraphData({});
    outlets->graphView->updateTimePosition(0);
    playInfo.setIsPlaying(false);
    playInfo.setScale(0);
    resetReadouts();
    evaluateMapScript("zavikNewRecording()");
    showListState();
}

/// Says which file is awaited, until it plays, fails or is given up.
void ZVKAppDelegate::showPreparing()
{
    if (waitingForPlayStart)
        outlets->videoStateLabel->setText(platform::localized("msg.preparing").arg(nameAtHand()));
}

void ZVKAppDelegate::giveUpStart()
{
    if (!waitingForPlayStart)
        return;
    forgetPendingStart();
    hideLoading();
    player1->stop();
    outlets->videoStateLabel->setText(platform::localized("msg.given_up").arg(nameAtHand()));
}

/// Whatever was begun for the file up to now (extraction, start, delayed seeks, the move on) is void.
void ZVKAppDelegate::forgetPendingStart()
{
    ++fileGeneration;
    extractionStop.request_stop();
    waitingForPlayStart = false;
    beginSeek();
}

void ZVKAppDelegate::initMediaControlView()
{
    waitingForPlayStart = true;
    outlets->videoPositionSlider->setDoubleValue(0);
    setVideoScaleIndex(0);
    layout->updateSideViewButton();
    playInfo.setSpeed(1);
    player1->setRate(1);
    playInfo.setPosition(0);
    resetReadouts();
}

void ZVKAppDelegate::changeAndPlay()
{
    const int64_t row = selectedRow();
    logFormat("selectedRow=%ld,mediaIndex=%ld,isPlaying=%d,count=%ld", long(row), long(mediaIndex),
        int(player1->isPlaying()), long(mediaList->count()));
    if (row < 0) {
        playFirstChoice();
        return;
    }
    // After another folder was opened, the same row can be another file; and a file that was stopped or could
    // not be played is started anew.
    if (row != mediaIndex || !playsEntry(row) || (!waitingForPlayStart && !isPrepared())) {
        playChosen(row);
        return;
    }
    if (waitingForPlayStart)
        return;
    beginSeek();
    if (isPaused())
        player1->setPosition(0);
    player1->play();
}

/// Without a file at hand: the row that is selected, otherwise the first.
void ZVKAppDelegate::playFirstChoice()
{
    if (!player1->media())
        playChosen(std::max<int64_t>(selectedRow(), 0));
}

bool ZVKAppDelegate::playNext()
{
    return mediaIndex + 1 < mediaList->count() && playAtIndex(mediaIndex + 1);
}

void ZVKAppDelegate::playPrevious()
{
    if (mediaIndex > 0)
        playChosen(mediaIndex - 1);
}

void ZVKAppDelegate::playFollowing()
{
    if (mediaIndex + 1 < mediaList->count())
        playChosen(mediaIndex + 1);
}
