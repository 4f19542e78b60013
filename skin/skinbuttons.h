#pragma once

#include "skindescription.h"

#include <QImage>
#include <QObject>
#include <QPointer>

#include <array>

class PressedOverlay;
class QWidget;
class SkinButtonWidget;

// The skin's buttons on the main window and how they answer the mouse: the
// pressed look while held, the hover feedback, and the command on release.
class SkinButtons : public QObject
{
    Q_OBJECT
public:
    static constexpr int Count = 120;

    explicit SkinButtons(QWidget &window);
    ~SkinButtons() override;

    // Hides every button of the previous skin, then places these.
    void place(const QList<SkinButton> &buttons, const QImage &resource, int hoverStyle, int scale);

    // The three routines of the button model, also for keys and tests.
    void ButtonDown(int index);
    void ButtonUp(int index);
    void hover(int index);

    // Null when the skin has no button at index.
    SkinButtonWidget *button(int index) const;
    PressedOverlay &overlay();
    int hoverStyle() const { return m_hoverStyle; }

    // For skin authors: 0 none, 1 and 2 two kinds of outline around every button.
    void setOutlineStyle(int style);

signals:
    void command(qint16 cmd);

private:
    SkinButtonWidget *widget(int index);
    void released(int index, bool inside);
    void dragged(int index, bool inside);
    // The mouse left a button or the overlay; desktop buttons drop their hover look then.
    void endHover(int index);

    QWidget &m_window;
    QPointer<PressedOverlay> m_overlay;
    std::array<QPointer<SkinButtonWidget>, Count + 1> m_pool;
    int m_count = 0;
    QImage m_resource;
    int m_scale = 1;
    int m_hoverStyle = 0;
    int m_lastHover = 0;
    int m_outline = 0;
};
