#include "app/player/PlaybackSession.h"

#include "app/player/PlaybackScreen.h"
#include "app/player/PlayerReports.h"
#include "common/Log.h"
#include "common/Text.h"
#include "media/MediaDirection.h"
#include "media/MediaPath.h"
#include "media/ZVKMediaList.h"
#include "platform/Texts.h"
#include "platform/disks/MountTable.h"

#include <utility>

using namespace std::chrono_literals;

PlaybackSession::PlaybackSession(platform::Dispatcher& queue, std::unique_ptr<platform::MediaPlayer> player,
    const ZVKMediaList& list, PlaybackScreen& seenOn, PlaybackSessionDelegate& listener)
    : dispatcher(queue),
      mediaList(list),
      screen(seenOn),
      delegate(listener),
      player1(std::move(player)),
      latestSeek(dispatcher, *player1,
          {[this](platform::MediaTime target) { screen.showSeeking(target); },
              [this] { screen.hideSeeking(); },
              [this] {
                  timeReportCounter = -1;
                  info.setPosition(double(player1->position()));
              }}),
      steps(*player1, screen),
      bothCameras(*player1,
          {[this] { delegate.camerasChanged(); }, [this](const QString& text) { screen.remark(text); }})
{
    player1->setDelegate(this);
}

PlaybackSession::~PlaybackSession() = default;

void PlaybackSession::end()
{
    stopPlay();
    latestSeek.end();
    playStopTimer.reset();
    player1->setDelegate(nullptr);
    player1.reset();
}

QString PlaybackSession::nameAtHand() const
{
    const auto media = player1->media();
    const std::string path = media ? media->url().value_or("") : "";
    return QString::fromStdString(visibleText(std::string_view(path).substr(path.rfind('/') + 1)));
}

bool PlaybackSession::playsEntry(int64_t row) const
{
    const auto media = player1->media();
    const ZVKMedia* entry = mediaList.mediaAtIndex(row);
    return media && entry && media->url() == entry->path();
}

void PlaybackSession::letGoOf(const std::string& folder)
{
    const auto media = player1->media();
    const auto second = player1->secondMedia();
    if (platform::isWithin(media ? media->url().value_or("") : "", folder))
        closeFile(false);
    else if (second && platform::isWithin(second->url().value_or(""), folder))
        player1->setSecondMedia(nullptr);
}

bool PlaybackSession::isPrepared() const
{
    using enum platform::PlayerState;
    const auto state = player1->state();
    return (now == State::open || now == State::movingOn)
        && (state == opening || state == buffering || state == playing || state == paused);
}

void PlaybackSession::beginSeek()
{
    if (now == State::movingOn)
        now = State::open;
    steps.end();
    latestSeek.begin();
}

void PlaybackSession::stepFrame(int direction)
{
    if (!isPrepared())
        return;
    if (!steps.areMade())
        beginSeek();
    steps.step(direction);
}

void PlaybackSession::changeCamera(int direction)
{
    if (isAtHand())
        bothCameras.change(direction);
}

void PlaybackSession::playOn()
{
    steps.end();
    player1->play();
}

void PlaybackSession::giveUpStart()
{
    if (!isWaiting())
        return;
    forgetPendingStart(State::none);
    screen.loading().stop();
    player1->stop();
    screen.say(platform::localized("msg.given_up").arg(nameAtHand()));
}

void PlaybackSession::stopPlay()
{
    forgetPendingStart(State::none);
    screen.loading().stop();
    player1->pause();
    player1->setMedia(nullptr);
}

void PlaybackSession::closeFile(bool staysAtHand)
{
    if (isWaiting())
        screen.loading().stop();
    forgetPendingStart(State::none);
    player1->stop();
    if (!staysAtHand) {
        player1->setMedia(nullptr);
        mediaIndex = -1;
    }
    clearMoment();
    said = {};
    delegate.titleChanged({});
    screen.showPictureOf(*player1);
}

/// Clears what the screen shows of a file and a moment.
void PlaybackSession::clearMoment()
{
    said.withoutReadings.clear();
    screen.say({});
    screen.remark({});
    info.setIsPlaying(false);
    info.setScale(0);
    delegate.momentCleared();
    delegate.remarksChanged();
}

void PlaybackSession::findFileAtHand()
{
    mediaIndex = -1;
    for (int64_t row = 0; player1->media() && row < mediaList.count() && mediaIndex < 0; ++row)
        if (playsEntry(row))
            mediaIndex = row;
    if (mediaIndex >= 0)
        delegate.entryChosen(mediaIndex);
}

