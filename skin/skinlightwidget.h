#pragma once

#include "skindescription.h"

#include <QWidget>

// An indicator light: a filled shape of the skin's colour, shown while the
// switch behind it is on (ShowLights decides which).
class SkinLightWidget : public QWidget
{
    Q_OBJECT
public:
    explicit SkinLightWidget(QWidget *parent);

    void configure(const SkinLight &light, int scale);
    int number() const { return m_light.number; }
    const SkinLight &light() const { return m_light; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    SkinLight m_light;
    int m_scale = 1;
};
