#pragma once

#include <QWidget>

// The left mouse button as a skin button sees it: a press, moves while held
// (inside or outside the widget), and a release that counts only over the
// widget, as desktop buttons behave. Other buttons reach the window beneath.
class SkinClickable : public QWidget
{
    Q_OBJECT
public:
    using QWidget::QWidget;

    int index() const { return m_index; }
    void setIndex(int index) { m_index = index; }
    bool isDown() const { return m_down; }
    // A press and release in one, for assistive technology: the command runs.
    void click();

signals:
    void pressed(int index);
    void dragged(int index, bool inside);
    void released(int index, bool inside);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    int m_index = 0;
    bool m_down = false;
};
