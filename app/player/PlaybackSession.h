#pragma once

#include "app/player/Cameras.h"
#include "app/player/FrameSteps.h"
#include "app/player/PlayRemarks.h"
#include "app/player/Seek.h"
#include "app/player/ZVKPlayInfo.h"
#include "common/Life.h"
#include "platform/Dispatcher.h"
#include "platform/MediaPlayer.h"

#include <cstdint>
#include <memory>
#include <stop_token>
#include <string>

class PlaybackScreen;
class ZVKBlackBoxData;
class ZVKMediaList;

/// How a file begins.
struct Arrival {
    double seconds = 0; ///< into the file
    /// It is played as a part of its drive.
    bool ofDrive = false;
    /// It goes on the file of the drive before it: rate and window stay as the user set them.
    bool goesOn = false;
    bool staysPaused = false;
};

/// What follows a file by itself.
struct Following {
    int64_t index = -1; ///< in the list; nothing follows beyond its ends
    bool goesOn = false; ///< the same drive, as in `Arrival`
};

/// Told what the panels show beside the play state, on the main thread.
class PlaybackSessionDelegate {
public:
    virtual ~PlaybackSessionDelegate() = default;
    /// The entry of the list is the file at hand now.
    virtual void entryChosen(int64_t index) = 0;
    /// The file that is shown; empty: none.
    virtual void titleChanged(const QString& name) = 0;
    /// Nothing of a moment is known until telemetry was read.
    virtual void momentCleared() = 0;
    virtual void telemetryRead(ZVKBlackBoxData read) = 0;
    /// Everything is prepared, the player is asked to play.
    virtual void playerStarts() = 0;
    virtual void remarksChanged() = 0;
    /// Another camera is on screen, or others can be shown.
    virtual void camerasChanged() { }
    /// The user holds the knob of a position slider: no move to the next file meanwhile.
    virtual bool isKnobHeld() const = 0;
    /// Asked when a file has ended or cannot be played.
    virtual Following following(int64_t index) const { return {index + 1}; }
};

/// Plays the recordings of a list one after the other: a file is chosen or reached, its telemetry is read,
/// then the player is asked, and what it reports goes into the play state. At a file's end the next one
/// follows. Main thread only.
class PlaybackSession final : public platform::MediaPlayerDelegate {
public:
    enum class State {
        none, ///< no file, or one that was stopped, given up or cannot be played
        preparing, ///< the telemetry of the file at hand is being read
        starting, ///< the player was asked to play it
        open, ///< the player has it: it plays, rests, or is at its end
        movingOn ///< the same, and the next file follows shortly
    };

    /// All but the player live longer than the session.
    PlaybackSession(platform::Dispatcher& dispatcher, std::unique_ptr<platform::MediaPlayer> player,
        const ZVKMediaList& list, PlaybackScreen& screen, PlaybackSessionDelegate& delegate);
    ~PlaybackSession() override;

    platform::MediaPlayer& player() { return *player1; }
    const platform::MediaPlayer& player() const { return *player1; }
    ZVKPlayInfo& playInfo() { return info; }
    Seek& seek() { return latestSeek; }
    Cameras& cameras() { return bothCameras; }
    State state() const { return now; }
    /// A file was started and does not play yet.
    bool isWaiting() const { return now == State::preparing || now == State::starting; }
    /// The entry of the file at hand; -1 for none, and for a file of another list.
    int64_t index() const { return mediaIndex; }
    QString nameAtHand() const;
    const PlayRemarks& remarks() const { return said; }
    /// The file at hand is the entry's.
    bool playsEntry(int64_t row) const;

