#pragma once

#include <QImage>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <atomic>
#include <cstdlib>
#include <memory>

struct mpv_handle;
struct mpv_render_context;
class MpvVideoView;

// One player's picture output, in memory and on the UI thread. The output
// lives as long as the player, so mpv never has to replace it while a file
// plays (replacing it mid-play can leave the file stuck); each new picture is
// drawn into the shown view, or taken and dropped when there is none, so a
// file keeps its clock either way.
class MpvRenderer : public QObject
{
public:
    // Check valid(): mpv may refuse to draw into memory.
    explicit MpvRenderer(mpv_handle *mpv);
    ~MpvRenderer() override;

    bool valid() const { return m_render != nullptr; }

    // Replaces the renderer's view; the view belongs to parent.
    MpvVideoView *createView(QWidget *parent);

    // Draws the current picture, scaled to fit with black bars, into image
    // (QImage::Format_RGB32).
    void draw(QImage &image);

private:
    void takePicture();

    mpv_render_context *m_render = nullptr;
    QPointer<MpvVideoView> m_view;
    std::atomic<bool> m_posted{false};
};

class MpvVideoView : public QWidget
{
public:
    MpvVideoView(MpvRenderer &renderer, QWidget *parent);

    // Draws the current picture at the view's size and shows it.
    void redraw();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QSize pixelSize() const;
    void drawPicture();

    MpvRenderer &m_renderer;
    // mpv draws fastest into rows that start on 64-byte boundaries.
    std::unique_ptr<uchar, decltype(&std::free)> m_pixels{nullptr, &std::free};
    QImage m_picture; // over m_pixels
};
