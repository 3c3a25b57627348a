#include "platform/mpv/MpvRenderContext.h"

#include <QOpenGLContext>
#include <mpv/render_gl.h>

namespace platform {

namespace {

void* openGLFunction(void*, const char* name)
{
    const auto* current = QOpenGLContext::currentContext();
    return current ? reinterpret_cast<void*>(current->getProcAddress(name)) : nullptr;
}

} // namespace

std::unique_ptr<MpvRenderContext> MpvRenderContext::makeOpenGL(mpv_handle* mpv)
{
    char api[] = MPV_RENDER_API_TYPE_OPENGL;
    mpv_opengl_init_params functions{openGLFunction, nullptr};
    mpv_render_param parameters[] = {
        {MPV_RENDER_PARAM_API_TYPE, api},
        {MPV_RENDER_PARAM_OPENGL_INIT_PARAMS, &functions},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    mpv_render_context* context = nullptr;
    if (mpv_render_context_create(&context, mpv, parameters) < 0)
        return nullptr;
    return std::unique_ptr<MpvRenderContext>(new MpvRenderContext(context));
}

std::unique_ptr<MpvRenderContext> MpvRenderContext::makeSoftware(mpv_handle* mpv)
{
    char api[] = MPV_RENDER_API_TYPE_SW;
    mpv_render_param parameters[] = {
        {MPV_RENDER_PARAM_API_TYPE, api},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    mpv_render_context* context = nullptr;
    if (mpv_render_context_create(&context, mpv, parameters) < 0)
        return nullptr;
    return std::unique_ptr<MpvRenderContext>(new MpvRenderContext(context));
}

MpvRenderContext::MpvRenderContext(mpv_render_context* renderContext)
    : context(renderContext)
{
    mpv_render_context_set_update_callback(context, updated, this);
}

MpvRenderContext::~MpvRenderContext()
{
    mpv_render_context_set_update_callback(context, nullptr, nullptr);
    // mpv would wait a while for a picture that is due.
    skip();
    mpv_render_context_free(context);
}

void MpvRenderContext::updated(void* opaque)
{
    auto* self = static_cast<MpvRenderContext*>(opaque);
    if (self->updateQueued.test_and_set())
        return;
    const auto announce = [self] {
        self->updateQueued.clear();
        if (mpv_render_context_update(self->context) & MPV_RENDER_UPDATE_FRAME)
            ++self->pictureCount;
        if (self->pictureChanged)
            self->pictureChanged();
    };
    QMetaObject::invokeMethod(self, announce, Qt::QueuedConnection);
}

bool MpvRenderContext::drawOpenGL(int framebuffer, QSize size)
{
    mpv_opengl_fbo target{framebuffer, size.width(), size.height(), 0};
    int flip = 1;
    int wait = 0;
    mpv_render_param parameters[] = {
        {MPV_RENDER_PARAM_OPENGL_FBO, &target},
        {MPV_RENDER_PARAM_FLIP_Y, &flip},
        {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &wait},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    return mpv_render_context_render(context, parameters) >= 0;
}

bool MpvRenderContext::drawSoftware(void* pixels, QSize size, size_t bytesPerLine)
{
    int dimensions[] = {size.width(), size.height()};
    char format[] = "bgr0";
    int wait = 0;
    mpv_render_param parameters[] = {
        {MPV_RENDER_PARAM_SW_SIZE, dimensions},
        {MPV_RENDER_PARAM_SW_FORMAT, format},
        {MPV_RENDER_PARAM_SW_STRIDE, &bytesPerLine},
        {MPV_RENDER_PARAM_SW_POINTER, pixels},
        {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &wait},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    return mpv_render_context_render(context, parameters) >= 0;
}

void MpvRenderContext::skip()
{
    int skipped = 1;
    int wait = 0;
    mpv_render_param parameters[] = {
        {MPV_RENDER_PARAM_SKIP_RENDERING, &skipped},
        {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &wait},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    mpv_render_context_render(context, parameters);
}

} // namespace platform
