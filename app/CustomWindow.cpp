#include "app/CustomWindow.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

CustomWindow::CustomWindow(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint)
{
}

void CustomWindow::setMinimumWindowSize(platform::Size size)
{
    setMinimumSize(int(size.width), int(size.height));
}

platform::Rect CustomWindow::frame() const
{
    return screens->frameOf(*this);
}

void CustomWindow::setFrame(const platform::Rect& frame)
{
    screens->setFrameOf(*this, frame);
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
    setFrame(currentScreen().frame);
}

void CustomWindow::leaveFullscreen()
{
    if (!fullScreen)
        return;
    setIsFullScreen(false);
    setFrame(initialFrame);
}

void CustomWindow::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && fullScreen)
        leaveFullscreen();
    else
        QWidget::keyPressEvent(event);
}

void CustomWindow::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && !fullScreen)
        initialLocation = event->position();
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
