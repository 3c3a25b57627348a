#pragma once

#include "app/player/ZVKPlayInfo.h"
#include "app/window/CustomWindow.h"
#include "cardtools/volumes/PathFollower.h"
#include "lib/WindowController.h"
#include "media/ZVKMediaList.h"
#include "platform/Platform.h"
#include "platform/PrintSession.h"
#include "platform/WebView.h"
#include "settings/window/ZVKSettingController.h"
#include "telemetry/ZVKBlackBoxData.h"

#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

struct CapturedFrame;
class MediaTableModel;
class QKeyEvent;
class QLabel;
class QTableView;

struct MainWindowOutlets;
class FormatLayout;

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
    platform::Size minWindowSize() const { return {1020, 640}; }
    /// Centred on the window's screen; smaller than the minimum where that does not fit.
    platform::Rect minWindowFrame() const;

    /// Shows speeds in miles per hour (1) or kilometres per hour (0); any other value changes nothing.
    void setDisplayMile(uint32_t value) override;
    bool isInUse(const std::string& mountPath) const override;
    void letGoOf(const std::string& mountPath) override;
    void cardFormatted(const std::string& from, const std::string& to) override;

    // Other windows: modeless; opening one closes the one before.
    void showSettingPanel();
    void replaceDialog(std::function<std::unique_ptr<WindowController>()> make);
    void showTimeSetupPanel();

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
    void toggleFullScreen();
    void setVideoScaleIndex(int64_t step);

    // Capture and print
    void captureVideo();
    void print();

    // Right-hand panel
    void clickMediaListViewButton();
    void clickMapViewButton();

private:
    /// One thing that the user can do, with its keys (key and modifiers in one number) and buttons (by name).
    struct Command {
        const char* textKey;
        void (ZVKAppDelegate::*action)();
        std::vector<int> keys;
        std::vector<const char*> buttons;
    };

    /// A wait that is longer is named on screen.
    static constexpr double patienceSeconds = 0.5;

    void setupInitialValues();
    const std::vector<Command>& commands() const;
    void connectControls();
    void describe(QWidget& button, const char* textKey);
    bool pressKey(const QKeyEvent& event);
    bool pressKeyInList(const QKeyEvent& event);
    bool pressKeyOnControl(const QKeyEvent& event);
    void releaseHiddenFocus();
    bool isFormatting();
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

    std::optional<CapturedFrame> writtenFrame();
    void saveFrame(const std::shared_ptr<const CapturedFrame>& frame, const platform::SavePanel& panel);
    void updateFrameButtons();
    platform::PrintInfo& loadPrintInfo();
    void printPanelDidEnd(int returnCode, const std::string& picture);

    void initMediaListTableView();
    void updateSideViewButton();
    void findFileAtHand();
    void selectRow(int64_t row);
    int64_t selectedRow() const;
    void showListState();
    QStringList scanRemarks() const;

    void layoutWindow();
    void layoutBodyBox();
    void layoutMapContainer();

    void updateGsensorUIByPlayPositon();
    void updateGpsUIByPlayPosition();
    void evaluateMapScript(const std::string& script);

    /// The work runs only while this controller lives.
    std::function<void()> guarded(std::function<void()> work) const;

    platform::Platform& desktop;
    std::string language;
    std::unique_ptr<CustomWindow> window;
    std::unique_ptr<MainWindowOutlets> outlets;
    struct Layouts;
    std::unique_ptr<Layouts> layouts;

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
    int32_t rightViewMode = 0;
    bool m_bKorean = false;
    bool m_bMileDisplay = false;
    /// A saved unit of speed is newer than the one that is still being read from the card.
    bool displayMileWasSaved = false;
    std::unique_ptr<WindowController> lastDialogController;
    bool stopVideoLoadingView = true;
    double progress = 0;
    bool scanning = false;
    /// The list's folder while its card is being formatted.
    std::optional<std::string> folderLetGo;
    std::unique_ptr<platform::Timer> playStopTimer;
    /// Made on first use and kept, so that the choices of one print stay for the next.
    std::unique_ptr<platform::PrintInfo> printInfo;
    /// Whether the frame can be saved and printed, as the buttons show it.
    std::optional<std::pair<bool, bool>> possibleWithFrame;
    /// Made when somebody else holds the name of the frame's file.
    std::string privateFrameFolder;

    /// Counts the files that were started or taken away; what was begun for an earlier one is void.
    uint64_t fileGeneration = 0;
    /// Counts the user's seeks and replays; what was to follow an earlier one is void.
    uint64_t seekGeneration = 0;
    std::stop_source extractionStop;
    std::shared_ptr<const bool> alive = std::make_shared<bool>(true);

    friend class AppDelegateProbe;
};
