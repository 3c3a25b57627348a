#include "platform/mpv/VideoSoftwareSurface.h"

#include <QPainter>

namespace platform {

namespace {

constexpr size_t alignment = 64;

constexpr size_t aligned(size_t bytes)
{
    return (bytes + alignment - 1) / alignment * alignment;
}

} // namespace

VideoSoftwareSurface::VideoSoftwareSurface(QWidget* parent)
    : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

bool VideoSoftwareSurface::attach(mpv_handle* mpv)
{
    context = MpvRenderContext::makeSoftware(mpv);
    if (context)
        context->pictureChanged = [this] { pictureChanged(); };
    return context != nullptr;
}

void VideoSoftwareSurface::detach()
{
    context.reset();
    stale = true;
    update();
}

QSize VideoSoftwareSurface::pixelSize() const
{
    const qreal scale = devicePixelRatioF();
    return {qRound(width() * scale), qRound(height() * scale)};
}

void VideoSoftwareSurface::pictureChanged()
{
    const bool visible = isOnScreen(*this);
    if (!visible)
        context->skip();
    stale = !visible || !draw(pixelSize());
    update();
}

bool VideoSoftwareSurface::draw(QSize size)
{
    if (!context || size.isEmpty())
        return false;
    const size_t bytesPerLine = aligned(static_cast<size_t>(size.width()) * 4);
    const size_t bytes = bytesPerLine * static_cast<size_t>(size.height());
    if (bytes > capacity) {
        image = {};
        pixels.reset(static_cast<uchar*>(std::aligned_alloc(alignment, bytes)));
        capacity = pixels ? bytes : 0;
    }
    if (!pixels)
        return false;
    if (image.size() != size)
        image = QImage(pixels.get(), size.width(), size.height(), static_cast<qsizetype>(bytesPerLine),
            QImage::Format_RGB32);
    return context->drawSoftware(pixels.get(), size, bytesPerLine);
}

void VideoSoftwareSurface::paintEvent(QPaintEvent*)
{
    if (stale || image.size() != pixelSize())
        stale = !draw(pixelSize());
    QPainter painter(this);
    if (stale)
        painter.fillRect(rect(), Qt::black);
    else
        painter.drawImage(rect(), image);
}

QImage VideoSoftwareSurface::picture(QSize size)
{
    stale = true;
    update();
    return draw(size) ? image.copy() : QImage();
}

} // namespace platform
