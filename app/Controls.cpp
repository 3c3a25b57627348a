// Where the window's controls meet the controller: one table of buttons, one place of connections.

#include "app/ZVKAppDelegate.h"

#include "lib/PositionSlider.h"
#include "lib/TKImageButton.h"
#include "platform/Texts.h"
#include "ui_ZVKAppDelegate.h"

#include <vector>

namespace {

class ResizeWatch final : public QObject {
public:
    ResizeWatch(QObject* watched, std::function<void()> reported)
        : QObject(watched),
          report(std::move(reported))
    {
        watched->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Resize)
            report();
        return QObject::eventFilter(watched, event);
    }

private:
    std::function<void()> report;
};

} // namespace

void ZVKAppDelegate::connectControls()
{
    using Action = void (ZVKAppDelegate::*)();
    struct Row {
        TKImageButton* button;
        const char* textKey;
        Action action;
    };
    const Ui::ZVKAppDelegate& o = *outlets;
    const std::vector<Row> rows = {
        {o.openButton, "tip.open", &ZVKAppDelegate::openMediaDirectoryDialog},
        {o.fullScreenButton, "tip.fullscreen", &ZVKAppDelegate::toggleFullScreen},
        {o.leaveFullScreenButton, "tip.fullscreen_exit", &ZVKAppDelegate::toggleFullScreen},
        {o.playButton, "tip.play", &ZVKAppDelegate::clickPlayButton},
        {o.jumpForwardButton, "tip.jump_forward", &ZVKAppDelegate::jumpForward},
        {o.jumpBackwardButton, "tip.jump_backward", &ZVKAppDelegate::jumpBackward},
        {o.volumeUpButton, "tip.volume_up", &ZVKAppDelegate::volumeUp},
        {o.volumeDownButton, "tip.volume_down", &ZVKAppDelegate::volumeDown},
        {o.speedUpButton, "tip.speed_up", &ZVKAppDelegate::increaseSpeed},
        {o.speedDownButton, "tip.speed_down", &ZVKAppDelegate::decreaseSpeed},
        {o.sizeUpButton, "tip.size_up", &ZVKAppDelegate::sizeUp},
        {o.sizeDownButton, "tip.size_down", &ZVKAppDelegate::sizeDown},
        {o.recordButtonImageView, "tip.list", &ZVKAppDelegate::clickMediaListViewButton},
        {o.informationButtonImageView, "tip.map", &ZVKAppDelegate::clickMapViewButton},
    };
    for (const Row& row : rows) {
        const QString text = platform::localized(row.textKey);
        row.button->setToolTip(text);
        row.button->setAccessibleName(text);
        QObject::connect(row.button, &TKImageButton::clicked, window.get(),
            [this, action = row.action] { (this->*action)(); });
    }

    o.minimizeButton->setToolTip(platform::localized("tip.minimize"));
    o.closeButton->setToolTip(platform::localized("tip.close"));
    QObject::connect(o.minimizeButton, &TKImageButton::clicked, window.get(), &QWidget::showMinimized);
    QObject::connect(o.closeButton, &TKImageButton::clicked, window.get(), &QWidget::close);

    for (PositionSlider* slider : {o.videoPositionSlider, o.videoPositionSliderForFullScreen}) {
        slider->setAccessibleName(platform::localized("tip.position"));
        QObject::connect(slider, &PositionSlider::moved, window.get(), [this](double fraction) {
            playInfo.setPosition(fraction);
            videoPositionSliderMoved();
        });
    }
    o.volumeSlider->setAccessibleName(platform::localized("tip.volume"));
    QObject::connect(o.volumeSlider, &QSlider::valueChanged, window.get(),
        [this](int value) { volumeSliderMoved(value); });
    QObject::connect(window.get(), &CustomWindow::closed, window.get(), [this] { windowWillClose(); });
    new ResizeWatch(window.get(), [this] { contentResized(); });
}
