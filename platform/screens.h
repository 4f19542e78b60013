#pragma once

#include <QList>
#include <QRect>

// The desktop work areas (screens less panels) of every attached monitor.
class Screens
{
public:
    virtual ~Screens() = default;
    virtual QList<QRect> workAreas() const = 0;
};

class QtScreens : public Screens
{
public:
    QList<QRect> workAreas() const override;
};
