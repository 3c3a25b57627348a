// Where the user's hands meet the controller: one table of commands with their buttons and keys, and the one
// place where signals are connected.

#include "app/ZVKAppDelegate.h"

#include "app/window/MainWindowOutlets.h"
#include "lib/PositionSlider.h"
#include "lib/TKImageButton.h"
#include "platform/Texts.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <QMouseEvent>

#include <algorithm>

namespace {

/// Reports size changes of a widget, and the keys of it that belong to the window all the same.
class Watch final : public QObject {
public:
    explicit Watch(QObject* watched)
        : QObject(watched)
    {
        watched->installEventFilter(this);
    }

    std::function<void()> resized;
    std::function<bool(QKeyEvent&)> keyPressed;
    std::function<bool(QMouseEvent&)> mousePressed;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Resize && resized)
            resized();
        if (event->type() == QEvent::KeyPress && keyPressed && keyPressed(static_cast<QKeyEvent&>(*event)))
            return true;
        if (event->type() == QEvent::MouseButtonPress && mousePressed
            && mousePressed(static_cast<QMouseEvent&>(*event)))
            return true;
        return QObject::eventFilter(watched, event);
    }
};

// The side buttons' pictogram stands left of it.
constexpr int sideButtonTextLeft = 76;

int combined(const QKeyEvent& event)
{
    // The plus of the number pad and of the row of digits are one key to the user.
    const auto modifiers = event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    return QKeyCombination(modifiers, Qt::Key(event.key())).toCombined();
}

QString withKey(const QString& text, int key)
{
    return QStringLiteral("%1 (%2)").arg(text, QKeySequence(key).toString(QKeySequence::NativeText));
}

} // namespace

const std::vector<ZVKAppDelegate::Command>& ZVKAppDelegate::commands() const
{
    using Self = ZVKAppDelegate;
    static const std::vector<Command> table = {
        {"tip.open", &Self::openMediaDirectoryDialog, {(Qt::CTRL | Qt::Key_O).toCombined()}, {"openButton"}},
        {"tip.capture", &Self::captureVideo, {(Qt::CTRL | Qt::Key_S).toCombined()}, {"captureButton"}},
        {"tip.print", &Self::print, {(Qt::CTRL | Qt::Key_P).toCombined()}, {"printButton"}},
        {"tip.settings", &Self::showSettingPanel, {(Qt::CTRL | Qt::Key_Comma).toCombined()},
            {"settingsButton"}},
        {"tip.clock", &Self::showTimeSetupPanel, {(Qt::CTRL | Qt::Key_T).toCombined()}, {"clockButton"}},
        {"tip.fullscreen", &Self::toggleFullScreen, {Qt::Key_F}, {"fullScreenButton"}},
        {"tip.fullscreen_exit", &Self::toggleFullScreen, {}, {"leaveFullScreenButton"}},
        {"tip.play", &Self::clickPlayButton, {Qt::Key_Space}, {"playButton", "playButtonForFullScreen"}},
        {"tip.jump_forward", &Self::jumpForward, {Qt::Key_Right},
            {"jumpForwardButton", "jumpForwardButtonForFullScreen"}},
        {"tip.jump_backward", &Self::jumpBackward, {Qt::Key_Left},
            {"jumpBackwardButton", "jumpBackwardButtonForFullScreen"}},
        {"tip.volume_up", &Self::volumeUp, {Qt::Key_Up}, {"volumeUpButton"}},
        {"tip.volume_down", &Self::volumeDown, {Qt::Key_Down}, {"volumeDownButton"}},
        {"tip.speed_up", &Self::increaseSpeed, {Qt::Key_2}, {"speedUpButton"}},
        {"tip.speed_down", &Self::decreaseSpeed, {Qt::Key_1}, {"speedDownButton"}},
        {"tip.size_up", &Self::sizeUp, {Qt::Key_Plus, Qt::Key_Equal}, {"sizeUpButton"}},
        {"tip.size_down", &Self::sizeDown, {Qt::Key_Minus}, {"sizeDownButton"}},
        {"tip.play", &Self::changeAndPlay, {Qt::Key_Return, Qt::Key_Enter}, {}},
        {"tip.previous", &Self::playPrevious, {Qt::Key_PageUp}, {}},
        {"tip.next", &Self::playFollowing, {Qt::Key_PageDown}, {}},
        {"tip.give_up", &Self::giveUpStart, {Qt::Key_Escape}, {}},
        {"tip.list", &Self::clickMediaListViewButton, {}, {"recordButtonImageView"}},
        {"tip.map", &Self::clickMapViewButton, {}, {"informationButtonImageView"}},
    };
    return table;
}

