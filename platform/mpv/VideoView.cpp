#include "platform/mpv/VideoView.h"

#include "platform/mpv/MpvHandle.h"
#include "platform/mpv/VideoOpenGLSurface.h"
#include "platform/mpv/VideoSoftwareSurface.h"

#include <QWindow>

namespace platform {

VideoView::VideoView(QWidget* parent, VideoRenderer renderer)
    : QWidget(parent)
{
    if (renderer == VideoRenderer::automatic)
        renderer = hasHardwareOpenGL() ? VideoRenderer::openGL : VideoRenderer::software;
    makeSurface(renderer);
}

VideoView::~VideoView()
{
    surface->detach();
}

void VideoView::makeSurface(VideoRenderer renderer)
{
    delete surface;
    used = renderer;
    if (renderer == VideoRenderer::openGL) {
        auto* openGL = new VideoOpenGLSurface(this);
        openGL->outputReplaced = [this] {
            if (outputReplaced)
                outputReplaced();
        };
        surface = openGL;
    } else {
        surface = new VideoSoftwareSurface(this);
    }
    surface->widget()->setGeometry(rect());
    // The surface takes no input.
    surface->widget()->setAttribute(Qt::WA_TransparentForMouseEvents);
    surface->widget()->show();
}

void VideoView::setFillScreen(bool fill)
{
    fillScreen = fill;
    if (attached)
        setMpvFlag(attached, "keepaspect", !fill);
}

bool VideoView::attach(mpv_handle* mpv)
{
    if (attached)
        return attached == mpv;
    if (!surface->attach(mpv)) {
        if (used == VideoRenderer::software)
            return false;
        makeSurface(VideoRenderer::software);
        if (!surface->attach(mpv))
            return false;
    }
    attached = mpv;
    setFillScreen(fillScreen);
    return true;
}

void VideoView::detach(mpv_handle* mpv)
{
    if (attached != mpv)
        return;
    surface->detach();
    attached = nullptr;
}

uint64_t VideoView::pictures() const
{
    return surface->pictures();
}

QImage VideoView::picture(QSize size)
{
    return surface->picture(size);
}

void VideoView::resizeEvent(QResizeEvent*)
{
    surface->widget()->setGeometry(rect());
}

bool isOnScreen(const QWidget& widget)
{
    const QWindow* window = widget.window()->windowHandle();
    return widget.isVisible() && window && window->isExposed() && !widget.visibleRegion().isEmpty();
}

} // namespace platform
