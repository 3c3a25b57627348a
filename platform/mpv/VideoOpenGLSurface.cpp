#include "platform/mpv/VideoOpenGLSurface.h"

#include <QGuiApplication>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <algorithm>

namespace platform {

VideoOpenGLSurface::VideoOpenGLSurface(QWidget* parent)
    : QOpenGLWidget(parent)
{
}

VideoOpenGLSurface::~VideoOpenGLSurface()
{
    detach();
    if (QOpenGLWidget::context())
        QOpenGLWidget::context()->disconnect(this);
}

bool VideoOpenGLSurface::attach(mpv_handle* mpv)
{
    // A widget that was never shown has no context; grabFramebuffer makes one. It must share with the
    // window's context, so the window has to be on screen.
    if (!isValid() && window()->isVisible())
        grabFramebuffer();
    if (!isValid() || !QOpenGLWidget::context()->shareContext())
        return false;
    attached = mpv;
    makeCurrent();
    const bool made = makeContext();
    doneCurrent();
    if (!made)
        attached = nullptr;
    return made;
}

void VideoOpenGLSurface::detach()
{
    attached = nullptr;
    releaseContext();
    update();
}

void VideoOpenGLSurface::initializeGL()
{
    connect(
        QOpenGLWidget::context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] { releaseContext(); });
    if (attached && makeContext() && outputReplaced)
        outputReplaced();
}

bool VideoOpenGLSurface::makeContext()
{
    context = MpvRenderContext::makeOpenGL(attached);
    if (context)
        context->pictureChanged = [this] { pictureChanged(); };
    return context != nullptr;
}

void VideoOpenGLSurface::releaseContext()
{
    if (!context)
        return;
    makeCurrent();
    context.reset();
    doneCurrent();
}

void VideoOpenGLSurface::pictureChanged()
{
    update();
    if (isOnScreen(*this))
        return;
    makeCurrent();
    context->skip();
    doneCurrent();
}

void VideoOpenGLSurface::paintGL()
{
    const qreal scale = devicePixelRatioF();
    const QSize size(qRound(width() * scale), qRound(height() * scale));
    if (context && context->drawOpenGL(static_cast<int>(defaultFramebufferObject()), size))
        return;
    auto* gl = QOpenGLWidget::context()->functions();
    gl->glClearColor(0, 0, 0, 1);
    gl->glClear(GL_COLOR_BUFFER_BIT);
}

QImage VideoOpenGLSurface::picture(QSize size)
{
    if (!context || size.isEmpty())
        return {};
    makeCurrent();
    QImage image;
    {
        QOpenGLFramebufferObject target(size);
        if (target.isValid() && context->drawOpenGL(static_cast<int>(target.handle()), size))
            image = target.toImage().convertToFormat(QImage::Format_RGB32);
    }
    doneCurrent();
    update();
    return image;
}

namespace {

bool findHardwareOpenGL()
{
    const QString platform = QGuiApplication::platformName();
    if (platform == "offscreen" || platform == "minimal")
        return false;
    QOpenGLContext context;
    if (!context.create())
        return false;
    QOffscreenSurface surface;
    surface.setFormat(context.format());
    surface.create();
    if (!context.makeCurrent(&surface))
        return false;
    const auto* renderer = reinterpret_cast<const char*>(context.functions()->glGetString(GL_RENDERER));
    const QString name = QString::fromLatin1(renderer).toLower();
    context.doneCurrent();
    constexpr const char* rasterisers[] = {"llvmpipe", "softpipe", "swrast", "software", "swr"};
    const auto isNamed = [&name](const char* rasteriser) { return name.contains(rasteriser); };
    return !name.isEmpty() && std::none_of(std::begin(rasterisers), std::end(rasterisers), isNamed);
}

} // namespace

bool hasHardwareOpenGL()
{
    static const bool found = findHardwareOpenGL();
    return found;
}

} // namespace platform
