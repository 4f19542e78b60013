#pragma once

#include "skindescription.h"

#include <QListWidget>

// A list area of the skin ("X" records 1 and 4 to 8): the playlist, lyrics,
// conversions, FM presets, combo list and web radio stations. Its items stay
// when the skin changes; a skin without the list only hides it.
class SkinListArea : public QListWidget
{
    Q_OBJECT
public:
    SkinListArea(int number, QWidget *parent);

    void configure(const SkinList &list, int scale);
    int number() const { return m_number; }

private:
    int m_number;
};