void ZVKAppDelegate::connectControls()
{
    const MainWindowOutlets& o = *outlets;
    for (const Command& command : commands()) {
        for (const char* name : command.buttons) {
            auto* button = window->findChild<TKImageButton*>(QLatin1String(name));
            describe(*button, command.textKey);
            QObject::connect(button, &TKImageButton::clicked, window.get(),
                [this, action = command.action] { (this->*action)(); });
        }
    }
    describe(*o.minimizeButton, "tip.minimize");
    describe(*o.closeButton, "tip.close");
    QObject::connect(o.minimizeButton, &TKImageButton::clicked, window.get(), &QWidget::showMinimized);
    QObject::connect(o.closeButton, &TKImageButton::clicked, window.get(), &QWidget::close);

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
    QObject::connect(window.get(), &CustomWindow::keyPressed, window.get(), [this](QKeyEvent* event) {
        if (pressKey(*event))
            event->accept();
    });
    (new Watch(o.videoContainerView))->resized = [this] { contentResized(); };
    (new Watch(o.mediaListTableView))->keyPressed = [this](
                                                        QKeyEvent& event) { return pressKeyInList(event); };
    (new Watch(o.mediaListTableView->viewport()))->mousePressed = [this](QMouseEvent& event) {
        // The row that plays stays selected when the empty part of the list is clicked.
        return !outlets->mediaListTableView->indexAt(event.position().toPoint()).isValid();
    };
    for (QWidget* control : window->findChildren<QWidget*>())
        if (qobject_cast<TKImageButton*>(control) || qobject_cast<QSlider*>(control))
            (new Watch(control))->keyPressed = [this](QKeyEvent& event) { return pressKeyOnControl(event); };
}

/// Tooltip and accessible name of a command's button, the key in the tooltip.
void ZVKAppDelegate::describe(QWidget& button, const char* textKey)
{
    const QString text = platform::localized(textKey);
    button.setAccessibleName(text);
    const auto command = std::ranges::find_if(commands(), [&](const Command& candidate) {
        return std::ranges::any_of(
            candidate.buttons, [&](const char* name) { return button.objectName() == QLatin1String(name); });
    });
    const bool hasKey = command != commands().end() && !command->keys.empty();
    button.setToolTip(hasKey ? withKey(text, command->keys.front()) : text);
}

bool ZVKAppDelegate::pressKey(const QKeyEvent& event)
{
    // Where there is nothing to give up, it leaves full screen.
    if (event.key() == Qt::Key_Escape && (window->isFullScreen() || !waitingForPlayStart))
        return false;
    for (const Command& command : commands()) {
        if (std::ranges::find(command.keys, combined(event)) != command.keys.end()) {
            (this->*command.action)();
            return true;
        }
    }
    return false;
}

/// A button keeps Space, a slider Home and End.
bool ZVKAppDelegate::pressKeyOnControl(const QKeyEvent& event)
{
    return event.key() != Qt::Key_Space && pressKey(event);
}

/// Takes the focus from what is hidden by now, so that the keys reach the window.
void ZVKAppDelegate::releaseHiddenFocus()
{
    const QWidget* focused = window->focusWidget();
    if (focused && focused != window.get() && !focused->isVisibleTo(window.get()))
        window->setFocus();
}

/// The list keeps the keys that move its selection; the rest is the window's.
bool ZVKAppDelegate::pressKeyInList(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
        return false;
    default:
        return pressKey(event);
    }
}
