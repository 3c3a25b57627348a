#include "app/player/VideoPanel.h"

#include "app/player/PlayerReports.h"
#include "app/window/MainWindowControls.h"
#include "app/window/MainWindowLayout.h"
#include "app/window/Watch.h"
#include "lib/LoadingIndicator.h"
#include "platform/Texts.h"
#include "platform/mpv/VideoView.h"
#include "ui_VideoPanel.h"

#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto loadingStep = 300ms;
constexpr int seekLabelMargin = 24;

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

VideoPanel::VideoPanel(platform::Dispatcher& dispatcher, Ui::VideoPanel& widgets, LoadingIndicator& indicator,
    MainWindowLayout& layout, std::function<void()> resized)
    : outlets(widgets),
      video1View(new platform::VideoView(outlets.videoContainerView)),
      seekLabel(new QLabel(outlets.videoContainerView)),
      bar(dispatcher, {loadingStep}, lookOf(indicator))
{
    video1View->setObjectName(QStringLiteral("video1View"));
    video1View->setFillScreen(true);
    video1View->hide();
    seekLabel->setObjectName(QStringLiteral("seekLabel"));
    seekLabel->setProperty("role", QStringLiteral("wait"));
    seekLabel->hide();
    layout.fill(*outlets.videoContainerView, *video1View);
    outlets.player1BackgroundView->setBackgroundNineImageName(QStringLiteral("v1"));
    outlets.player1BackgroundView->setLogoImage(platform::imageNamed(QStringLiteral("v1_front_logo")));
    indicator.hide();
    (new Watch(outlets.videoContainerView))->resized = [&indicator, told = std::move(resized)] {
        centre(indicator);
        told();
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

double VideoPanel::height() const
{
    return outlets.videoContainerView->height();
}

void VideoPanel::say(const QString& text)
{
    outlets.videoStateLabel->setText(text);
}

void VideoPanel::showPictureOf(const platform::MediaPlayer& player)
{
    video1View->setVisible(hasPicture(player));
}

void VideoPanel::showSeeking(platform::MediaTime target)
{
    seekLabel->setText(platform::localized("msg.seeking").arg(QString::fromStdString(target.stringValue())));
    seekLabel->adjustSize();
    const QSize room = seekLabel->parentWidget()->size();
    seekLabel->move(
        (room.width() - seekLabel->width()) / 2, room.height() - seekLabel->height() - seekLabelMargin);
    seekLabel->show();
    seekLabel->raise();
}

void VideoPanel::hideSeeking()
{
    seekLabel->hide();
}
