#pragma once

#include <QImage>
#include <QPixmap>
#include <QPointer>
#include <QWidget>

// A place on the skin that other parts fill: the album cover (C1), the video
// picture (C2), the web page (C3), and the cells of the digit groups, which
// only carry their tool tips. The area stays when the skin changes; a new
// skin moves it or hides it.
class SkinAreaWidget : public QWidget
{
    Q_OBJECT
public:
    SkinAreaWidget(int number, QWidget *parent);

    int number() const { return m_number; }
    // geometry on the window. A tip-less area that takes no clicks lets the
    // mouse through to the window, so it can still be dragged there.
    void place(const QRect &geometry, const QString &toolTip, bool takesClicks);

    // A picture drawn over the whole area (the cover); a null one clears it.
    void setPicture(const QImage &picture);
    QImage picture() const { return m_picture; }
    // A widget that fills the area from now on (the video, the web page).
    void setContent(QWidget *content);
    QWidget *content() const { return m_content; }

signals:
    void doubleClicked(int number);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    int m_number;
    QImage m_picture;
    // The picture at the area's size: the window repaints the area whenever
    // anything beneath changes, and a photo scales slowly.
    QPixmap m_scaled;
    QPointer<QWidget> m_content;
};
