#include "mpvvideoview.h"
#include "postonce.h"

#include <QPainter>
#include <QtDebug>

#include <mpv/client.h>
#include <mpv/render.h>

namespace {

// QImage::Format_RGB32 in memory order.
#if Q_BYTE_ORDER == Q_LITTLE_ENDIAN
char rgb32[] = "bgr0";
#else
char rgb32[] = "0rgb";
#endif

} // namespace

MpvRenderer::MpvRenderer(mpv_handle *mpv)
{
    mpv_render_param params[] = {
        {MPV_RENDER_PARAM_API_TYPE, const_cast<char *>(MPV_RENDER_API_TYPE_SW)},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    if (mpv_render_context_create(&m_render, mpv, params) < 0) {
        m_render = nullptr;
        return;
    }
    mpv_render_context_set_update_callback(
        m_render,
        [](void *context) {
            auto *self = static_cast<MpvRenderer *>(context);
            postOnce(self, self->m_posted, [self] { self->takePicture(); });
        },
        this);
}

MpvRenderer::~MpvRenderer()
{
    delete m_view; // it draws through this renderer
    if (!m_render)
        return;
    mpv_render_context_set_update_callback(m_render, nullptr, nullptr);
    mpv_render_context_free(m_render);
}

MpvVideoView *MpvRenderer::createView(QWidget *parent)
{
    delete m_view;
    m_view = new MpvVideoView(*this, parent);
    return m_view;
}

void MpvRenderer::draw(QImage &image)
{
    int size[2] = {image.width(), image.height()};
    size_t stride = size_t(image.bytesPerLine());
    int block = 0; // the UI thread never waits for the picture's time
    mpv_render_param params[] = {
        {MPV_RENDER_PARAM_SW_SIZE, size},
        {MPV_RENDER_PARAM_SW_FORMAT, rgb32},
        {MPV_RENDER_PARAM_SW_STRIDE, &stride},
        {MPV_RENDER_PARAM_SW_POINTER, image.bits()},
        {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &block},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    if (mpv_render_context_render(m_render, params) < 0)
        image.fill(Qt::black);
}

void MpvRenderer::takePicture()
{
    m_posted = false;
    if (!(mpv_render_context_update(m_render) & MPV_RENDER_UPDATE_FRAME))
        return;
    if (m_view && m_view->isVisible()) {
        m_view->redraw();
        return;
    }
    int skip = 1;
    int block = 0;
    mpv_render_param params[] = {
        {MPV_RENDER_PARAM_SKIP_RENDERING, &skip},
        {MPV_RENDER_PARAM_BLOCK_FOR_TARGET_TIME, &block},
        {MPV_RENDER_PARAM_INVALID, nullptr},
    };
    mpv_render_context_render(m_render, params);
}

MpvVideoView::MpvVideoView(MpvRenderer &renderer, QWidget *parent)
    : QWidget(parent), m_renderer(renderer)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

QSize MpvVideoView::pixelSize() const
{
    return (QSizeF(size()) * devicePixelRatioF()).toSize();
}

void MpvVideoView::redraw()
{
    drawPicture();
    update();
}

void MpvVideoView::drawPicture()
{
    const QSize pixels = pixelSize();
    if (pixels.isEmpty())
        return;
    if (m_picture.size() != pixels) {
        const qsizetype stride = (qsizetype(pixels.width()) * 4 + 63) / 64 * 64;
        m_picture = QImage();
        m_pixels.reset(static_cast<uchar *>(std::aligned_alloc(64, stride * pixels.height())));
        if (!m_pixels)
            return;
        m_picture =
            QImage(m_pixels.get(), pixels.width(), pixels.height(), stride, QImage::Format_RGB32);
        m_picture.setDevicePixelRatio(devicePixelRatioF());
    }
    m_renderer.draw(m_picture);
}

void MpvVideoView::paintEvent(QPaintEvent *)
{
    // After a resize the picture is drawn anew at the new size, also while
    // the player is paused.
    if (m_picture.size() != pixelSize())
        drawPicture();
    QPainter painter(this);
    if (m_picture.isNull())
        painter.fillRect(rect(), Qt::black);
    else
        painter.drawImage(0, 0, m_picture);
}
