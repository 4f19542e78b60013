#pragma once

#include <QPointer>
#include <QSize>
#include <QWidget>

#include <QString>
#include <vector>

class MediaDevice;
class SkinAreaWidget;

// Puts the pictures of a playing video on screen: in the skin's video area
// when the skin has one, else in a plain window of their own that closes when
// the item ends. Nothing here exists until a file shows pictures.
class VideoOutput
{
public:
    explicit VideoOutput(QWidget &mainWindow);
    ~VideoOutput();
    VideoOutput(const VideoOutput &) = delete;
    VideoOutput &operator=(const VideoOutput &) = delete;

    // The device must outlive this object.
    void addDevice(MediaDevice &device);
    // The skin's video area; null when the new skin has none. Pictures on
    // screen move there (or out to a window) at once.
    void setVideoBox(SkinAreaWidget *box);

    // The plain window of the device, while it shows one.
    QWidget *window(const MediaDevice &device) const;
    QWidget *view(const MediaDevice &device) const;

    // The title a plain window takes: the playing item's.
    void setTitle(const QString &title) { m_title = title; }

    // The largest share of the screen a plain window takes at first.
    static QSize fitted(QSize video, QSize screen);

private:
    struct Shown
    {
        MediaDevice *device = nullptr;
        QPointer<QWidget> view;
        QPointer<QWidget> window;
    };
    Shown *find(const MediaDevice &device);
    const Shown *find(const MediaDevice &device) const;
    void show(Shown &shown);
    void hide(Shown &shown);

    QWidget &m_main;
    QString m_title = QStringLiteral("Velto");
    QPointer<SkinAreaWidget> m_box;
    std::vector<Shown> m_devices;
};
