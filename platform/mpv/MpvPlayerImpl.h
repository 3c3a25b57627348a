#pragma once

#include "platform/MediaPlayer.h"
#include "platform/mpv/MpvCameras.h"
#include "platform/mpv/MpvFile.h"
#include "platform/mpv/MpvHandle.h"
#include "platform/mpv/MpvStream.h"
#include "platform/mpv/VideoView.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <atomic>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <mpv/client.h>
#include <utility>

namespace platform {

/// The player's operations only queue commands; what mpv then does is learned from its events, and those are
/// handled on the main thread, from the event loop. Every file opened gets a new number, and whatever
/// concerns an older one is dropped.
class MpvPlayer final : public QObject, public MediaPlayer {
public:
    MpvPlayer(VideoView& view, size_t memoryBound);
    ~MpvPlayer() override;

    void setMedia(std::shared_ptr<Media> media) override;
    std::shared_ptr<Media> media() const override { return current; }
    void setSecondMedia(std::shared_ptr<Media> media) override;
    std::shared_ptr<Media> secondMedia() const override { return cameras.media; }
    SecondFile secondFile() const override;
    void setCameraView(CameraView chosen, CameraChoice choice) override;
    CameraView cameraView() const override { return cameras.wanted; }
    CameraView shownCameraView() const override { return cameras.shown; }
    bool canShow(CameraView asked) const override { return cameras.canShow(asked); }
    std::optional<PictureArea> smallPicture() const override;
    void play() override;
    void pause() override;
    void stop() override;
    bool isPlaying() const override { return state() == PlayerState::playing; }
    PlayerState state() const override;

    float position() const override;
    void setPosition(float position) override;
    MediaTime time() const override;
    void setTime(MediaTime time) override;
    MediaTime remainingTime() const override;
    float rate() const override { return speed; }
    void setRate(float rate) override;
    void jumpForward(int seconds) override;
    bool isSeeking() const override { return isOpen() && file.target.has_value(); }
    void stepFrame(int frames) override;
    bool breaksOff() const override { return isOpen() && !file.target && file.breaksOff; }

    bool hasVideoOut() const override { return videoSize().width > 0; }
    VideoSize videoSize() const override;
    void setMute(bool mute) override;
    void setVolume(int volume) override;
    std::vector<int> audioTrackIndexes() const override;
    bool saveVideoSnapshotAt(const std::string& path, int width, int height) override;
    void setDelegate(MediaPlayerDelegate* delegate) override { listener = delegate; }

private:
    enum class Phase { closed, opening, open, failed };

    // Commands.
    void load();
    void close();
    void setPaused(bool pause);
    void bringSoundBack();
    void seekTo(SeekTarget target);
    /// Sends what is to be done next, unless mpv is still busy with something.
    void next();
    void beginErrand(MpvErrand errand, bool seeks);
    void sendSeek();
    void watch();
    void watchMemory();
    bool isOpen() const { return phase == Phase::open; }

    // The second file and the views.
    void addSecond();
    void secondAnswered(const mpv_event& event);
    void secondReady(const mpv_node& trackList);
    void secondJoins();
    void secondFailed(const std::string& why);
    void secondStaysDark();
    void tellOfSecond(const std::string& why);
    void noteSecondEnd();
    void watchSecond();
    void watchPicture();
    void noteWhetherSecondIsOver();
    bool endsWithSecond();
    void removeLeftOver();
    void holdOpening(uint64_t hook);
    void applyViewBeforeOpening();
    void letOpen();
    bool fellWithSecond();
    void sendView(CameraView due);
    void askForPicture();
    void cameraArrived();
    void reportCameras();
    void outputLost();

    // Frame steps.
    void sendStep();
    void stepMade();
    void stepArrived();

    // mpv's events.
    static void wakeUp(void* self);
    void drainEvents();
    void handle(const mpv_event& event);
    void handleFileEvent(const mpv_event& event);
    void propertyChanged(const mpv_event& event);
    void answered(const mpv_event& event);
    void takeAnswer(const mpv_event_property& property);
    void beginFile();
    void playbackRestarted();
    void askBeforeOpen();
    void finishOpening();
    void errandAnswered(const mpv_event& event);
    /// Asks anew; the errand has arrived with the last answer.
    void askOfErrand(std::initializer_list<std::pair<const char*, mpv_format>> questions);
    void takeErrandAnswer(const mpv_event_property& property);
    void errandArrived();
    void seekArrived();
    /// Why the file could not be read, or the other reason if it could.
    std::string readFailureOr(const std::string& otherwise) const;
    void watchEnd();
    void ignoreEnd();
    void reachEnd();
    void restAtEnd();
    void timeChanged(double seconds);

    // Reports.
    void post(std::function<void()> report);
    void postState();
    void fail(const std::string& why);
    /// The reports are false when nothing more may be done for the file: the listener has closed it, or
    /// destroyed the player.
    bool reportState();
    bool reportTime();
    bool report(const std::function<void(MediaPlayerDelegate&)>& call);

    MpvStreams streams;
    MpvHandle mpv;
    QPointer<VideoView> view;
    MediaPlayerDelegate* listener = nullptr;
    std::shared_ptr<Media> current;
    std::atomic_flag wakeUpQueued;

    Phase phase = Phase::closed;
    MpvFile file;
    MpvCameras cameras;
    uint64_t heldOpening = 0; ///< the hook that mpv waits in
    int64_t heldSince = 0;
    int64_t errandSince = 0;
    bool paused = false;
    float speed = 1;
    std::optional<PlayerState> reported;
    QElapsedTimer clock;
    int64_t nextTimeReport = 0;
    uint64_t picturesBefore = 0;
    const size_t memoryBound;
    size_t memoryBefore = 0;
    int64_t secondDroppedAt = 0;
    QTimer watchTimer; // stopped while the player is paused

    // Numbers of requests to mpv, each used once; 0 marks those whose answer doesn't matter.
    uint64_t lastRequest = 1;
    uint64_t fileRequest = 1;
    uint64_t seekRequest = 1; ///< of the errand
    uint64_t secondRequest = 1;
    uint64_t heldRequest = 1;
    uint64_t endRequest = 1;
};

} // namespace platform
