#pragma once

#include "skinareawidget.h"

#include <functional>

// The place of a digit group on the window. The segment display paints the
// digits onto the skin's picture; the cell carries the group's tool tip and
// tells screen readers what the group shows.
class SkinDigitCell : public SkinAreaWidget
{
    Q_OBJECT
public:
    using Reader = std::function<QString()>;

    SkinDigitCell(Reader reader, QWidget *parent);

    QString shownText() const { return m_reader ? m_reader() : QString(); }
    // The group was drawn: a screen reader, if one listens, hears the change.
    void drawn();

private:
    Reader m_reader;
    QString m_announced;
};
