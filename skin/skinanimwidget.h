#pragma once

#include "skindescription.h"

#include <QImage>
#include <QTimer>
#include <QWidget>

// An animation area ("A" records): frames of the resource picture shown in
// turn. It only runs while started and visible, so a hidden or stopped
// animation costs no timer.
class SkinAnimWidget : public QWidget
{
    Q_OBJECT
public:
    SkinAnimWidget(int number, QWidget *parent);

    void configure(const SkinAnim &anim, const QImage &resource, int scale);
    int number() const { return m_number; }

    void start();
    void stop();
    bool started() const { return m_started; }
    bool ticking() const { return m_timer.isActive(); }
    int frame() const { return m_frame; }
    int frameCount() const;
    // The frame's rectangle on the resource picture.
    QRect frameRect(int frame) const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void advance();
    void updateTimer();

    int m_number;
    SkinAnim m_anim;
    QImage m_resource;
    QTimer m_timer;
    int m_frame = 0;
    bool m_started = false;
};
