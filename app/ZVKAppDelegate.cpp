#include "app/ZVKAppDelegate.h"

#include "app/MainCommands.h"
#include "app/window/MainWindowOutlets.h"
#include "common/Log.h"
#include "lib/Alerts.h"
#include "media/MediaPath.h"
#include "platform/Previews.h"
#include "platform/Texts.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr uint64_t startVolume = 70;

} // namespace

ZVKAppDelegate::ZVKAppDelegate(platform::Platform& layer, std::string interfaceLanguage)
    : desktop(layer),
      language(std::move(interfaceLanguage)),
      secondaryWindows(desktop, platform::resolvedLanguage(language), *this)
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
    // The views are destroyed before the objects that receive their signals.
    layout.reset();
    window.reset();
}

void ZVKAppDelegate::awakeFromNib()
{
    makeParts();
    makePlayback();
    setupInitialValues();
}

void ZVKAppDelegate::makeParts()
{
    layout = std::make_unique<MainWindowLayout>(*window, *outlets);
    video = std::make_unique<VideoPanel>(
        desktop.dispatcher, *outlets, *outlets->progressIndicator, *layout,
        [this] {
            if (session && !session->hasEnded())
                session->updatePlayInfoScale();
        },
        [this](double x, double y) { return pictureClicked(x, y); });
    telemetry = std::make_unique<TelemetryPanel>(*outlets, *outlets, *layout, desktop.makeWebView);
    recordings = std::make_unique<RecordingsPanel>(desktop, *window, *outlets,
        RecordingsPanel::Told{[this](bool isSameAgain) {
                                  drives->clear();
                                  session->closeFile(isSameAgain);
                              },
            [this] { recordingsListed(); },
            [this](const std::string& from, const std::string& to) {
                remarksChanged();
                drives->movedTo(from, to);
                session->folderMoved(from, to);
            },
            [this] { changeAndPlay(); }, [this](const ZVKMedia& media) { return drives->hasImpact(media); },
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
    makePreviews();
    drives = std::make_unique<DrivesPart>(desktop.dispatcher, *session, recordings->list(), *outlets, *layout,
        *previews, *hover,
        DrivesPart::Told{[this] { recordings->impactsKnown(); },
            [this](const std::string& script) { telemetry->showDriveRoute(script); },
            [this](const std::string& script) { telemetry->showDriveTake(script); }});
    telemetry->mapSaid = [this](const std::string& word) { drives->mapSaid(word); };
    telemetry->unitChanged = [this](bool isMile) { drives->setShowsMiles(isMile); };
    outlets->graphView->picked = [this](double fraction) { transport->videoPositionSliderMoved(fraction); };
    outlets->graphView->described = [this](double fraction) {
        const auto media = session->player().media();
        return telemetry->textAt(fraction, media ? media->length() : platform::MediaTime::nullTime());
    };
}

void ZVKAppDelegate::makePreviews()
{
    previews = std::make_unique<PreviewReader>(
        desktop.dispatcher, desktop.makePreviews ? desktop.makePreviews() : nullptr);
    hover = std::make_unique<HoverPreview>(*window, *previews);
    const auto placeAt = [this](double fraction) { return placeIn(session->player(), fraction); };
    hover->watch(*outlets->videoPositionSlider, *outlets->mediaControlBox, placeAt);
    hover->watch(*outlets->videoPositionSliderForFullScreen, *outlets->mediaControlBoxForFullScreen, placeAt);
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
    telemetry->readDisplayMile(desktop.dispatcher, desktop.disks, m_bKorean);
}

void ZVKAppDelegate::applicationDidFinishLaunching()
{
    if (language != "auto") {
        for (const std::string& entry : desktop.defaults.stringList("AppleLanguages"))
            logFormat("SUPPORT_LANGUAGE=%s", entry.c_str());
        desktop.defaults.setStringList("AppleLanguages", {language});
    }
    m_bKorean = platform::resolvedLanguage(language) == "ko";
    if (m_bKorean)
        telemetry->loadMapPage(m_bKorean);
    layout->showWindow();
}

void ZVKAppDelegate::applicationWillTerminate()
{
    die();
}

void ZVKAppDelegate::die()
{
    if (!session || session->hasEnded())
        return;
    hover->hide();
    previews->clear();
    session->end();
    video->removeView();
    telemetry->closeMap();
}

void ZVKAppDelegate::tellFailedJob()
{
    showAlert(desktop.alerts, *window, "ZAVIK", platform::localized("msg.job_failed").toStdString());
}

void ZVKAppDelegate::letGoOf(const std::string& mountPath)
{
    if (session->hasEnded())
        return;
    drives->forgetPreviews();
    session->letGoOf(mountPath);
    if (const auto folder = recordings->folderOn(mountPath))
        session->letGoOf(standardizedPath(*folder));
    if (recordings->folderOn(mountPath))
        drives->clear();
    recordings->letGoOf(mountPath);
}

void ZVKAppDelegate::recordingsListed()
{
    layout->clickMediaListViewButton();
    drives->recordingsListed();
    session->findFileAtHand();
    remarksChanged();
}

void ZVKAppDelegate::changeSize(int64_t step)
{
    if (session->player().isPlaying())
        layout->setVideoScaleIndex(step);
}

/// The small picture takes the place of the large one.
bool ZVKAppDelegate::pictureClicked(double x, double y)
{
    const auto small = session->player().smallPicture();
    if (!small || x < small->x || y < small->y || x >= small->x + small->width
        || y >= small->y + small->height)
        return false;
    session->cameras().swap();
    return true;
}

void ZVKAppDelegate::camerasChanged()
{
    const bool isPossible = session->canChangeCamera();
    for (QWidget* button : {outlets->cameraButton, outlets->cameraButtonForFullScreen}) {
        controls->setPossible(*button, "tip.camera", isPossible, "tip.camera_needs_both");
        if (isPossible)
            button->setAccessibleDescription(session->cameras().shownText());
    }
}

void ZVKAppDelegate::toggleFilter()
{
    if (window->isFullScreen())
        return;
    layout->clickMediaListViewButton();
    recordings->toggleFilter();
}

void ZVKAppDelegate::playChoice()
{
    if (drives->hasFocus())
        drives->chooseCurrent();
    else
        changeAndPlay();
}

void ZVKAppDelegate::playNeighbour(int direction)
{
    if (!drives->playNeighbour(direction))
        session->playEntry(recordings->visibleRow(session->index(), direction));
}

void ZVKAppDelegate::entryChosen(int64_t index)
{
    recordings->selectRow(index);
    drives->entryChosen(index);
}

Following ZVKAppDelegate::following(int64_t index) const
{
    return drives->following(index).value_or(Following{recordings->visibleRow(index, 1)});
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
    video->showUses(session->player(), *controls, *outlets->captureButton, *outlets->printButton);
    camerasChanged();
}

void ZVKAppDelegate::playPositionChanged()
{
    const double position = session->playInfo().position();
    const platform::MediaPlayer& player = session->player();
    transportPanel->showPosition(position, player.media().get());
    drives->showMoment(position);
    // Until a file is prepared it is unknown whether it has GPS.
    telemetry->showMoment(
        position, double(player.position()), session->state() != PlaybackSession::State::preparing);
}

void ZVKAppDelegate::updateAudioUI()
{
    transport->applyVolume();
    transportPanel->showVolume(transport->volume());
}