void PlaybackSession::folderMoved(const std::string& from, const std::string& to)
{
    const std::string before = standardizedPath(from) + "/";
    const auto moves = [&](const std::shared_ptr<platform::Media>& media) {
        if (!media || !media->url().value_or("").starts_with(before))
            return false;
        media->moveTo(to + "/" + media->url()->substr(before.size()));
        return true;
    };
    moves(player1->secondMedia());
    if (!moves(player1->media()))
        return;
    if (!isWaiting() && player1->state() != platform::PlayerState::error)
        return;
    player1->stop();
    restartMedia();
}

void PlaybackSession::mediaPlayerStateChanged(platform::MediaPlayer& player)
{
    screen.showPictureOf(player);
    if (!player.media())
        return;
    if (isPaused(player)) {
        didFinishPlay();
    } else if (reportsPlaying(player)) {
        if (isWaiting())
            didStartPlayer();
        else // reported again, the player takes mute and volume again
            info.setAudioMediaDirection(info.audioMediaDirection());
    }
}

void PlaybackSession::didStartPlayer()
{
    now = State::open;
    screen.say({});
    info.setSpeed(double(player1->rate()));
    if (arrived.staysPaused)
        player1->pause();
    if (arrived.seconds > 0)
        player1->setTime(platform::MediaTime::timeWithInt(int64_t(arrived.seconds * 1000)));
    info.setIsPlaying(isPlaying(*player1));
    chooseAudioAuto();
    mediaPlayerCamerasChanged(*player1);
}

void PlaybackSession::didFinishPlay()
{
    info.setPosition(double(player1->position()));
    info.setIsPlaying(isPlaying(*player1));
    if (player1->breaksOff() && !said.brokenOff.contains(nameAtHand())) {
        said.brokenOff += nameAtHand();
        delegate.remarksChanged();
    }
}

void PlaybackSession::mediaPlayerTimeChanged(platform::MediaPlayer& player)
{
    screen.showPictureOf(player);
    if (now == State::movingOn)
        now = State::open;
    if (screen.loading().isAwaited()) {
        screen.loading().stop();
        chooseAudioAuto();
    }
    info.setIsPlaying(isPlaying(player));
    steps.playerReported();
    if (latestSeek.playerReported())
        return;
    if (const auto target = latestSeek.target()) {
        timeReportCounter = -1;
        if (*target > 0)
            info.setPosition(*target);
        return;
    }
    // While paused each time report counts, so none is skipped.
    timeReportCounter = player.isPlaying() ? (timeReportCounter + 1) % 3 : 0;
    if (timeReportCounter == 0)
        info.setPosition(double(player.position()));
}

void PlaybackSession::mediaPlayerFailed(platform::MediaPlayer& player, const std::string& why)
{
    const auto media = player.media();
    logFormat("cannot play %s: %s", media && media->url() ? media->url()->c_str() : "", why.c_str());
    forgetPendingStart(State::none);
    screen.loading().stop();
    info.setIsPlaying(false);
    screen.say(platform::localized("msg.cannot_play"));
    screen.showPictureOf(player);
    if (reachedByItself) {
        said.passedOver += nameAtHand();
        delegate.remarksChanged();
        moveOn();
    }
}

void PlaybackSession::mediaPlayerCamerasChanged(platform::MediaPlayer& player)
{
    screen.showPictureOf(player);
    bothCameras.reported();
    updatePlayInfoScale();
}

void PlaybackSession::mediaPlayerSecondFailed(platform::MediaPlayer&, const std::string& why)
{
    bothCameras.failed(why);
}

void PlaybackSession::startTimerPlayNext()
{
    playStopTimer = dispatcher.every(1000ms, [this] { timerPlayNext(); });
}

void PlaybackSession::timerPlayNext()
{
    const bool isAtEnd = player1->breaksOff() || player1->position() >= endPosition;
    const bool isHeld = delegate.isKnobHeld() || steps.areMade();
    if (now == State::open && !isHeld && isPaused(*player1) && isAtEnd)
        moveOn();
}

/// Plays the next file in a second, unless the user seeks, plays or stops meanwhile.
void PlaybackSession::moveOn()
{
    now = State::movingOn;
    // A file of a folder that is no longer listed has no next one.
    if (!playsEntry(mediaIndex))
        return;
    latestSeek.after(1.0, [this] {
        if (delegate.isKnobHeld())
            moveOn();
        else
            reachedByItself = playFollowingByItself();
    });
}

void PlaybackSession::chooseAudioAuto()
{
    const auto media = player1->media();
    info.setAudioMediaDirection(hasAudio(*player1) ? mediaDirection(media->url()) : 2);
}

void PlaybackSession::updatePlayInfoScale()
{
    if (player1->hasVideoOut() && player1->videoSize().height > 0)
        info.setScale(screen.heightOf(player1->videoSize()) / player1->videoSize().height);
}
