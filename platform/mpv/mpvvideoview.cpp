#include "mpvvideoview.h"

#include <QGuiApplication>
#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <QtDebug>

#include <mpv/client.h>
#include <mpv/render_gl.h>

namespace {

void *procAddress(void *, const char *name)
{
    QOpenGLContext *context = QOpenGLContext::currentContext();
    return context ? reinterpret_cast<void *>(context->getProcAddress(QByteArray(name))) : nullptr;
}

void setVideoOutput(mpv_handle *mpv, const char *name)
{
    if (mpv_set_property(mpv, "vo", MPV_FORMAT_STRING, &name) < 0)
        qWarning("MpvVideoView: the video output %s was refused", name);
}

} // namespace

MpvVideoView::MpvVideoView(mpv_handle *mpv, QWidget *parent) : QOpenGLWidget(parent), m_mpv(mpv)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

MpvVideoView::~MpvVideoView()
{
    // The base class destroys the context after this object is gone.
    if (QOpenGLContext *gl = context())
        disconnect(gl, nullptr, this, nullptr);
    release();
}

bool MpvVideoView::supported()
{
    static const bool openGL = [] {
        // Qt's headless and framebuffer platforms cannot put OpenGL widgets
        // on screen and crash trying; elsewhere a context must come up.
        static const QStringList without{QStringLiteral("offscreen"), QStringLiteral("minimal"),
                                         QStringLiteral("linuxfb"), QStringLiteral("vnc")};
        QOpenGLContext probe;
        const bool yes = !without.contains(QGuiApplication::platformName()) && probe.create();
        if (!yes)
            qWarning("Video: this display offers no OpenGL; videos play their sound only");
        return yes;
    }();
    return openGL;
}

void MpvVideoView::initializeGL()
{
    release();
    mpv_opengl_init_params gl{procAddress, nullptr};
    int advanced = 0;
    mpv_render_param params[] = {
        {MPV_RENDER_PARAM_API_TYPE, const_cast<char *>(MPV_RENDER_API_TYPE_OPENGL)},
        {MPV_RENDER_PARAM_OPENGL_INIT_PARAMS, &gl},
        {MPV_RENDER_PARAM_ADVANCED_CONTROL, &advanced},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    if (mpv_render_context_create(&m_render, m_mpv, params) < 0) {
        qWarning("MpvVideoView: no OpenGL rendering; pictures stay hidden");
        m_render = nullptr;
        return;
    }
    // Runs on an mpv thread; the paint must happen on ours.
    mpv_render_context_set_update_callback(
        m_render,
        [](void *view) {
            QMetaObject::invokeMethod(static_cast<QWidget *>(view), "update", Qt::QueuedConnection);
        },
        this);
    // Qt drops its context when the widget moves to another window; the next
    // initializeGL makes a new one.
    connect(
        context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] { release(); },
        Qt::DirectConnection);
    setVideoOutput(m_mpv, "libmpv");
}

void MpvVideoView::paintGL()
{
    if (!m_render) {
        if (QOpenGLContext *gl = context()) {
            gl->functions()->glClearColor(0, 0, 0, 1);
            gl->functions()->glClear(GL_COLOR_BUFFER_BIT);
        }
        return;
    }
    const qreal ratio = devicePixelRatioF();
    mpv_opengl_fbo fbo{int(defaultFramebufferObject()), int(width() * ratio), int(height() * ratio),
                       0};
    int flip = 1;
    mpv_render_param params[] = {
        {MPV_RENDER_PARAM_OPENGL_FBO, &fbo},
        {MPV_RENDER_PARAM_FLIP_Y, &flip},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    mpv_render_context_render(m_render, params);
}

void MpvVideoView::release()
{
    if (!m_render)
        return;
    // Away from "libmpv" first: freeing the context under a playing file
    // would switch its video off for good.
    setVideoOutput(m_mpv, "null");
    makeCurrent();
    mpv_render_context_set_update_callback(m_render, nullptr, nullptr);
    mpv_render_context_free(m_render);
    m_render = nullptr;
    doneCurrent();
}
