#include "app/ZVKAppDelegate.h"

#include "app/MainCommands.h"
#include "app/player/PlayerReports.h"
#include "app/window/MainWindowOutlets.h"
#include "common/Log.h"
#include "lib/Alerts.h"
#include "media/MediaPath.h"
#include "platform/Texts.h"
#include "settings/window/CardSettings.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr uint64_t startVolume = 70;

} // namespace

ZVKAppDelegate::ZVKAppDelegate(platform::Platform& layer, std::string interfaceLanguage)
    : desktop(layer),
      language(std::move(interfaceLanguage)),
      secondaryWindows(desktop, language, *this)
{
    platform::setTextLanguage(language);
    window = std::make_unique<CustomWindow>();
    window->setScreens(desktop.screens);
    outlets = std::make_unique<MainWindowOutlets>(*window);
}

ZVKAppDelegate::~ZVKAppDelegate()
{
    die();
    secondaryWindows.close();
    // The views go before the objects that their signals reach.
    layout.reset();
    window.reset();
}

void ZVKAppDelegate::awakeFromNib()
{
    makeParts();
    makePlayback();
    makeDrives();
    setupInitialValues();
}

void ZVKAppDelegate::makeParts()
{
    layout = std::make_unique<MainWindowLayout>(*window, *outlets);
    video = std::make_unique<VideoPanel>(
        desktop.dispatcher, *outlets, *outlets->progressIndicator, *layout, [this] {
            if (session && !session->hasEnded())
                session->updatePlayInfoScale();
        });
    telemetry = std::make_unique<TelemetryPanel>(*outlets, *outlets, *layout, desktop.makeWebView);
    recordings = std::make_unique<RecordingsPanel>(desktop, *window, *outlets,
        RecordingsPanel::Told{[this](bool isSameAgain) {
                                  drivePlayback->end();
                                  drives->setRecordings({});
                                  session->closeFile(isSameAgain);
                              },
            [this] { recordingsListed(); },
            [this](const std::string& from, const std::string& to) {
                remarksChanged();
                drives->movedTo(from, to);
                drivePlayback->movedTo(from, to);
                session->folderMoved(from, to);
            },
            [this] { changeAndPlay(); },
            [this](const ZVKMedia& media) { return drives->library().hasImpact(media.path()); },
            [this] { drives->readAll(); }});
    frameCapture = std::make_unique<FrameCapture>(desktop, *window);
    controls = std::make_unique<MainWindowControls>(*window,
        std::vector<QAbstractItemView*>{
            outlets->mediaListTableView, outlets->drivesListView, outlets->momentsTableView},
        mainCommands(*this));
}

void ZVKAppDelegate::makePlayback()
{
    session = std::make_unique<PlaybackSession>(
        desktop.dispatcher, desktop.makePlayer(video->view()), recordings->list(), *video, *this);
    transport = std::make_unique<Transport>(*session,
        Transport::Told{[this] { observeValueForKeyPath("volume"); },
            [this] {
                telemetry->updateGsensorUIByPlayPositon(
                    session->playInfo().position(), double(session->player().position()));
            }});
    transportPanel = std::make_unique<TransportPanel>(*outlets, *outlets,
        TransportPanel::Told{[this](double fraction) { transport->videoPositionSliderMoved(fraction); },
            [this](int volume) { transport->setVolume(uint64_t(std::max(volume, 0))); }});
    outlets->graphView->picked = [this](double fraction) { transport->videoPositionSliderMoved(fraction); };
    outlets->graphView->described = [this](double fraction) {
        const auto media = session->player().media();
        return telemetry->textAt(fraction, media ? media->length() : platform::MediaTime::nullTime());
    };
}

void ZVKAppDelegate::makeDrives()
{
    drivePlayback = std::make_unique<DrivePlayback>(
        *session, recordings->list(), [this] { driveStrip->show(*drivePlayback); });
    driveStrip = std::make_unique<DriveStripPanel>(
        *outlets, *outlets, *layout, [this](double fraction) { drivePlayback->goTo(fraction); });
    drives = std::make_unique<DrivesPanel>(desktop.dispatcher, *outlets,
        DrivesPanel::Told{[this](size_t drive) { playDrive(drive, {}); },
            [this](size_t drive, const DriveMoment& moment) { playDrive(drive, moment); },
            [this](size_t drive) { tellMoments(drive); }});
}

