// The start of a file: chosen or next in the list, prepared (telemetry first), played.

#include "app/player/PlaybackScreen.h"
#include "app/player/PlaybackSession.h"
#include "app/player/PlayerReports.h"
#include "common/Log.h"
#include "media/Drives.h"
#include "media/ZVKMediaList.h"
#include "platform/Texts.h"
#include "telemetry/ZVKBlackBoxData.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

/// A longer wait is shown on screen.
constexpr std::chrono::milliseconds patience(500);

/// The file may hold readings that are not shown.
bool areReadingsMissing(WalkEnd end)
{
    return end == WalkEnd::noMemory || end == WalkEnd::readError || end == WalkEnd::cannotOpen;
}

} // namespace

bool PlaybackSession::playAtIndex(int64_t index)
{
    if (mediaList.count() == 0 || isWaiting())
        return false;
    return start(std::clamp<int64_t>(index, 0, mediaList.count() - 1), {});
}

void PlaybackSession::playAgain()
{
    if (mediaIndex >= 0 && mediaIndex < mediaList.count() && !isWaiting())
        start(mediaIndex, {0, arrived.ofDrive, arrived.ofDrive, false});
}

bool PlaybackSession::start(int64_t index, const Arrival& arrival)
{
    forgetPendingStart(State::preparing);
    arrived = arrival;
    player1->stop();
    player1->setMedia(nullptr);
    mediaIndex = index;
    delegate.entryChosen(index);
    const std::string& path = mediaList.mediaAtIndex(index)->path();
    player1->setMedia(platform::Media::mediaWithPath(path));
    const auto other = otherCameraOf(mediaList.all(), size_t(index));
    bothCameras.begin(path, other ? std::optional(other->path()) : std::nullopt, arrival.goesOn);
    prepare();
    return true;
}

void PlaybackSession::playChosen(int64_t index)
{
    if (isWaiting())
        now = State::none;
    playAtIndex(index);
}

void PlaybackSession::goTo(int64_t index, const Arrival& arrival)
{
    if (index < 0 || index >= mediaList.count())
        return;
    if (index != mediaIndex || !playsEntry(index) || (!isWaiting() && !isPrepared())) {
        start(index, arrival);
        return;
    }
    if (isWaiting()) {
        arrived.seconds = arrival.seconds;
        arrived.staysPaused = arrival.staysPaused;
        arrived.ofDrive = arrival.ofDrive;
        return;
    }
    arrived.ofDrive = arrival.ofDrive;
    beginSeek();
    const auto target = platform::MediaTime::timeWithInt(int64_t(arrival.seconds * 1000));
    player1->setTime(target);
    const int64_t length = player1->media()->length().intValue();
    if (length > 0) {
        latestSeek.moveTo(std::min(double(target.intValue()) / double(length), 1.0));
        info.setPosition(*latestSeek.target());
    }
    latestSeek.settleAfter(0.3);
    if (!arrival.staysPaused && !player1->isPlaying())
        player1->play();
}

void PlaybackSession::restartMedia()
{
    if (!isWaiting())
        arrived = {};
    forgetPendingStart(State::preparing);
    prepare();
}

/// Voids everything pending for the file: extraction, start, delayed seeks, the move to the next.
void PlaybackSession::forgetPendingStart(State next)
{
    fileLife.renew();
    extractionStop.request_stop();
    beginSeek();
    now = next;
    delegate.camerasChanged();
}

void PlaybackSession::prepare()
{
    reachedByItself = false;
    startTimerPlayNext();
    delegate.titleChanged(nameAtHand());
    screen.loading().start();
    extractThenPlay();
}

void PlaybackSession::extractThenPlay()
{
    // Until its own telemetry is read, a file shows none; never that of the file before.
    clearMoment();
    dispatcher.after(patience, fileLife.guarded([this] {
        if (isWaiting())
            screen.say(platform::localized("msg.preparing").arg(nameAtHand()));
    }));
    extractionStop = {};
    dispatcher.inBackgroundThen(
        [path = *player1->media()->url(), stop = extractionStop.get_token()] {
            ZVKBlackBoxData extracted;
            extracted.ExtractStreamInformation(path.c_str(), stop);
            return extracted;
        },
        fileLife.guarded([this](ZVKBlackBoxData extracted) { startExtracted(std::move(extracted)); }));
}

void PlaybackSession::startExtracted(ZVKBlackBoxData extracted)
{
    now = State::starting;
    if (areReadingsMissing(extracted.walkEnd()))
        said.withoutReadings = nameAtHand();
    delegate.remarksChanged();
    delegate.telemetryRead(std::move(extracted));
    if (!arrived.goesOn)
        info.setSpeed(1);
    player1->setRate(float(info.speed()));
    info.setPosition(0);
    delegate.playerStarts();
    player1->play();
}

void PlaybackSession::changeAndPlay(int64_t row)
{
    logFormat("selectedRow=%ld,mediaIndex=%ld,isPlaying=%d,count=%ld", long(row), long(mediaIndex),
        int(player1->isPlaying()), long(mediaList.count()));
    if (row < 0) {
        playFirstChoice(row);
        return;
    }
    // After another folder was opened, the same row can be another file; and a file that was stopped or could
    // not be played is started anew.
    if (row != mediaIndex || !playsEntry(row) || (!isWaiting() && !isPrepared())) {
        playChosen(row);
        return;
    }
    if (isWaiting())
        return;
    beginSeek();
    if (isPaused(*player1))
        player1->setPosition(0);
    player1->play();
}

void PlaybackSession::playFirstChoice(int64_t selectedRow)
{
    if (!player1->media())
        playChosen(std::max<int64_t>(selectedRow, 0));
}

/// The next file of a drive goes on as the user plays it.
bool PlaybackSession::playFollowingByItself()
{
    const Following next = delegate.following(mediaIndex);
    return next.index >= 0 && next.index < mediaList.count() && !isWaiting()
        && start(next.index, {0, next.goesOn, next.goesOn, false});
}

bool PlaybackSession::playNext()
{
    return mediaIndex + 1 < mediaList.count() && playAtIndex(mediaIndex + 1);
}

void PlaybackSession::playEntry(int64_t row)
{
    if (row >= 0 && row < mediaList.count())
        playChosen(row);
}
