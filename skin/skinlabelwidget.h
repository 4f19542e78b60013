#pragma once

#include "skindescription.h"

#include <QWidget>

// A skin's text label (Lbl): its text in the skin's font and colour straight
// on the skin picture, cut with "..." when it does not fit. The text stays
// when the skin changes, so a new skin shows what the old one did.
class SkinLabelWidget : public QWidget
{
    Q_OBJECT
public:
    explicit SkinLabelWidget(QWidget *parent);

    void configure(const SkinLabel &label, int scale);
    int number() const { return m_number; }
    QColor colour() const { return m_colour; }

    void setText(const QString &text);
    QString text() const { return m_text; }
    void setAlignment(Qt::Alignment alignment);
    void setOutlineStyle(int style);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int m_number = -1;
    QString m_text;
    QColor m_colour;
    Qt::Alignment m_alignment = Qt::AlignLeft | Qt::AlignVCenter;
    int m_outline = 0;
};
