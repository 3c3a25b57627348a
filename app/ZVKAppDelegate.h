#pragma once

#include "app/drives/DrivesPart.h"
#include "app/frame/FrameCapture.h"
#include "app/list/RecordingsPanel.h"
#include "app/player/PlaybackSession.h"
#include "app/player/TelemetryPanel.h"
#include "app/player/Transport.h"
#include "app/player/TransportPanel.h"
#include "app/player/VideoPanel.h"
#include "app/window/CustomWindow.h"
#include "app/window/MainWindowControls.h"
#include "app/window/MainWindowLayout.h"
#include "app/window/SecondaryWindows.h"
#include "settings/window/ZVKSettingController.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct MainWindowOutlets;

/// The application's delegate and the controller of its main window. It owns the parts and wires them: what
/// the user does goes to the part that does it, and the observation table turns each report of the play state
/// into window updates. A start goes from the list to the session, which reads the telemetry, then asks the
/// player; what that reports goes into the play state, and from there to the panels. Main thread only.
class ZVKAppDelegate final : public PlaybackSessionDelegate, public viewControllerForZVKSettingDelegate {
public:
    /// `language` is the interface language: "en", "ko", or "auto" to follow the system.
    ZVKAppDelegate(platform::Platform& desktop, std::string language);
    ~ZVKAppDelegate() override;

    // Start and end: in this order.
    void awakeFromNib();
    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    CustomWindow& mainWindow() { return *window; }
    // The parts, from `awakeFromNib` on.
    PlaybackSession& playback() { return *session; }
    const Transport& transportControls() const { return *transport; }
    const TelemetryPanel& telemetryPanel() const { return *telemetry; }
    const RecordingsPanel& recordingsPanel() const { return *recordings; }
    bool isKorean() const { return m_bKorean; }

    /// Tells that a background job could not be done.
    void tellFailedJob();

    /// Shows speeds in miles per hour (1) or kilometres per hour (0); any other value changes nothing.
    void setDisplayMile(uint32_t value) override { telemetry->setDisplayMile(value); }
    bool isInUse(const std::string& mountPath) const override { return recordings->isInUse(mountPath); }
    void letGoOf(const std::string& mountPath) override;
    void cardFormatted(const std::string& from, const std::string& to) override
    {
        recordings->cardFormatted(from, to);
        drives->showPreviews();
    }

    // Other windows: modeless; opening one closes the one before.
    void showSettingPanel() { secondaryWindows.showSettingPanel(); }
    void showTimeSetupPanel() { secondaryWindows.showTimeSetupPanel(); }

    // Folder
    void toggleFilter();
    void openMediaDirectoryDialog() { recordings->openMediaDirectoryDialog(); }
    /// Opens the camera's card once it is found, unless a folder was opened meanwhile.
    void openCard() { recordings->openCard(); }
    /// What the folder panel does with its answer.
    void openMediaDirectory(const std::string& path) { recordings->openMediaDirectory(path); }

    // Playback
    bool playAtIndex(int64_t index) { return session->playAtIndex(index); }
    bool playNext() { return session->playNext(); }
    void playPrevious() { playNeighbour(-1); }
    void playFollowing() { playNeighbour(1); }
    void changeAndPlay() { session->changeAndPlay(recordings->selectedRow()); }
    /// What Enter does: the selected recording, or the drive or moment that has the focus.
    void playChoice();
    void stopPlay() { session->stopPlay(); }
    /// Gives up the file that is being prepared.
    void giveUpStart() { session->giveUpStart(); }
    /// Escape does, unless it leaves full screen.
    bool canGiveUp() const { return session->isWaiting() && !window->isFullScreen(); }

    // Drives
    void nextMoment() { drives->jumpToMoment(1); }
    void previousMoment() { drives->jumpToMoment(-1); }

    // Transport
    void clickPlayButton()
    {
        transport->clickPlayButton(recordings->selectedRow(), transportPanel->position());
    }
    void jumpForward() { transport->jumpForward(); }
    void jumpBackward() { transport->jumpBackward(); }
    void volumeUp() { transport->volumeUp(); }
    void volumeDown() { transport->volumeDown(); }
    void increaseSpeed() { transport->increaseSpeed(); }
    void decreaseSpeed() { transport->decreaseSpeed(); }
    void fasterRate() { transport->stepRate(1); }
    void slowerRate() { transport->stepRate(-1); }
    void goToStart() { transport->goToStart(); }
    void goToEnd() { transport->goToEnd(); }
    void nextFrame() { transport->stepFrame(1); }
    void previousFrame() { transport->stepFrame(-1); }

    // Cameras
    void nextCamera() { session->changeCamera(1); }
    void previousCamera() { session->changeCamera(-1); }

    // Window. Its size steps only while something plays.
    void sizeUp() { changeSize(1); }
    void sizeDown() { changeSize(-1); }
    void setVideoScaleIndex(int64_t step) { layout->setVideoScaleIndex(step); }
    void toggleFullScreen() { layout->toggleFullScreen(); }
    void minimize() { window->showMinimized(); }
    void close() { window->close(); }
    void clickMediaListViewButton() { layout->clickMediaListViewButton(); }
    void clickDrivesViewButton() { layout->clickDrivesViewButton(); }
    void clickMapViewButton() { layout->clickMapViewButton(); }

    // Capture and print
    void captureVideo() { frameCapture->captureVideo(session->player()); }
    void print() { frameCapture->print(session->player()); }

private:
    void entryChosen(int64_t index) override;
    Following following(int64_t index) const override;
    void titleChanged(const QString& name) override;
    void momentCleared() override;
    void telemetryRead(ZVKBlackBoxData read) override;
    void playerStarts() override;
    void remarksChanged() override { recordings->showListState(session->remarks()); }
    void camerasChanged() override;
    bool isKnobHeld() const override { return transportPanel->isKnobHeld(); }

    void makeParts();
    void makePlayback();
    void makePreviews();
    void setupInitialValues();
    void recordingsListed();
    void changeSize(int64_t step);
    bool pictureClicked(double x, double y);
    void die();
    void observeValueForKeyPath(std::string_view keyPath);
    void playPositionChanged();
    void playNeighbour(int direction);
    void playingChanged();
    void updateAudioUI();

    platform::Platform& desktop;
    std::string language;
    bool m_bKorean = false;
    std::unique_ptr<CustomWindow> window;
    std::unique_ptr<MainWindowOutlets> outlets;
    SecondaryWindows secondaryWindows;
    std::unique_ptr<MainWindowLayout> layout;
    std::unique_ptr<VideoPanel> video;
    std::unique_ptr<TelemetryPanel> telemetry;
    std::unique_ptr<RecordingsPanel> recordings;
    std::unique_ptr<PlaybackSession> session;
    std::unique_ptr<Transport> transport;
    std::unique_ptr<TransportPanel> transportPanel;
    std::unique_ptr<PreviewReader> previews;
    std::unique_ptr<HoverPreview> hover;
    std::unique_ptr<DrivesPart> drives;
    std::unique_ptr<FrameCapture> frameCapture;
    std::unique_ptr<MainWindowControls> controls;
};
