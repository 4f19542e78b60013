#pragma once

#include "lights.h"
#include "namescroller.h"
#include "platform/clock.h"
#include "segmentdisplay.h"
#include "skinbuttons.h"
#include "skindescription.h"
#include "skinsurface.h"

#include <QImage>
#include <QObject>
#include <QPointer>
#include <QRegion>

#include <array>

class Dialogs;
class QPainter;
class QWidget;
class SkinAnimWidget;
class SkinAreaWidget;
class SkinDigitCell;
class SkinLabelWidget;
class SkinLightWidget;
class SkinListArea;
class SkinSliderWidget;
class SkinTextArea;
class SkinTextField;

// The pictures a skin leaves the window with: the bitmaps loaded, the "Z" copies
// made, and the outline cut from the main picture as it stood at the "O" record,
// or from the polygon when the skin gives a complete one.
struct SkinPictures
{
    QImage main;
    QImage resource;
    QRegion shape; // in picture pixels; empty: the window stays rectangular
    QSize windowSize;
};

SkinPictures buildSkinPictures(const SkinDescription &skin);

// Loads skin files onto the main window and keeps what a skin becomes there:
// the painted picture with its digit groups, and the elements, all children
// of the window. Elements are kept by kind and number across skins, as the
// window's fixed set of controls: a new skin hides them all and places again
// those it names, so lists, the notepad, text fields, labels and sliders keep
// their contents and values, and switching skins creates nothing new once
// every kind has been seen.
class SkinLoader : public QObject, public SkinSurface
{
    Q_OBJECT
public:
    SkinLoader(QWidget &window, Dialogs &dialogs, const Clock &clock);
    ~SkinLoader() override;

    // False when the file was refused and the old skin stays.
    bool LoadSkin(const QString &file);
    // The same for a skin already read from `file`.
    bool LoadSkin(SkinDescription skin, const QString &file);

    const SkinDescription &skin() const override { return m_skin; }
    const SkinPictures &pictures() const { return m_pictures; }
    QString file() const { return m_file; }
    // The main picture with the digit groups drawn onto it.
    const QImage &canvas() const { return m_canvas; }

    // dirty is in window pixels.
    void paint(QPainter &painter, const QRect &dirty) const;

    // Window pixels per skin pixel, 1 to 3. The program leaves it at 1: Qt
    // turns window pixels into whole blocks of screen pixels on HiDPI screens
    // (app/screenscale.h), and a scale here would come on top of that.
    int scale() const { return m_scale; }
    void setScale(int scale);

    // Buttons: the command signal carries what a released button runs.
    SkinButtons &buttons() { return m_buttons; }
    // For skin authors: 0 none, 1 and 2 two kinds of outline around every
    // button and label.
    void setOutlineStyle(int style);
    int outlineStyle() const { return m_outline; }

    // The segment display. Groups repaint only the spot they change.
    // Group 2 goes through the name scroller while "ScrollName" is on.
    void SetDD(int group, const QVariant &value) override;
    QVariant digitValue(int group) const override;
    // Draws a group as given, past the scroller.
    void drawDD(int group, const QVariant &value);
    void setScrollName(bool on) { m_scroller.setEnabled(on); }
    void setTimeFmt(bool twentyFourHour) { m_display.setTimeFmt(twentyFourHour ? 1 : 0); }
    // Hiding a group shows the skin's picture in its place again.
    void setGroupVisible(int group, bool visible);
    SkinDigitCell *digitCell(int group) const; // null when no skin placed it
    const SegmentDisplay &display() const { return m_display; }

    void setLabel(int number, const QString &text) override;
    QString label(int number) const override;
    SkinLabelWidget *labelWidget(int number); // null outside 0 to 80

    // Lights 1 to 22 and label 26; kept and applied again to every new skin.
    void ShowLights(const LightsView &view) override;
    SkinLightWidget *light(int number) const; // null when the skin has none

    // Each made on first use and kept; hidden while the skin has no place for
    // it. Null for numbers a skin cannot have.
    SkinSliderWidget *slider(int number); // 0 to 6
    SkinListArea *list(int number) override;
    SkinTextArea *notepad() override;
    SkinTextField *textField(int number) override; // 0 to 3
    SkinAreaWidget *area(int number) override;
    SkinAnimWidget *anim(int number); // 0 to 4

    void setSliderValue(int number, double value) override;
    void setSliderShown(int number, bool shown) override;
    void setPicture(int area, const QImage &picture, const QString &hint) override;

signals:
    void command(qint16 cmd);
    void sliderChanged(int number, double value);
    void sliderReleased(int number, double value);
    void areaDoubleClicked(int number);

private:
    void placeElements();
    void placeDigitCells();
    void placeLights();
    void placeLabels();
    void placeOthers();
    void hideAll();
    void repaintPicture(const QRect &rect);
    // What the group shows, as a screen reader reads it.
    QString shownDigits(int group) const;

    QWidget &m_window;
    Dialogs &m_dialogs;
    const Clock &m_clock;
    QString m_file;
    SkinDescription m_skin;
    SkinPictures m_pictures;
    QImage m_canvas;
    SegmentDisplay m_display;
    std::array<QRect, SegmentDisplay::GroupCount> m_drawn; // where each group has drawn
    int m_drawing = -1;
    SkinButtons m_buttons;
    NameScroller m_scroller{*this};
    LightsView m_lightsView;
    std::array<bool, LightsView::Count + 1> m_lightPlaced{};
    int m_scale = 1;
    int m_outline = 0;

    std::array<QPointer<SkinLabelWidget>, 81> m_labels;
    std::array<QPointer<SkinLightWidget>, LightsView::Count + 1> m_lights;
    std::array<QPointer<SkinDigitCell>, SegmentDisplay::GroupCount> m_cells;
    std::array<QPointer<SkinSliderWidget>, 7> m_sliders;
    std::array<QPointer<SkinListArea>, 9> m_lists;
    QPointer<SkinTextArea> m_notepad;
    std::array<QPointer<SkinTextField>, 4> m_textFields;
    std::array<QPointer<SkinAreaWidget>, 4> m_areas;
    std::array<QPointer<SkinAnimWidget>, 5> m_anims;
};
