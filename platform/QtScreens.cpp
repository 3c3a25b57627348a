#include "platform/QtScreens.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

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

Screen described(const QScreen& screen)
{
    const auto index = QGuiApplication::screens().indexOf(&screen);
    return {static_cast<uint32_t>(std::max<qsizetype>(index, 0)), yUp(screen.geometry()),
        yUp(screen.availableGeometry())};
}

} // namespace

Screen QtScreens::screenOf(const QWidget& window) const
{
    const QScreen* screen = window.screen();
    return described(screen ? *screen : *QGuiApplication::primaryScreen());
}

std::vector<Screen> QtScreens::all() const
{
    std::vector<Screen> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens.push_back(described(*screen));
    return screens;
}

Rect QtScreens::frameOf(const QWidget& window) const
{
    return yUp(window.geometry());
}

void QtScreens::setFrameOf(QWidget& window, const Rect& frame)
{
    window.setGeometry(yDown(frame));
}

} // namespace platform
