#pragma once

#include <QObject>
#include <QSize>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

struct mpv_handle;
struct mpv_render_context;

namespace platform {

/// mpv's side of the picture on screen: there is at most one for an mpv core, it must exist before a file is
/// loaded and be gone before the core is. Main thread only; with OpenGL the same context must be current
/// for making, drawing, skipping and destroying.
class MpvRenderContext final : public QObject {
public:
    /// Looks up OpenGL functions in the current context. Null when mpv can't draw with it.
    static std::unique_ptr<MpvRenderContext> makeOpenGL(mpv_handle* mpv);
    static std::unique_ptr<MpvRenderContext> makeSoftware(mpv_handle* mpv);
    ~MpvRenderContext() override;

    /// Called from the event loop when the picture has changed: draw or skip it soon, as mpv waits for that.
    std::function<void()> pictureChanged;

    /// Pictures that mpv has handed over since this was made.
    uint64_t pictures() const { return pictureCount; }

    /// Draws the current picture, upside up, into a framebuffer object of the given size.
    bool drawOpenGL(int framebuffer, QSize size);
    /// Draws the current picture as 0xffRRGGBB pixels; the memory and the bytes per line should be multiples
    /// of 64.
    bool drawSoftware(void* pixels, QSize size, size_t bytesPerLine);
    /// Takes the new picture without drawing it; it stays the current one.
    void skip();

private:
    explicit MpvRenderContext(mpv_render_context* context);
    static void updated(void* self);

    mpv_render_context* const context;
    std::atomic_flag updateQueued;
    uint64_t pictureCount = 0;
};

} // namespace platform
