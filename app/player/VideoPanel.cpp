#include "app/player/VideoPanel.h"

#include "app/player/PlayerReports.h"
#include "app/window/MainWindowControls.h"
#include "app/window/MainWindowLayout.h"
#include "app/window/Watch.h"
#include "common/Log.h"
#include "lib/LoadingIndicator.h"
#include "platform/Texts.h"
#include "platform/mpv/VideoView.h"
#include "ui_VideoPanel.h"

#include <QAccessible>

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto loadingStep = 300ms;
constexpr auto remarkTime = 3s;
constexpr int textMargin = 24;
constexpr int textGap = 6;

void centre(LoadingIndicator& indicator)
{
    indicator.move((indicator.parentWidget()->width() - indicator.width()) / 2, indicator.y());
}

LoadingBar::Look lookOf(LoadingIndicator& indicator)
{
    return {[&indicator](double percent) { indicator.setDoubleValue(percent); },
        [&indicator](bool) {
            indicator.stopAnimation();
            indicator.hide();
        },
        [&indicator] {
            centre(indicator);
            indicator.show();
            indicator.raise();
            indicator.startAnimation();
        }};
}

} // namespace

VideoPanel::VideoPanel(platform::Dispatcher& queue, Ui::VideoPanel& widgets, LoadingIndicator& indicator,
    MainWindowLayout& layout, std::function<void()> resized, std::function<bool(double x, double y)> clicked)
    : dispatcher(queue),
      outlets(widgets),
      video1View(new platform::VideoView(outlets.videoContainerView)),
      seekLabel(makeText()),
      frameTimeLabel(makeText()),
      remarkLabel(makeText()),
      bar(dispatcher, {loadingStep}, lookOf(indicator))
{
    video1View->setObjectName(QStringLiteral("video1View"));
    video1View->setFillScreen(true);
    video1View->hide();
    seekLabel->setObjectName(QStringLiteral("seekLabel"));
    frameTimeLabel->setObjectName(QStringLiteral("frameTimeLabel"));
    remarkLabel->setObjectName(QStringLiteral("remarkLabel"));
    layout.fill(*outlets.videoContainerView, *video1View);
    outlets.player1BackgroundView->setBackgroundNineImageName(QStringLiteral("v1"));
    outlets.player1BackgroundView->setLogoImage(platform::imageNamed(QStringLiteral("v1_front_logo")));
    indicator.hide();
    (new Watch(outlets.videoContainerView))->resized = [this, &indicator, told = std::move(resized)] {
        centre(indicator);
        placeTexts();
        told();
    };
    (new Watch(video1View))->mousePressed = [this, told = std::move(clicked)](QMouseEvent& event) {
        return event.button() == Qt::LeftButton
            && told(event.position().x() / video1View->width(), event.position().y() / video1View->height());
    };
}

void VideoPanel::removeView()
{
    delete std::exchange(video1View, nullptr);
}

void VideoPanel::showUses(const platform::MediaPlayer& player, const MainWindowControls& controls,
    QWidget& captureButton, QWidget& printButton) const
{
    const bool isShown = hasPicture(player);
    controls.setPossible(
        captureButton, "tip.capture", isShown && reportsPlaying(player), "tip.capture_needs_playing");
    controls.setPossible(printButton, "tip.print", isShown, "tip.print_needs_picture");
}

double VideoPanel::heightOf(platform::VideoSize picture) const
{
    const QSize place = outlets.videoContainerView->size();
    return fillsPlace || picture.width <= 0
        ? place.height()
        : std::min(double(place.height()), place.width() * picture.height / picture.width);
}

void VideoPanel::say(const QString& text)
{
    outlets.videoStateLabel->setText(text);
}

void VideoPanel::showPictureOf(const platform::MediaPlayer& player)
{
    video1View->setVisible(hasPicture(player));
    // Two pictures beside each other are twice as wide as their place.
    const auto view = player.shownCameraView();
    const bool fills =
        view != platform::CameraView::sideBySide && view != platform::CameraView::sideBySideSwapped;
    if (std::exchange(fillsPlace, fills) != fills)
        video1View->setFillScreen(fills);
}

QLabel* VideoPanel::makeText()
{
    auto* label = new QLabel(outlets.videoContainerView);
    label->setProperty("role", QStringLiteral("wait"));
    label->hide();
    return label;
}

void VideoPanel::showText(QLabel& label, const QString& text)
{
    label.setText(text);
    label.show();
    placeTexts();
}

void VideoPanel::placeTexts()
{
    const QSize room = outlets.videoContainerView->size();
    int bottom = room.height() - textMargin;
    // Away from what cameras write into the picture, and from the small one.
    frameTimeLabel->adjustSize();
    frameTimeLabel->move(textMargin, textMargin);
    frameTimeLabel->raise();
    for (QLabel* label : {seekLabel, remarkLabel}) {
        if (label->isHidden())
            continue;
        label->adjustSize();
        label->move((room.width() - label->width()) / 2, bottom - label->height());
        label->raise();
        bottom -= label->height() + textGap;
    }
}

void VideoPanel::showSeeking(platform::MediaTime target)
{
    showText(
        *seekLabel, platform::localized("msg.seeking").arg(QString::fromStdString(target.stringValue())));
}

void VideoPanel::hideSeeking()
{
    seekLabel->hide();
    placeTexts();
}

void VideoPanel::remark(const QString& text)
{
    remarkLife.renew();
    if (text.isEmpty()) {
        remarkLabel->hide();
        return;
    }
    showText(*remarkLabel, text);
    QAccessibleEvent told(remarkLabel, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
    dispatcher.after(remarkTime, remarkLife.guarded([this] { remarkLabel->hide(); }));
}

void VideoPanel::showFrameTime(platform::MediaTime time)
{
    const int milliseconds = int(time.intValue() % 1000);
    showText(*frameTimeLabel, QString::fromStdString(time.stringValue() + formatted(".%03d", milliseconds)));
}

void VideoPanel::hideFrameTime()
{
    frameTimeLabel->hide();
    placeTexts();
}
