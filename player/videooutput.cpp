#include "videooutput.h"

#include "platform/mediadevice.h"
#include "skin/skinareawidget.h"

#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>

namespace {

// The window of a video that has no place in the skin. A double-click fills
// the screen with it and another one, or Escape, brings it back.
class VideoWindow : public QWidget
{
public:
    explicit VideoWindow(QWidget *parent) : QWidget(parent, Qt::Window) {}

protected:
    void mouseDoubleClickEvent(QMouseEvent *) override
    {
        isFullScreen() ? showNormal() : showFullScreen();
    }
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Escape && isFullScreen())
            showNormal();
        else
            QWidget::keyPressEvent(event);
    }
};

} // namespace

VideoOutput::VideoOutput(QWidget &mainWindow) : m_main(mainWindow) {}

VideoOutput::~VideoOutput()
{
    for (Shown &shown : m_devices) {
        shown.device->setVideoEvents({});
        hide(shown);
    }
}

void VideoOutput::addDevice(MediaDevice &device)
{
    if (find(device))
        return;
    m_devices.push_back({&device, {}, {}});
    MediaDevice *key = &device;
    device.setVideoEvents(
        {[this, key](QSize) { show(*find(*key)); }, [this, key] { hide(*find(*key)); }});
}

void VideoOutput::setVideoBox(SkinAreaWidget *box)
{
    if (m_box == box)
        return;
    m_box = box;
    for (Shown &shown : m_devices) {
        if (shown.view) {
            hide(shown);
            show(shown);
        }
    }
}

QWidget *VideoOutput::window(const MediaDevice &device) const
{
    const Shown *shown = find(device);
    return shown ? shown->window.data() : nullptr;
}

QWidget *VideoOutput::view(const MediaDevice &device) const
{
    const Shown *shown = find(device);
    return shown ? shown->view.data() : nullptr;
}

QSize VideoOutput::fitted(QSize video, QSize screen)
{
    if (video.isEmpty())
        return {320, 240};
    const QSize room = screen.isEmpty() ? video : screen * 4 / 5;
    return video.width() <= room.width() && video.height() <= room.height()
               ? video
               : video.scaled(room, Qt::KeepAspectRatio);
}

VideoOutput::Shown *VideoOutput::find(const MediaDevice &device)
{
    for (Shown &shown : m_devices)
        if (shown.device == &device)
            return &shown;
    return nullptr;
}

const VideoOutput::Shown *VideoOutput::find(const MediaDevice &device) const
{
    return const_cast<VideoOutput *>(this)->find(device);
}

void VideoOutput::show(Shown &shown)
{
    const QSize size = shown.device->videoSize();
    if (size.isEmpty())
        return;
    if (m_box) {
        shown.view = shown.device->createVideoView(m_box);
        m_box->setContent(shown.view);
        return;
    }
    auto *window = new VideoWindow(&m_main);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowTitle(m_title);
    auto *layout = new QVBoxLayout(window);
    layout->setContentsMargins(0, 0, 0, 0);
    shown.view = shown.device->createVideoView(window);
    if (!shown.view) {
        delete window;
        return;
    }
    layout->addWidget(shown.view);
    const QScreen *screen = m_main.screen();
    window->resize(fitted(size, screen ? screen->availableSize() : QSize()));
    window->show();
    shown.window = window;
}

void VideoOutput::hide(Shown &shown)
{
    delete shown.view; // the device drops its pictures while it has no view
    delete shown.window;
}
