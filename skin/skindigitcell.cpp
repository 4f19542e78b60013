#include "skindigitcell.h"

#include "skinaccessible.h"

#include <QAccessible>

#include <utility>

SkinDigitCell::SkinDigitCell(Reader reader, QWidget *parent)
    : SkinAreaWidget(-1, parent), m_reader(std::move(reader))
{
}

void SkinDigitCell::drawn()
{
    // The clock and the playing time draw several times a second: without a
    // screen reader nothing is read back, and with one only real changes go out.
    if (!QAccessible::isActive())
        return;
    const QString now = shownText();
    if (now == m_announced)
        return;
    announceTextChange(this, std::exchange(m_announced, now), now);
}