void ZVKAppDelegate::setupInitialValues()
{
    session->playInfo().observe(
        [this](std::string_view key) { observeValueForKeyPath("playInfo." + std::string(key)); });
    window->observeIsFullScreen([this] { observeValueForKeyPath("window.isFullScreen"); });
    QObject::connect(window.get(), &CustomWindow::closed, window.get(), [this] {
        if (!session->hasEnded())
            stopPlay();
    });
    QObject::connect(window.get(), &CustomWindow::pathDropped, window.get(),
        [this](const std::string& path) { recordings->openIfFolder(path); });
    transport->setVolume(startVolume);
    session->playInfo().setIsPlaying(false);
    remarksChanged();
    telemetry->loadMapPage(m_bKorean);
    layout->layoutWindow();
    readDisplayMile();
}

void ZVKAppDelegate::applicationDidFinishLaunching()
{
    if (language != "auto") {
        for (const std::string& entry : desktop.defaults.stringList("AppleLanguages"))
            logFormat("SUPPORT_LANGUAGE=%s", entry.c_str());
        desktop.defaults.setStringList("AppleLanguages", {language});
    }
    m_bKorean = language == "ko";
    if (m_bKorean)
        telemetry->loadMapPage(m_bKorean);
    window->setMinimumWindowSize(MainWindowLayout::minWindowSize());
    const platform::Rect frame = layout->minWindowFrame();
    window->setFrame(frame);
    window->setInitialFrame(frame);
    window->show();
    window->setFocus();
}

void ZVKAppDelegate::applicationWillTerminate()
{
    die();
}

void ZVKAppDelegate::die()
{
    if (!session || session->hasEnded())
        return;
    session->end();
    video->removeView();
    telemetry->closeMap();
}

/// The card is asked in the background: the system may take its time to answer.
void ZVKAppDelegate::readDisplayMile()
{
    std::function<void(bool)> read = unitReading.guarded([this](bool isMile) { showMiles(isMile); });
    desktop.dispatcher.inBackground(
        [&dispatcher = desktop.dispatcher, &disks = desktop.disks, isKorean = m_bKorean, read] {
            dispatcher.onMain([read, isMile = readsMiles(disks, isKorean)] { read(isMile); });
        });
}

void ZVKAppDelegate::setDisplayMile(uint32_t value)
{
    unitReading.renew();
    if (value <= 1)
        showMiles(value == 1);
}

void ZVKAppDelegate::showMiles(bool isMile)
{
    telemetry->setDisplayMile(isMile, session->playInfo().position());
    drives->setShowsMiles(isMile);
}

void ZVKAppDelegate::tellFailedJob()
{
    showAlert(desktop.alerts, *window, "ZAVIK", platform::localized("msg.job_failed").toStdString());
}

void ZVKAppDelegate::letGoOf(const std::string& mountPath)
{
    if (session->hasEnded())
        return;
    const auto folder = recordings->folderOn(mountPath);
    if (session->hasFileWithin(mountPath) || (folder && session->hasFileWithin(standardizedPath(*folder))))
        session->closeFile(false);
    if (folder) {
        drivePlayback->end();
        drives->setRecordings({});
    }
    recordings->letGoOf(mountPath);
}

void ZVKAppDelegate::cardFormatted(const std::string& from, const std::string& to)
{
    recordings->cardFormatted(from, to);
}

void ZVKAppDelegate::recordingsListed()
{
    layout->clickMediaListViewButton();
    drives->setRecordings(recordings->list().all());
    drivePlayback->findRows();
    session->findFileAtHand();
    remarksChanged();
}

void ZVKAppDelegate::toggleFilter()
{
    if (window->isFullScreen())
        return;
    layout->clickMediaListViewButton();
    recordings->toggleFilter();
}

void ZVKAppDelegate::clickPlayButton()
{
    transport->clickPlayButton(recordings->selectedRow(), transportPanel->position());
}

void ZVKAppDelegate::sizeUp()
{
    if (session->player().isPlaying())
        layout->setVideoScaleIndex(1);
}

void ZVKAppDelegate::sizeDown()
{
    if (session->player().isPlaying())
        layout->setVideoScaleIndex(-1);
}

void ZVKAppDelegate::playChoice()
{
    if (drives->hasFocus())
        drives->chooseCurrent();
    else
        changeAndPlay();
}

