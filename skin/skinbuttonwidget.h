#pragma once

#include "skinclickable.h"
#include "skindescription.h"

// A skin button (Btn). It draws nothing of its own: the main picture shows it
// released, the pressed overlay shows it held. It only adds the hover border
// and the skin author's outline.
class SkinButtonWidget : public SkinClickable
{
    Q_OBJECT
public:
    explicit SkinButtonWidget(QWidget *parent);

    void configure(const SkinButton &button, int scale);
    const SkinButton &button() const { return m_button; }

    void setHoverBorder(bool on);
    bool hoverBorder() const { return m_border; }
    void setOutlineStyle(int style);

signals:
    void entered(int index);
    void left(int index);

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;

private:
    SkinButton m_button;
    bool m_border = false;
    int m_outline = 0;
};
