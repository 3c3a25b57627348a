#pragma once

#include <QImage>
#include <cstdint>

class QWidget;
struct mpv_handle;

namespace platform {

/// One way of drawing mpv's pictures: a widget that fills the video view.
class VideoSurface {
public:
    virtual ~VideoSurface() = default;

    virtual QWidget* widget() = 0;
    /// Begins to draw the core's pictures. False when this kind of drawing doesn't work here.
    virtual bool attach(mpv_handle* mpv) = 0;
    /// Harmless when nothing is attached.
    virtual void detach() = 0;
    /// Pictures received; grows with every new one.
    virtual uint64_t pictures() const = 0;
    /// The current picture, scaled to the size in pixels; a null image when there is none.
    virtual QImage picture(QSize size) = 0;
};

/// Whether any part of the widget is visible, as far as the toolkit knows.
bool isOnScreen(const QWidget& widget);

} // namespace platform
