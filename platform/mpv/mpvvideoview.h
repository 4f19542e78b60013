#pragma once

#include <QOpenGLWidget>

struct mpv_handle;
struct mpv_render_context;

// Draws one mpv player's pictures through its render API. While the view has
// a render context the player's video output is "libmpv"; before the context
// goes, the output falls back to "null", so a file that plays on keeps its
// pictures decoded (and a silent animation keeps its clock) with no view.
class MpvVideoView : public QOpenGLWidget
{
public:
    MpvVideoView(mpv_handle *mpv, QWidget *parent);
    ~MpvVideoView() override;

    // False where the display offers no OpenGL to widgets (said once).
    static bool supported();

protected:
    void initializeGL() override;
    void paintGL() override;

private:
    void release();

    mpv_handle *m_mpv;
    mpv_render_context *m_render = nullptr;
};
