#include "app/window/CustomWindow.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>

#include <algorithm>

namespace {

/// The one path that is dragged; empty when it is anything else. Not checked for being a folder: a card may
/// be slow.
std::string draggedPath(const QMimeData& data)
{
    const QList<QUrl> urls = data.urls();
    if (urls.size() != 1 || !urls.first().isLocalFile())
        return {};
    // As bytes: a name need not be UTF-8.
    return QByteArray::fromPercentEncoding(urls.first().path(QUrl::FullyEncoded).toLatin1()).toStdString();
}

} // namespace

CustomWindow::CustomWindow(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint)
{
    setAcceptDrops(true);
}

void CustomWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!draggedPath(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void CustomWindow::dropEvent(QDropEvent* event)
{
    const std::string path = draggedPath(*event->mimeData());
    if (path.empty())
        return;
    event->acceptProposedAction();
    emit pathDropped(path);
}

platform::Size CustomWindow::minimumOn(const platform::Screen& screen) const
{
    return {std::min(wantedMinimum.width, screen.visibleFrame.width),
        std::min(wantedMinimum.height, screen.visibleFrame.height)};
}

platform::Rect CustomWindow::frame() const
{
    return screens->frameOf(*this);
}

void CustomWindow::setFrame(const platform::Rect& frame, bool animated)
{
    // Full screen has the screen's size, also where that is smaller than the window otherwise may be.
    const auto [width, height] =
        fullScreen ? platform::Size() : minimumOn(screenHoldingMost(screens->all(), frame));
    setMinimumSize(int(width), int(height));
    screens->setFrameOf(*this, frame, animated);
}

platform::Screen CustomWindow::currentScreen() const
{
    return screens->screenOf(*this);
}

void CustomWindow::setIsFullScreen(bool value)
{
    fullScreen = value;
    if (observer)
        observer();
}

void CustomWindow::enterFullscreen()
{
    if (fullScreen)
        return;
    setIsFullScreen(true);
    if (initialFrame.width == 0 || initialFrame.height == 0)
        initialFrame = frame();
    const platform::Screen screen = currentScreen();
    setFrame(screen.frame, true);
    screens->setPresentationOptions(
        *this, screen.fullscreenPresentationOptions(screens->presentationOptions()));
}

void CustomWindow::leaveFullscreen()
{
    if (!fullScreen)
        return;
    setIsFullScreen(false);
    screens->setPresentationOptions(
        *this, currentScreen().nonFullscreenPresentationOptions(screens->presentationOptions()));
    // Its screen may be gone by now.
    setFrame(fittedInto(screenHoldingMost(screens->all(), initialFrame).visibleFrame, initialFrame), true);
}

void CustomWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && fullScreen) {
        leaveFullscreen();
        return;
    }
    QWidget::keyPressEvent(event);
    emit keyPressed(event);
}

void CustomWindow::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || fullScreen)
        return;
    initialLocation = event->position();
    if (screens->startMove(*this))
        initialLocation.reset();
}

void CustomWindow::mouseMoveEvent(QMouseEvent* event)
{
    if (!initialLocation || !(event->buttons() & Qt::LeftButton))
        return;
    const QPointF moved = event->position() - *initialLocation;
    platform::Rect target = frame();
    target.x += moved.x();
    target.y -= moved.y();
    const platform::Rect visible = screenHoldingMost(screens->all(), target).visibleFrame;
    const double top = std::min(target.maxY(), visible.maxY());
    // On a smaller screen the controls at the lower edge would be outside it.
    target.width = std::min(target.width, visible.width);
    target.height = std::min(target.height, visible.height);
    target.y = top - target.height;
    setFrame(target);
}

void CustomWindow::mouseReleaseEvent(QMouseEvent*)
{
    initialLocation.reset();
}

void CustomWindow::closeEvent(QCloseEvent* event)
{
    emit closed();
    event->accept();
}