    /// Starts an entry, the nearest one where there is none of that index. False when the list is empty and
    /// while another start is pending.
    bool playAtIndex(int64_t index);
    bool playNext();
    /// The file at hand from its start, as a part of its drive where it was one.
    void playAgain();
    // What the user chooses takes the place of a start that is pending.
    /// A row of the list; beyond its ends nothing happens.
    void playEntry(int64_t row);
    /// The selected row (-1: none): starts it, or begins again with it where it plays already.
    void changeAndPlay(int64_t selectedRow);
    /// Without a file at hand: the row that is selected, otherwise the first.
    void playFirstChoice(int64_t selectedRow);
    /// The user goes to a place of an entry: in the file at hand, else the entry is started there, in place
    /// of a start that is pending.
    void goTo(int64_t index, const Arrival& arrival);
    /// How the file at hand began.
    const Arrival& arrival() const { return arrived; }
    /// Starts the file at hand, telemetry first, wherever the list is by now: from its beginning, or from
    /// where a start that waits leads.
    void restartMedia();
    /// The file is open in the player and its telemetry is the one on screen.
    bool isPrepared() const;
    /// The user seeks: voids an earlier seek and the pending move to the next file.
    void beginSeek();
    /// One picture on (1) or back (-1) in a file that is prepared; the file rests there, also at its end.
    void stepFrame(int direction);
    bool isStepping() const { return steps.areMade(); }
    /// The next (1) or previous (-1) camera, in a file that plays or is about to.
    void changeCamera(int direction);
    bool canChangeCamera() const { return isAtHand() && bothCameras.canChange(); }
    /// Plays on from the picture that is on screen.
    void playOn();

    /// Gives up the file that is being prepared.
    void giveUpStart();
    void stopPlay();
    /// Ends what plays or is being prepared, with all that is shown of it.
    void closeFile(bool staysAtHand);
    /// Closes the files that the player has when they lie within the folder.
    void letGoOf(const std::string& folder);
    /// The list has other entries: the file at hand keeps its row, wherever that stands now.
    void findFileAtHand();
    /// A folder has moved: a playing file goes on. One that has not begun, or failed because its card was
    /// away, starts at the new path.
    void folderMoved(const std::string& from, const std::string& to);
    /// The window's size has changed.
    void updatePlayInfoScale();
    /// Stops and ends the player; nothing else may be called then.
    void end();
    bool hasEnded() const { return !player1; }

    void mediaPlayerStateChanged(platform::MediaPlayer& player) override;
    void mediaPlayerTimeChanged(platform::MediaPlayer& player) override;
    void mediaPlayerFailed(platform::MediaPlayer& player, const std::string& why) override;
    void mediaPlayerCamerasChanged(platform::MediaPlayer& player) override;
    void mediaPlayerSecondFailed(platform::MediaPlayer& player, const std::string& why) override;

private:
    bool isAtHand() const { return isWaiting() || isPrepared(); }
    void playChosen(int64_t index);
    bool playFollowingByItself();
    bool start(int64_t index, const Arrival& arrival);
    void prepare();
    void extractThenPlay();
    void startExtracted(ZVKBlackBoxData extracted);
    void forgetPendingStart(State next);
    void clearMoment();
    void didStartPlayer();
    void didFinishPlay();
    void startTimerPlayNext();
    void timerPlayNext();
    void moveOn();
    void chooseAudioAuto();

    platform::Dispatcher& dispatcher;
    const ZVKMediaList& mediaList;
    PlaybackScreen& screen;
    PlaybackSessionDelegate& delegate;
    ZVKPlayInfo info;
    std::unique_ptr<platform::MediaPlayer> player1;
    Seek latestSeek;
    FrameSteps steps;
    Cameras bothCameras;

    State now = State::none;
    int64_t mediaIndex = -1;
    /// The file was reached at the end of the one before it, not chosen.
    bool reachedByItself = false;
    Arrival arrived;
    PlayRemarks said;
    /// The player's time reports are thinned to every third.
    int32_t timeReportCounter = -1;
    std::unique_ptr<platform::Timer> playStopTimer;
    std::stop_source extractionStop;
    /// The current file, until another one is started or this one is dropped.
    Life fileLife;
};
