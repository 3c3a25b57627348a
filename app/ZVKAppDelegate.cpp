#include "app/ZVKAppDelegate.h"

#include "app/MainCommands.h"
#include "app/list/MediaTableModel.h"
#include "app/window/MainWindowOutlets.h"
#include "app/window/Watch.h"
#include "common/Log.h"
#include "lib/Alerts.h"
#include "lib/LoadingIndicator.h"
#include "lib/PositionSlider.h"
#include "lib/TKImageButton.h"
#include "lib/TKVideoBackgroundImageView.h"
#include "platform/Texts.h"
#include "platform/mpv/VideoView.h"
#include "settings/window/CardSettings.h"

#include <array>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr uint64_t startVolume = 70;
// The side buttons' pictogram stands left of it.
constexpr int sideButtonTextLeft = 76;
constexpr auto loadingTick = 300ms;
constexpr double loadingSeconds = 15.0;

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
    layout = std::make_unique<MainWindowLayout>(*window, *outlets);
    frameCapture = std::make_unique<FrameCapture>(desktop, *window);
    video1View = new platform::VideoView(outlets->videoContainerView);
    video1View->setObjectName(QStringLiteral("video1View"));
    video1View->setFillScreen(true);
    seekLabel = new QLabel(outlets->videoContainerView);
    seekLabel->setObjectName(QStringLiteral("seekLabel"));
    seekLabel->setProperty("role", QStringLiteral("wait"));
    seekLabel->hide();
    layout->fill(*outlets->videoContainerView, *video1View);
    player1 = desktop.makePlayer(*video1View);
    mediaList = ZVKMediaList::mediaList(desktop.dispatcher);
    folderFollower = std::make_unique<PathFollower>(desktop.dispatcher, desktop.disks,
        [this](const std::string& from, const std::string& to) { folderMoved(from, to); });
    if (desktop.makeWebView) {
        mapWebView = desktop.makeWebView(*outlets->mapContainerTopView);
        mapWebView->widget().setObjectName(QStringLiteral("mapWebView"));
        layout->fill(*outlets->mapContainerTopView, mapWebView->widget());
    }
    const platform::Image bar = platform::imageNamed(QStringLiteral("bottom-background"));
    outlets->mediaControlBoxForFullScreen->setImagesLeft(bar, bar, bar);
    outlets->player1BackgroundView->setBackgroundNineImageName(QStringLiteral("v1"));
    outlets->player1BackgroundView->setLogoImage(platform::imageNamed(QStringLiteral("v1_front_logo")));
    outlets->ci_no_bg->setImage(platform::imageNamed(QStringLiteral("ci_no_bg")));
    initMediaListTableView();
    setupInitialValues();
}

void ZVKAppDelegate::setupInitialValues()
{
    player1->setDelegate(this);
    mediaList->setDelegate(this);
    playInfo.observe(
        [this](std::string_view key) { observeValueForKeyPath("playInfo." + std::string(key)); });
    window->observeIsFullScreen([this] { observeValueForKeyPath("window.isFullScreen"); });
    connectControls();
    layout->updateSideViewButton();
    setVolume(startVolume);
    playInfo.setIsPlaying(false);
    video1View->hide();
    outlets->progressIndicator->hide();
    resetReadouts();
    showListState();
    loadMapPage();
    layout->layoutWindow();
    readDisplayMile();
}

/// The one place where the window's signals are connected.
void ZVKAppDelegate::connectControls()
{
    const MainWindowOutlets& o = *outlets;
    controls = std::make_unique<MainWindowControls>(*window, *o.mediaListTableView, mainCommands(*this));
    for (PositionSlider* slider : {o.videoPositionSlider, o.videoPositionSliderForFullScreen}) {
        slider->setAccessibleName(platform::localized("tip.position"));
        slider->setToolTip(platform::localized("tip.position"));
        slider->setFocusPolicy(Qt::TabFocus);
        QObject::connect(slider, &PositionSlider::moved, window.get(), [this](double fraction) {
            playInfo.setPosition(fraction);
            videoPositionSliderMoved();
        });
    }
    o.volumeSlider->setAccessibleName(platform::localized("tip.volume"));
    o.volumeSlider->setToolTip(platform::localized("tip.volume"));
    o.volumeSlider->setFocusPolicy(Qt::TabFocus);
    QObject::connect(o.volumeSlider, &QSlider::valueChanged, window.get(),
        [this](int value) { volumeSliderMoved(value); });

    for (const auto& [button, key] : {std::pair(o.recordButtonImageView, "label.list"),
             std::pair(o.informationButtonImageView, "label.map")}) {
        button->setText(platform::localized(key));
        button->setTextLeft(sideButtonTextLeft);
        button->setCheckable(true);
    }
    for (const auto& [caption, key] :
        {std::pair(o.latitudeLabel, "label.latitude"), std::pair(o.longitudeLabel, "label.longitude"),
            std::pair(o.hdopLabel, "label.hdop"), std::pair(o.sateliteLabel, "label.satellites")})
        caption->setText(platform::localized(key));
    for (const auto& [label, key] :
        {std::pair(o.speedTextButton, "tip.speed"), std::pair(o.sizeTextButton, "tip.size")}) {
        label->setToolTip(platform::localized(key));
        label->setAccessibleDescription(platform::localized(key));
    }
    o.mediaListTableView->setAccessibleName(platform::localized("tip.recordings"));
    o.graphView->setAccessibleName(platform::localized("tip.graph"));
    QObject::connect(window.get(), &CustomWindow::closed, window.get(), [this] { windowWillClose(); });
    QObject::connect(window.get(), &CustomWindow::pathDropped, window.get(),
        [this](const std::string& path) { openIfFolder(path); });
    (new Watch(o.videoContainerView))->resized = [this] { contentResized(); };
    (new Watch(o.mediaListTableView->viewport()))->mousePressed = [this](QMouseEvent& event) {
        // The row that plays stays selected when the empty part of the list is clicked.
        return !outlets->mediaListTableView->indexAt(event.position().toPoint()).isValid();
    };
}

