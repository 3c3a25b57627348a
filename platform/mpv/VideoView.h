#pragma once

#include <QImage>
#include <QWidget>
#include <cstdint>
#include <functional>

struct mpv_handle;

namespace platform {

class VideoSurface;

/// How the pictures are drawn. Automatic: OpenGL where a graphics processor does it, otherwise in software,
/// which needs half the processor time of an OpenGL that is itself emulated.
enum class VideoRenderer { automatic, openGL, software };

/// The area that shows one player's pictures, black where there is none. It may be hidden, resized or moved
/// within its window at any time; when it is shown again it shows the current picture.
class VideoView final : public QWidget {
public:
    explicit VideoView(QWidget* parent = nullptr, VideoRenderer renderer = VideoRenderer::automatic);
    ~VideoView() override;

    /// Scales the picture to fill the view; otherwise it keeps its shape between black bars.
    void setFillScreen(bool fill);
    /// The renderer that is used, never `automatic`. Software replaces an OpenGL that turns out not to work.
    VideoRenderer renderer() const { return used; }

    /// For the player. True when the core's pictures will be drawn here; false when they can't be, or when
    /// another core is attached. Must come before the core opens its first file.
    bool attach(mpv_handle* mpv);
    void detach(mpv_handle* mpv);
    uint64_t pictures() const;
    /// The current picture, scaled to the size in pixels; a null image when there is none.
    QImage picture(QSize size);
    /// Called when mpv has lost its video output and must choose the video track again.
    std::function<void()> outputReplaced;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void makeSurface(VideoRenderer renderer);

    /// A child widget.
    VideoSurface* surface = nullptr;
    VideoRenderer used = VideoRenderer::software;
    mpv_handle* attached = nullptr;
    bool fillScreen = false;
};

} // namespace platform
