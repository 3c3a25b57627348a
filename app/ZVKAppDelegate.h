#pragma once

#include "app/frame/FrameCapture.h"
#include "app/player/ZVKPlayInfo.h"
#include "app/window/CustomWindow.h"
#include "app/window/MainWindowControls.h"
#include "app/window/MainWindowLayout.h"
#include "app/window/SecondaryWindows.h"
#include "cardtools/volumes/PathFollower.h"
#include "media/ZVKMediaList.h"
#include "platform/Platform.h"
#include "platform/WebView.h"
#include "settings/window/ZVKSettingController.h"
#include "telemetry/ZVKBlackBoxData.h"

#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>

class MediaTableModel;
class QLabel;
class QTableView;

struct MainWindowOutlets;
namespace platform {
class VideoView;
}

/// The application's delegate and the controller of its main window.
/// It owns the library, the one player with its view, the play state and the telemetry of the file that
/// plays. The player, the timers and the user's controls only write into the play state; the observation
/// table turns each report into window updates. Main thread only.
class ZVKAppDelegate final : public platform::MediaPlayerDelegate,
                             public ZVKMediaListDelegate,
                             public viewControllerForZVKSettingDelegate {
public:
    /// `language` is the interface language: "en", "ko", or "auto" to follow the system.
    ZVKAppDelegate(platform::Platform& desktop, std::string language);
    ~ZVKAppDelegate() override;

    // Start and end: in this order.
    void awakeFromNib();
    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    CustomWindow& mainWindow() { return *window; }
    /// Tells that a background job could not be done.
    void tellFailedJob();

    /// Shows speeds in miles per hour (1) or kilometres per hour (0); any other value changes nothing.
    void setDisplayMile(uint32_t value) override;
    bool isInUse(const std::string& mountPath) const override;
    void letGoOf(const std::string& mountPath) override;
    void cardFormatted(const std::string& from, const std::string& to) override;

    // Other windows: modeless; opening one closes the one before.
    void showSettingPanel() { secondaryWindows.showSettingPanel(); }
    void showTimeSetupPanel() { secondaryWindows.showTimeSetupPanel(); }

    // Folder
    void openMediaDirectoryDialog();
    /// What the folder panel does with its answer.
    void openMediaDirectory(const std::string& path);
    void mediaListChanged(ZVKMediaList& list) override;

    // Playback
    bool playAtIndex(int64_t index);
    bool playNext();
    void playPrevious();
    void playFollowing();
    /// Escape gives up what is being prepared, unless it leaves full screen.
    bool canGiveUp() const { return waitingForPlayStart && !window->isFullScreen(); }
    /// Gives up the file that is being prepared.
    void giveUpStart();
    void changeAndPlay();
    void stopPlay();
    void mediaPlayerStateChanged(platform::MediaPlayer& player) override;
    void mediaPlayerTimeChanged(platform::MediaPlayer& player) override;
    void mediaPlayerFailed(platform::MediaPlayer& player, const std::string& why) override;

    // Transport
    void clickPlayButton();
    void videoPositionSliderMoved();
    void jumpForward();
    void jumpBackward();
    void volumeSliderMoved(int value);
    void volumeUp();
    void volumeDown();
    void increaseSpeed();
    void decreaseSpeed();
    void sizeUp();
    void sizeDown();
    void toggleFullScreen() { layout->toggleFullScreen(); }
    void setVideoScaleIndex(int64_t step) { layout->setVideoScaleIndex(step); }
    void minimize() { window->showMinimized(); }
    void close() { window->close(); }

    // Capture and print
    void captureVideo() { frameCapture->captureVideo(*player1); }
    void print() { frameCapture->print(*player1); }

    // Right-hand panel
    void clickMediaListViewButton() { layout->clickMediaListViewButton(); }
    void clickMapViewButton() { layout->clickMapViewButton(); }

private:
    /// A wait that is longer is named on screen.
    static constexpr double patienceSeconds = 0.5;

    void setupInitialValues();
    void connectControls();
    void readDisplayMile();
    void openIfFolder(const std::string& path);
    void closeFile(bool staysAtHand);
    void folderMoved(const std::string& from, const std::string& to);
    void showSpeedsInMiles(bool isMile);
    void loadMapPage();
    void windowWillClose();
    void contentResized();
    void die();
    void observeValueForKeyPath(std::string_view keyPath);
    void playPositionChanged();
    void playingChanged();
    void showPlayTime();
    void setVolume(uint64_t value);

    void showLoading();
    void centreLoading();
    void updateLoadingWindow(double expectedSeconds);
    void hideLoading();

    bool isPlaying(const platform::MediaPlayer& player) const;
    bool hasAudio(const platform::MediaPlayer& player) const;
    bool playChosen(int64_t index);
    void playFirstChoice();
    void clearMoment();
    void showPreparing();
    void extractThenPlay();
    void startExtracted(ZVKBlackBoxData extracted);
    void forgetPendingStart();
    bool playsEntry(int64_t row) const;
    bool isPrepared() const;
    void restartMedia();
    void resetReadouts();
    void initMediaControlView();
    void didStartPlayer();
    void didFinishPlay();
    void startTimerPlayNext();
    void timerPlayNext();
    void moveOn();
    bool isKnobHeld() const;
    bool canJump() const;
    void beginSeek();
    void syncVideoPositionDelay(double seconds);
    bool settleSeek();
    void showSeeking();
    void chooseAudioAuto();
    void updateAudioUI();
    void updateVideoUI();
    void showTitle();
    /// The name of the player's file.
    QString nameAtHand() const;
    void updatePlayInfoScale();
    void showOrHideVideo();
    bool reportsPlaying() const;
    bool isPaused() const;
    /// Runs the work after the delay unless another file was started or this one taken away meanwhile.
    void afterForThisFile(double seconds, std::function<void()> work);
    /// The same, and unless the user has begun another seek or a replay.
    void afterForThisSeek(double seconds, std::function<void()> work);

    void updateFrameButtons();
    void initMediaListTableView();
    void findFileAtHand();
    void selectRow(int64_t row);
    int64_t selectedRow() const;
    void showListState();
    QStringList scanRemarks() const;

    void updateGsensorUIByPlayPositon();
    void updateGpsUIByPlayPosition();
    void evaluateMapScript(const std::string& script);

    /// The work runs only while this controller lives.
    std::function<void()> guarded(std::function<void()> work) const;

    platform::Platform& desktop;
    std::string language;
    std::unique_ptr<CustomWindow> window;
    std::unique_ptr<MainWindowOutlets> outlets;
    std::unique_ptr<MainWindowLayout> layout;
    std::unique_ptr<MainWindowControls> controls;
    std::unique_ptr<FrameCapture> frameCapture;
    SecondaryWindows secondaryWindows;

    std::unique_ptr<ZVKMediaList> mediaList;
    std::unique_ptr<PathFollower> folderFollower; // of the list's folder
    ZVKPlayInfo playInfo;
    platform::VideoView* video1View = nullptr;
    QLabel* seekLabel = nullptr; // over the picture
    std::unique_ptr<platform::MediaPlayer> player1;
    std::unique_ptr<platform::WebView> mapWebView;
    ZVKBlackBoxData blackBoxData;
    MediaTableModel* mediaTable = nullptr;

    int64_t mediaIndex = -1;
    bool waitingForPlayStart = false;
    /// What is on screen is the telemetry of the player's file.
    bool hasTelemetry = false;
    /// Names of the folder's recordings that a drive went past, as they could not be played.
    QStringList passedOver;
    /// Those that ended long before their length.
    QStringList brokenOff;
    /// The file was reached at the end of the one before it, not chosen.
    bool reachedByItself = false;
    bool preparingPlayNext = false;
    bool moving = false;
    double movingPosition = 0;
    /// A seek's least settling time has passed, its picture is still awaited.
    bool settlingTimeIsOver = false;
    uint64_t volume = 0;
    bool m_bKorean = false;
    bool m_bMileDisplay = false;
    /// A saved unit of speed is newer than the one that is still being read from the card.
    bool displayMileWasSaved = false;
    bool stopVideoLoadingView = true;
    double progress = 0;
    bool scanning = false;
    /// The list's folder while its card is being formatted.
    std::optional<std::string> folderLetGo;
    std::unique_ptr<platform::Timer> playStopTimer;

    /// Counts the files that were started or taken away; what was begun for an earlier one is void.
    uint64_t fileGeneration = 0;
    /// Counts the user's seeks and replays; what was to follow an earlier one is void.
    uint64_t seekGeneration = 0;
    std::stop_source extractionStop;
    std::shared_ptr<const bool> alive = std::make_shared<bool>(true);

    friend class AppDelegateProbe;
};
