#pragma once

#include "skinclickable.h"

#include <QImage>

// The pressed look of a button (TmpBtn): one widget, moved onto the button
// that is held and showing its pressed face from the resource picture.
// Releasing over it counts as releasing over the button.
class PressedOverlay : public SkinClickable
{
    Q_OBJECT
public:
    explicit PressedOverlay(QWidget *parent);

    // face: on the resource picture, in its pixels; geometry: on the window.
    void showFace(int index, const QImage &resource, const QRect &face, const QRect &geometry,
                  const QString &toolTip);
    // Off while the mouse is held outside the button: the released face shows.
    void setPressedLook(bool on);
    bool pressedLook() const { return m_look; }
    QRect face() const { return m_face; }

signals:
    void left(int index);

protected:
    void paintEvent(QPaintEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    QImage m_resource; // shared with the loader's picture, never copied
    QRect m_face;
    bool m_look = true;
};
