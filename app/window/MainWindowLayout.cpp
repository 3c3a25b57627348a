#include "app/window/MainWindowLayout.h"

#include "app/window/MainWindowOutlets.h"
#include "common/Log.h"
#include "platform/Texts.h"

#include <string>
#include <utility>

namespace {

constexpr double sizeStep = 0.2;
// Text offset in the side buttons; their picture is left of it.
constexpr int sideButtonTextLeft = 36;
constexpr int stripHeight = 22;

} // namespace

MainWindowLayout::MainWindowLayout(CustomWindow& laidOut, MainWindowOutlets& widgets)
    : window(laidOut),
      outlets(widgets),
      content(window),
      background(*outlets.backgroundBox),
      body(*outlets.bodyBox),
      bodyLeft(*outlets.bodyLeftBox),
      bodyRight(*outlets.bodyRightBox),
      mediaListBox(*outlets.mediaListBox),
      mapContainer(*outlets.mapContainerView),
      videoBox(*outlets.videoBox)
{
    for (QWidget* view : window.findChildren<QWidget*>())
        if (!view->objectName().isEmpty())
            views.insert(u'_' + view->objectName(), view);
    const platform::Image bar = platform::imageNamed(QStringLiteral("bottom-background"));
    outlets.mediaControlBoxForFullScreen->setImagesLeft(bar, bar, bar);
    outlets.ci_no_bg->setImage(platform::imageNamed(QStringLiteral("ci_no_bg")));
    for (const auto& [button, key] : {std::pair(outlets.recordButtonImageView, "label.list"),
             std::pair(outlets.drivesButtonImageView, "label.drives"),
             std::pair(outlets.informationButtonImageView, "label.map")}) {
        button->setText(platform::localized(key));
        button->setTextLeft(sideButtonTextLeft);
        button->setCheckable(true);
    }
    updateSideViewButton();
    showDriveStrip(false);
}

void MainWindowLayout::fill(QWidget& container, QWidget& view)
{
    views.insert(QStringLiteral("_view"), &view);
    filled.push_back(std::make_unique<FormatLayout>(container));
    set(*filled.back(), {"H:|-0-[_view]-0-|", "V:|-0-[_view]-0-|"});
}

/// Replaces a container's formats and applies them.
void MainWindowLayout::set(FormatLayout& layout, std::initializer_list<const char*> formats)
{
    layout.removeAll();
    for (const char* format : formats)
        layout.add(format, views);
    layout.apply();
}

void MainWindowLayout::layoutWindow()
{
    const bool isFull = window.isFullScreen();
    outlets.headBox->setVisible(!isFull);
    set(content, {"H:|-0-[_backgroundBox]-0-|", "V:|-0-[_backgroundBox]-0-|"});
    if (isFull)
        set(background, {"V:|-0-[_bodyBox]-0-|", "H:|-0-[_bodyBox]-0-|"});
    else
        set(background,
            {"V:|-0-[_headBox(==50)]-0-[_bodyBox]-0-|", "H:|-0-[_headBox]-0-|", "H:|-0-[_bodyBox]-0-|"});
    layoutBodyBox();
}

void MainWindowLayout::layoutBodyBox()
{
    const bool isFull = window.isFullScreen();
    const int strip = showsStrip ? stripHeight : 0;
    const struct {
        std::string full, normal;
    } bars{formatted("V:|-0-[_videoBox]-0-[_mediaControlBoxForFullScreen(==%d)]-0-|", 36 + strip),
        formatted("V:|-0-[_videoBox]-4-[_gsensorBox(==130)]-4-[_mediaControlBox(==%d)]-0-|", 72 + strip)};
    outlets.bodyRightBox->setVisible(!isFull);
    outlets.gsensorBox->setVisible(!isFull);
    outlets.mediaControlBox->setVisible(!isFull);
    outlets.mediaControlBoxForFullScreen->setVisible(isFull);
    if (isFull) {
        set(body, {"H:|-0-[_bodyLeftBox]-0-|", "V:|-0-[_bodyLeftBox]-2-|"});
        set(bodyLeft,
            {bars.full.c_str(), "H:|-0-[_videoBox]-0-|", "H:|-0-[_mediaControlBoxForFullScreen]-2-|"});
    } else {
        set(body,
            {"H:|-10-[_bodyLeftBox]-10-[_bodyRightBox(==334)]-10-|", "V:|-0-[_bodyLeftBox]-8-|",
                "V:|-0-[_bodyRightBox]-8-|"});
        set(bodyLeft,
            {bars.normal.c_str(), "H:|-0-[_videoBox]-0-|", "H:|-0-[_gsensorBox]-0-|",
                "H:|-0-[_mediaControlBox]-0-|"});
        set(bodyRight,
            {"V:|-0-[_sideButtonBox(==32)]-0-[_mediaListBox]-0-|", "H:|-0-[_sideButtonBox]-0-|",
                "H:|-0-[_mediaListBox]-0-|"});
    }
    set(videoBox,
        {"H:|-0-[_player1BackgroundView]-0-|", "V:|-0-[_player1BackgroundView]-0-|",
            "H:|-0-[_videoContainerView]-0-|", "V:|-0-[_videoContainerView]-0-|"});
    layoutMapContainer();
    releaseHiddenFocus();
}

