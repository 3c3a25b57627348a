#include "platform/qt/QtScreens.h"

#include "platform/UserDefaults.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVariantAnimation>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace platform {

namespace {

// The toolkit counts y downwards from the top of the first screen.
double baseline()
{
    const QRect first = QGuiApplication::primaryScreen()->geometry();
    return first.y() + first.height();
}

Rect yUp(const QRect& rect)
{
    return {double(rect.x()), baseline() - (rect.y() + rect.height()), double(rect.width()),
        double(rect.height())};
}

QRect yDown(const Rect& rect)
{
    return QRectF(rect.x, baseline() - rect.maxY(), rect.width, rect.height).toRect();
}

Screen described(QScreen& screen, bool spansAllDisplays)
{
    const auto index = QGuiApplication::screens().indexOf(&screen);
    Screen described;
    described.displayID = static_cast<uint32_t>(std::max<qsizetype>(index, 0));
    described.frame = yUp(screen.geometry());
    described.visibleFrame = yUp(screen.availableGeometry());
    described.statusBarThickness = described.frame.maxY() - described.visibleFrame.maxY();
    described.hasMenuBar = !spansAllDisplays || &screen == QGuiApplication::primaryScreen();
    return described;
}

// Only Wayland's compositors place windows themselves.
bool placesWindows()
{
    return !QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

const QString movementName = QStringLiteral("frameMovement");

/// The window's movement; null when it stands still.
QVariantAnimation* movementOf(const QWidget& window)
{
    return window.findChild<QVariantAnimation*>(movementName, Qt::FindDirectChildrenOnly);
}

} // namespace

QtScreens::QtScreens(const UserDefaults& defaults)
    : spansAllDisplays(defaults.boolean("spans-displays").value_or(false))
{
}

Screen QtScreens::screenOf(const QWidget& window) const
{
    // Only the desktop knows where it has placed a window; a hidden one has no place yet.
    if (placesWindows() && window.isVisible())
        return screenHoldingMost(all(), frameOf(window));
    QScreen* screen = window.screen();
    return described(screen ? *screen : *QGuiApplication::primaryScreen(), spansAllDisplays);
}

std::vector<Screen> QtScreens::all() const
{
    std::vector<Screen> screens;
    for (QScreen* screen : QGuiApplication::screens())
        screens.push_back(described(*screen, spansAllDisplays));
    return screens;
}

Rect QtScreens::frameOf(const QWidget& window) const
{
    const QVariantAnimation* movement = movementOf(window);
    return yUp(movement ? movement->endValue().toRect() : window.geometry());
}

void QtScreens::setFrameOf(QWidget& window, const Rect& frame, bool animated)
{
    delete movementOf(window);
    const QRect target = yDown(frame);
    if (!placesWindows())
        window.resize(target.size());
    else if (animated && window.isVisible() && target != window.geometry() && preference.isAnimated())
        animate(window, target);
    else
        window.setGeometry(target);
}

void QtScreens::animate(QWidget& window, const QRect& target)
{
    constexpr int durationMs = 180;
    auto* movement = new QVariantAnimation(&window);
    movement->setObjectName(movementName);
    movement->setDuration(durationMs);
    movement->setEasingCurve(QEasingCurve::OutCubic);
    movement->setStartValue(window.geometry());
    movement->setEndValue(target);
    QObject::connect(movement, &QVariantAnimation::valueChanged, &window,
        [&window](const QVariant& step) { window.setGeometry(step.toRect()); });
    QObject::connect(movement, &QVariantAnimation::finished, &window, [this, &window, movement] {
        movement->setObjectName({});
        movement->deleteLater();
        if (presented == &window)
            applyOptions();
    });
    movement->start();
}

bool QtScreens::startMove(QWidget& window)
{
    return !placesWindows() && window.windowHandle() && window.windowHandle()->startSystemMove();
}

void QtScreens::setPresentationOptions(QWidget& window, uint32_t wanted)
{
    options = wanted;
    presented = &window;
    // The desktop would go to full screen at once, without the animation.
    if (options == 0 || !movementOf(window))
        applyOptions();
}

void QtScreens::applyOptions()
{
    // Panels and docks are hidden only for a window in the desktop's full-screen state; a hidden window must
    // stay hidden.
    const bool isFull = presented->windowState() & Qt::WindowFullScreen;
    if (isFull != (options != 0))
        presented->setWindowState(presented->windowState() ^ Qt::WindowFullScreen);
}

} // namespace platform
