#pragma once

#include "skindescription.h"

#include <QImage>
#include <QWidget>

// A skin slider (iSlider): the track is part of the main picture, the knob a
// picture from the resource bitmap that moves along it. The value runs from
// 0 (left, or bottom for an upright slider) to 1, with 0.5 the middle.
//
// What the numbers control: 1 the play position, 2 the volume, 3 the balance,
// 4 the FM tuner's volume; 5 and 6 are free. A double-click centres 3 and 5.
class SkinSliderWidget : public QWidget
{
    Q_OBJECT
public:
    explicit SkinSliderWidget(int number, QWidget *parent);

    void configure(const SkinSlider &slider, const QImage &resource, int scale);
    int number() const { return m_number; }
    bool vertical() const { return m_slider.orientation == 1; }

    double value() const { return m_value; }
    // From the program: moves the knob without signalling.
    void setValue(double value);
    bool dragging() const { return m_dragging; }
    // As if the user dragged the knob there and let go (assistive technology).
    void setValueAsUser(double value);
    // The knob on the window, in window pixels.
    QRect knobRect() const;

signals:
    // Only for changes the user makes.
    void valueChanged(int number, double value);
    void dragFinished(int number, double value);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    int length() const;     // of the track, in picture pixels
    int knobLength() const; // along the track
    int travel() const;     // how far the knob's near edge can move
    int knobOffset() const; // the knob's near edge, from the track's left or top
    int along(const QPoint &windowPos) const;
    void dragTo(const QPoint &windowPos);
    void userSet(double value);

    int m_number;
    SkinSlider m_slider;
    QImage m_resource;
    int m_scale = 1;
    double m_value = 0.5;
    bool m_dragging = false;
    int m_grab = 0; // where on the knob the mouse holds it
};