void MainWindowLayout::layoutMapContainer()
{
    if (window.isFullScreen())
        return;
    if (shownSide == Side::recordings) {
        set(mediaListBox, {"V:|-0-[_mediaListScrollView]-0-|", "H:|-0-[_mediaListScrollView]-0-|"});
        return;
    }
    if (shownSide == Side::drives) {
        set(mediaListBox, {"V:|-0-[_drivesView]-0-|", "H:|-0-[_drivesView]-0-|"});
        return;
    }
    set(mediaListBox, {"V:|-0-[_mapContainerView]-0-|", "H:|-0-[_mapContainerView]-0-|"});
    set(mapContainer,
        {"V:|-0-[_mapContainerTopView]-0-[_mapContainerBottomView(==98)]-0-|",
            "H:|-0-[_mapContainerTopView]-0-|", "H:|-0-[_mapContainerBottomView]-0-|"});
}

/// Takes the focus from what is hidden by now, so that the keys reach the window.
void MainWindowLayout::releaseHiddenFocus()
{
    const QWidget* focused = window.focusWidget();
    if (focused && focused != &window && !focused->isVisibleTo(&window))
        window.setFocus();
}

void MainWindowLayout::updateSideViewButton()
{
    const struct {
        TKImageButton* button;
        Side side;
        const char* normal;
        const char* chosen;
        QWidget* view;
    } tabs[] = {
        {outlets.recordButtonImageView, Side::recordings, "record_n", "record_p",
            outlets.mediaListScrollView},
        {outlets.drivesButtonImageView, Side::drives, "drives_n", "drives_p", outlets.drivesView},
        {outlets.informationButtonImageView, Side::map, "information_n", "information_p",
            outlets.mapContainerView},
    };
    for (const auto& tab : tabs) {
        const bool isChosen = shownSide == tab.side;
        tab.button->setImageName(QLatin1String(isChosen ? tab.chosen : tab.normal) + QStringLiteral(".png"));
        tab.view->setVisible(isChosen);
        tab.button->setChecked(isChosen);
        if (isChosen)
            tab.button->keepPictureUnderPointer();
    }
    layoutMapContainer();
    releaseHiddenFocus();
}

void MainWindowLayout::showSide(Side side)
{
    if (shownSide == side)
        return;
    shownSide = side;
    updateSideViewButton();
}

void MainWindowLayout::clickMediaListViewButton()
{
    showSide(Side::recordings);
}

void MainWindowLayout::clickDrivesViewButton()
{
    showSide(Side::drives);
}

void MainWindowLayout::clickMapViewButton()
{
    showSide(Side::map);
}

void MainWindowLayout::showDriveStrip(bool isShown)
{
    outlets.driveRow->setVisible(isShown);
    outlets.driveStripForFullScreen->setVisible(isShown);
    outlets.driveTimeFieldForFullScreen->setVisible(isShown);
    if (std::exchange(showsStrip, isShown) != isShown)
        layoutWindow();
}

void MainWindowLayout::showWindow()
{
    window.setMinimumWindowSize(minWindowSize());
    const platform::Rect frame = minWindowFrame();
    window.setFrame(frame);
    window.setInitialFrame(frame);
    window.show();
    window.setFocus();
}

platform::Rect MainWindowLayout::minWindowFrame() const
{
    const platform::Rect visible = window.currentScreen().visibleFrame;
    const auto [width, height] = window.minimumWindowSize();
    return {
        visible.x + (visible.width - width) / 2, visible.y + (visible.height - height) / 2, width, height};
}

void MainWindowLayout::setVideoScaleIndex(int64_t step)
{
    const platform::Screen screen = window.currentScreen();
    const platform::Rect before = window.frame();
    const auto [minWidth, minHeight] = window.minimumWindowSize();
    platform::Rect frame = before;
    frame.width += double(step) * sizeStep * minWindowSize().width;
    frame.height += double(step) * sizeStep * minWindowSize().height;
    if (step > 0) {
        if (window.isFullScreen())
            return;
        if (frame.width > screen.frame.width || frame.height > screen.frame.height - 100) {
            window.enterFullscreen();
            return;
        }
    } else if (window.isFullScreen()) {
        window.leaveFullscreen();
        return;
    }
    if (frame.width < minWidth || frame.height < minHeight) {
        frame.width = minWidth;
        frame.height = minHeight;
    }
    // Without a change of size the window is not moved.
    if (frame != before)
        window.setFrame(fittedInto(screen.visibleFrame, frame), true);
}

void MainWindowLayout::toggleFullScreen()
{
    if (window.isFullScreen())
        window.leaveFullscreen();
    else
        window.enterFullscreen();
}
