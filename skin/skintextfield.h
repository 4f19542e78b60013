#pragma once

#include "skindescription.h"

#include <QLineEdit>

// The text entry field (txtEntry, "T" records): frameless and see-through, so
// the field the skin draws is its background; text in the skin's font and
// colour. Its text stays when the skin changes.
class SkinTextField : public QLineEdit
{
    Q_OBJECT
public:
    SkinTextField(int number, QWidget *parent);

    void configure(const SkinLabel &field, int scale);
    int number() const { return m_number; }

private:
    int m_number;
};
