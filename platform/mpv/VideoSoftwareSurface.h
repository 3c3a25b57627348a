#pragma once

#include "platform/mpv/MpvRenderContext.h"
#include "platform/mpv/VideoSurface.h"

#include <QWidget>
#include <cstdlib>
#include <memory>

namespace platform {

/// Draws with mpv's software renderer at the widget's own pixel size.
class VideoSoftwareSurface final : public QWidget, public VideoSurface {
public:
    explicit VideoSoftwareSurface(QWidget* parent);

    QWidget* widget() override { return this; }
    bool attach(mpv_handle* mpv) override;
    void detach() override;
    uint64_t pictures() const override { return context ? context->pictures() : 0; }
    QImage picture(QSize size) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Free {
        void operator()(uchar* memory) const { std::free(memory); }
    };

    QSize pixelSize() const;
    void pictureChanged();
    bool draw(QSize size);

    std::unique_ptr<MpvRenderContext> context;
    std::unique_ptr<uchar[], Free> pixels;
    size_t capacity = 0;
    /// Looks at `pixels`.
    QImage image;
    bool stale = true;
};

} // namespace platform
