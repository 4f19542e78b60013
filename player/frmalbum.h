#pragma once

#include <QImage>
#include <QWidget>

// The album window: the cover picture alone, as large as the window allows.
// The user resizes it freely; the picture keeps its shape, centred, with the
// rest of the window dark.
class frmAlbum : public QWidget
{
    Q_OBJECT
public:
    explicit frmAlbum(QWidget *parent = nullptr);

    // A null picture clears the window.
    void setPicture(const QImage &picture, const QString &hint);
    QImage picture() const { return m_picture; }
    // Where the picture is drawn in the window.
    QRect pictureRect() const { return fitted(m_picture.size(), rect()); }
    // The largest rectangle of the picture's shape inside area, centred.
    static QRect fitted(const QSize &picture, const QRect &area);

signals:
    // A double click on the picture hands it to the track information window.
    void pictureDoubleClicked(const QImage &picture);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;

private:
    QImage m_picture;
};