/// The card is asked in the background: the system may take its time to answer.
void ZVKAppDelegate::readDisplayMile()
{
    m_bMileDisplay = false;
    auto& dispatcher = desktop.dispatcher;
    dispatcher.inBackground(
        [this, &dispatcher, &disks = desktop.disks, isKorean = m_bKorean, life = std::weak_ptr(alive)] {
            dispatcher.onMain([this, life, isMile = readsMiles(disks, isKorean)] {
                if (!life.expired() && !displayMileWasSaved)
                    showSpeedsInMiles(isMile);
            });
        });
}

void ZVKAppDelegate::setDisplayMile(uint32_t value)
{
    displayMileWasSaved = true;
    if (value <= 1)
        showSpeedsInMiles(value == 1);
}

/// Also the speed that is on screen while nothing moves.
void ZVKAppDelegate::showSpeedsInMiles(bool isMile)
{
    if (m_bMileDisplay == isMile)
        return;
    m_bMileDisplay = isMile;
    if (hasTelemetry && !blackBoxData.m_vGpsData.empty())
        updateGpsUIByPlayPosition();
}

void ZVKAppDelegate::tellFailedJob()
{
    showAlert(desktop.alerts, *window, "ZAVIK", platform::localized("msg.job_failed").toStdString());
}

/// The buttons of what cannot be done now are grey and say why.
void ZVKAppDelegate::updateFrameButtons()
{
    const bool hasPicture = (reportsPlaying() || isPaused()) && player1->hasVideoOut();
    controls->setPossible(
        *outlets->captureButton, "tip.capture", hasPicture && reportsPlaying(), "tip.capture_needs_playing");
    controls->setPossible(*outlets->printButton, "tip.print", hasPicture, "tip.print_needs_picture");
}

void ZVKAppDelegate::applicationDidFinishLaunching()
{
    if (language != "auto") {
        for (const std::string& entry : desktop.defaults.stringList("AppleLanguages"))
            logFormat("SUPPORT_LANGUAGE=%s", entry.c_str());
        desktop.defaults.setStringList("AppleLanguages", {language});
    }
    if (language == "ko") {
        m_bKorean = true;
        loadMapPage();
    } else if (language == "en") {
        m_bKorean = false;
    }
    window->setMinimumWindowSize(MainWindowLayout::minWindowSize());
    const platform::Rect frame = layout->minWindowFrame();
    window->setFrame(frame);
    window->setInitialFrame(frame);
    window->show();
    window->setFocus();
    mediaIndex = -1;
    QObject::connect(
        outlets->mediaListTableView, &QTableView::doubleClicked, window.get(), [this] { changeAndPlay(); });
}

void ZVKAppDelegate::applicationWillTerminate()
{
    die();
}

void ZVKAppDelegate::die()
{
    if (!player1)
        return;
    stopPlay();
    playStopTimer.reset();
    player1->setDelegate(nullptr);
    player1.reset();
    delete std::exchange(video1View, nullptr);
    mapWebView.reset();
}

void ZVKAppDelegate::loadMapPage()
{
    if (mapWebView)
        mapWebView->loadResource(m_bKorean ? "map2.htm" : "map2_eng.htm");
}

void ZVKAppDelegate::windowWillClose()
{
    if (player1)
        stopPlay();
}

void ZVKAppDelegate::contentResized()
{
    centreLoading();
    if (player1)
        updatePlayInfoScale();
}

void ZVKAppDelegate::setVolume(uint64_t value)
{
    volume = value;
    observeValueForKeyPath("volume");
}