void ZVKAppDelegate::playPrevious()
{
    if (!drivePlayback->playNeighbour(-1))
        session->playEntry(recordings->visibleRow(session->index(), -1));
}

void ZVKAppDelegate::playFollowing()
{
    if (!drivePlayback->playNeighbour(1))
        session->playEntry(recordings->visibleRow(session->index(), 1));
}

void ZVKAppDelegate::entryChosen(int64_t index)
{
    recordings->selectRow(index);
    drivePlayback->entryChosen(index);
}

Following ZVKAppDelegate::following(int64_t index) const
{
    return drivePlayback->following(index).value_or(Following{recordings->visibleRow(index, 1)});
}

/// From its start, or to a moment of it.
void ZVKAppDelegate::playDrive(size_t index, const std::optional<DriveMoment>& moment)
{
    const Drive& drive = drives->library().drives()[index];
    if (!drivePlayback->plays(drive))
        drivePlayback->play(drive, moment);
    else if (moment)
        drivePlayback->goTo(*moment);
    else
        drivePlayback->goTo(0);
    tellMoments(index);
}

void ZVKAppDelegate::tellMoments(size_t drive)
{
    recordings->impactsKnown();
    const DriveFigures* figures = drives->library().figures(drive);
    if (figures && drivePlayback->plays(drives->library().drives()[drive]))
        drivePlayback->setMoments(figures->moments);
}

void ZVKAppDelegate::jumpToMoment(int direction)
{
    drivePlayback->jumpToMoment(direction, session->playInfo().position());
}

void ZVKAppDelegate::titleChanged(const QString& name)
{
    outlets->titleLabel->setText(name);
}

void ZVKAppDelegate::momentCleared()
{
    telemetry->clear();
    transportPanel->reset();
}

void ZVKAppDelegate::telemetryRead(ZVKBlackBoxData read)
{
    telemetry->show(std::move(read));
    // Within a drive the window stays as the user set it.
    if (session->arrival().goesOn)
        return;
    layout->setVideoScaleIndex(0);
    layout->updateSideViewButton();
}

void ZVKAppDelegate::playerStarts()
{
    telemetry->resetReadouts();
    transportPanel->reset();
}

void ZVKAppDelegate::observeValueForKeyPath(std::string_view keyPath)
{
    struct Row {
        std::string_view keyPath;
        void (*react)(ZVKAppDelegate&);
    };
    using Self = ZVKAppDelegate;
    static constexpr std::array<Row, 7> table = {{
        {"playInfo.speed",
            [](Self& self) { self.transportPanel->showSpeed(self.session->playInfo().speed()); }},
        {"volume", [](Self& self) { self.updateAudioUI(); }},
        {"playInfo.scale",
            [](Self& self) { self.transportPanel->showScale(self.session->playInfo().scale()); }},
        {"playInfo.isPlaying", [](Self& self) { self.playingChanged(); }},
        {"playInfo.position", [](Self& self) { self.playPositionChanged(); }},
        {"playInfo.audioMediaDirection", [](Self& self) { self.updateAudioUI(); }},
        {"window.isFullScreen", [](Self& self) { self.layout->layoutWindow(); }},
    }};
    for (const Row& row : table)
        if (row.keyPath == keyPath)
            row.react(*this);
}

void ZVKAppDelegate::playingChanged()
{
    transportPanel->showPlaying(session->playInfo().isPlaying(), *controls);
    const platform::MediaPlayer& player = session->player();
    const bool isShown = hasPicture(player);
    controls->setPossible(*outlets->captureButton, "tip.capture", isShown && reportsPlaying(player),
        "tip.capture_needs_playing");
    controls->setPossible(*outlets->printButton, "tip.print", isShown, "tip.print_needs_picture");
}

void ZVKAppDelegate::playPositionChanged()
{
    const double position = session->playInfo().position();
    const platform::MediaPlayer& player = session->player();
    transportPanel->showPosition(position, player.media().get());
    if (player.media())
        drivePlayback->lengthKnown(double(player.media()->length().intValue()) / 1000);
    driveStrip->showPosition(*drivePlayback, position);
    // Whether a file that is still being prepared has GPS is not known yet.
    telemetry->showMoment(
        position, double(player.position()), session->state() != PlaybackSession::State::preparing);
}

void ZVKAppDelegate::updateAudioUI()
{
    transport->applyVolume();
    transportPanel->showVolume(transport->volume());
}
