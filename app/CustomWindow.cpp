#include "app/CustomWindow.h"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>

#include <algorithm>

namespace {

/// The one folder that is dragged; empty when it is anything else.
std::string draggedFolder(const QMimeData& data)
{
    const QList<QUrl> urls = data.urls();
    if (urls.size() != 1 || !urls.first().isLocalFile())
        return {};
    const QString path = urls.first().toLocalFile();
    return QFileInfo(path).isDir() ? QFile::encodeName(path).toStdString() : std::string();
}

} // namespace

CustomWindow::CustomWindow(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint)
{
    setAcceptDrops(true);
}

void CustomWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!draggedFolder(*event->mimeData()).empty())
        event->acceptProposedAction();
}

void CustomWindow::dropEvent(QDropEvent* event)
{
    const std::string folder = draggedFolder(*event->mimeData());
    if (folder.empty())
        return;
    event->acceptProposedAction();
    emit folderDropped(folder);
}

void CustomWindow::setMinimumWindowSize(platform::Size size)
{
    setMinimumSize(int(size.width), int(size.height));
}

platform::Rect CustomWindow::frame() const
{
    return screens->frameOf(*this);
}

void CustomWindow::setFrame(const platform::Rect& frame, bool animated)
{
    screens->setFrameOf(*this, frame, animated);
}

platform::Rect CustomWindow::reachable(platform::Rect frame) const
{
    const platform::Rect visible = currentScreen().visibleFrame;
    frame.y = std::min(frame.y, visible.maxY() - frame.height);
    frame.x = std::max(frame.x, visible.x);
    return frame;
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
    // Full screen has the screen's size, also where that is smaller than the window otherwise may be.
    normalMinimum = minimumSize();
    setMinimumSize(0, 0);
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
    setMinimumSize(normalMinimum);
    setFrame(initialFrame, true);
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
    const platform::Rect visible = screens->all().front().visibleFrame;
    target.y = std::min(target.y, visible.maxY() - target.height);
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