void ZVKAppDelegate::observeValueForKeyPath(std::string_view keyPath)
{
    struct Row {
        std::string_view keyPath;
        void (*react)(ZVKAppDelegate&);
    };
    static constexpr std::array<Row, 7> table = {{
        {"playInfo.speed",
            [](ZVKAppDelegate& self) {
                self.outlets->speedTextButton->setText(
                    QString::fromStdString(formatted("%.1fx", self.playInfo.speed())));
            }},
        {"volume", [](ZVKAppDelegate& self) { self.updateAudioUI(); }},
        {"playInfo.scale",
            [](ZVKAppDelegate& self) {
                const double scale = self.playInfo.scale();
                self.outlets->sizeTextButton->setText(
                    scale > 0 ? QString::fromStdString(formatted("%.2fx", scale)) : QString());
            }},
        {"playInfo.isPlaying", [](ZVKAppDelegate& self) { self.playingChanged(); }},
        {"playInfo.position", [](ZVKAppDelegate& self) { self.playPositionChanged(); }},
        {"playInfo.audioMediaDirection", [](ZVKAppDelegate& self) { self.updateAudioUI(); }},
        {"window.isFullScreen", [](ZVKAppDelegate& self) { self.layout->layoutWindow(); }},
    }};
    for (const Row& row : table)
        if (row.keyPath == keyPath)
            row.react(*this);
}

void ZVKAppDelegate::playingChanged()
{
    const bool isPlaying = playInfo.isPlaying();
    const QString image = isPlaying ? QStringLiteral("icon_pause_n") : QStringLiteral("icon_play_n");
    for (TKImageButton* button : {outlets->playButton, outlets->playButtonForFullScreen}) {
        // Reported with every time report, most of them without news.
        if (button->imageName() == image)
            continue;
        button->setImageName(image);
        controls->describe(*button, isPlaying ? "tip.pause" : "tip.play");
    }
    updateFrameButtons();
}

/// Time played and length beside the sliders.
void ZVKAppDelegate::showPlayTime()
{
    QString text;
    const auto media = player1->media();
    if (media && !media->length().isNull()) {
        const int64_t length = media->length().intValue();
        const auto played = platform::MediaTime::timeWithInt(int64_t(playInfo.position() * double(length)));
        text = QString::fromStdString(played.stringValue() + " / " + media->length().stringValue());
    }
    outlets->timeField->setText(text);
    for (QWidget* slider : {static_cast<QWidget*>(outlets->videoPositionSlider),
             static_cast<QWidget*>(outlets->videoPositionSliderForFullScreen)})
        slider->setAccessibleDescription(text);
    outlets->timeFieldForFullScreen->setText(text);
}

void ZVKAppDelegate::playPositionChanged()
{
    outlets->videoPositionSlider->setDoubleValue(playInfo.position());
    outlets->videoPositionSliderForFullScreen->setDoubleValue(playInfo.position());
    showPlayTime();
    updateGsensorUIByPlayPositon();
    updateGpsUIByPlayPosition();
}

void ZVKAppDelegate::openMediaDirectoryDialog()
{
    const std::string title = platform::localized("panel.choose_folder").toStdString();
    desktop.panels.chooseFolder(
        *window, title, [this, life = std::weak_ptr(alive)](std::optional<std::string> path) {
            if (path && !life.expired())
                openMediaDirectory(*path);
        });
}

void ZVKAppDelegate::openMediaDirectory(const std::string& path)
{
    // Read again, a folder keeps the file at hand; of another one nothing stays.
    closeFile(mediaList->directoryPath() == path);
    folderLetGo.reset();
    scanning = true;
    mediaList->setDirectoryPath(path);
    mediaTable->reload();
    folderFollower->follow(path);
    showListState();
}

void ZVKAppDelegate::showLoading()
{
    LoadingIndicator& indicator = *outlets->progressIndicator;
    const bool isTicking = indicator.isAnimating();
    stopVideoLoadingView = false;
    progress = 0;
    indicator.setDoubleValue(LoadingIndicator::minimum);
    centreLoading();
    indicator.show();
    indicator.raise();
    indicator.startAnimation();
    if (!isTicking)
        desktop.dispatcher.after(loadingTick, guarded([this] { updateLoadingWindow(loadingSeconds); }));
}

void ZVKAppDelegate::centreLoading()
{
    LoadingIndicator& indicator = *outlets->progressIndicator;
    indicator.move((indicator.parentWidget()->width() - indicator.width()) / 2, indicator.y());
}

void ZVKAppDelegate::updateLoadingWindow(double expectedSeconds)
{
    LoadingIndicator& indicator = *outlets->progressIndicator;
    progress += 100 / (expectedSeconds / 0.3);
    indicator.setDoubleValue(progress);
    if (progress >= 100 || stopVideoLoadingView) {
        indicator.setDoubleValue(LoadingIndicator::minimum);
        indicator.stopAnimation();
        indicator.hide();
        stopVideoLoadingView = true;
        return;
    }
    desktop.dispatcher.after(
        loadingTick, guarded([this, expectedSeconds] { updateLoadingWindow(expectedSeconds); }));
}

void ZVKAppDelegate::hideLoading()
{
    stopVideoLoadingView = true;
}

std::function<void()> ZVKAppDelegate::guarded(std::function<void()> work) const
{
    return [life = std::weak_ptr(alive), work = std::move(work)] {
        if (!life.expired())
            work();
    };
}
