#pragma once

#include "platform/mpv/MpvRenderContext.h"
#include "platform/mpv/VideoSurface.h"

#include <QOpenGLWidget>
#include <functional>
#include <memory>

namespace platform {

/// Draws with mpv's OpenGL renderer.
class VideoOpenGLSurface final : public QOpenGLWidget, public VideoSurface {
public:
    explicit VideoOpenGLSurface(QWidget* parent);
    ~VideoOpenGLSurface() override;

    QWidget* widget() override { return this; }
    /// Works also while the widget is hidden.
    bool attach(mpv_handle* mpv) override;
    void detach() override;
    uint64_t pictures() const override { return context ? context->pictures() : 0; }
    QImage picture(QSize size) override;

    /// Called when the toolkit has replaced the OpenGL context (the view has moved to another window):
    /// mpv has lost its video output and must choose the video track again.
    std::function<void()> outputReplaced;

protected:
    void initializeGL() override;
    void paintGL() override;

private:
    bool makeContext();
    void releaseContext();
    void pictureChanged();

    mpv_handle* attached = nullptr;
    std::unique_ptr<MpvRenderContext> context;
};

/// Whether OpenGL works here and is done by a graphics processor. Asked once, then remembered.
bool hasHardwareOpenGL();

} // namespace platform
