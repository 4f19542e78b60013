#pragma once

#include <QImage>
#include <QRect>
#include <QString>
#include <QVariant>
#include <array>
#include <functional>

class Clock;

// One digit-cell group as a "D" record lays it out. The glyph fields keep the
// record's 16-bit values; x and y place the group's cell on the window.
struct DigitGroup
{
    qint16 faceX = 0;     // left edge of the glyph sheet on the resource picture
    qint16 faceY = 0;     // top edge of the glyph sheet
    qint16 width = 0;     // glyph width
    qint16 height = 0;    // glyph height
    qint16 narrow = 0;    // width of "." and ":" on the digit sheet
    qint16 sheetType = 0; // 0 digits, 1 characters, 2 characters upper-cased, 3 letters
    qint16 gap = 0;       // added after every glyph
    qint16 mode = 0;      // display mode
    int x = 0;
    int y = 0;
    bool visible = false;
};

// The group's cell on the window; its width is decided by the display mode.
QRect cellRect(const DigitGroup &group);

// The skin's digit-cell groups 0 to 13. SetDD formats a value by the group's
// mode and copies its glyphs from the resource picture onto the window's
// composed picture, then asks for a repaint of that spot only.
class SegmentDisplay
{
public:
    static constexpr int GroupCount = 14;
    using RepaintFn = std::function<void(const QRect &)>;
    using LabelFn = std::function<void(int label, const QString &text)>;

    SegmentDisplay(QImage &canvas, const QImage &resource, const Clock &clock, RepaintFn repaint,
                   LabelFn setLabel);

    // Out-of-range numbers are ignored. Setting or clearing groups (a new skin)
    // also forgets the last label-9 text, so the next clock draw sends it again.
    void setGroup(int index, const DigitGroup &group);
    void setGroupVisible(int index, bool visible);
    void clearGroups();
    const DigitGroup &group(int index) const;

    // The last value given to SetDD for the group, whether or not it was drawn.
    QVariant value(int index) const;
    // What the group shows now, as a screen reader reads it: the characters
    // drawn, without the blanks of leading zeros and unused cells. Empty for
    // a hidden group.
    QString text(int index) const;

    // 24-hour clock when the "TimeFmt" setting is not 0.
    void setTimeFmt(qint16 timeFmt) { m_twentyFourHour = timeFmt != 0; }
    bool twentyFourHour() const { return m_twentyFourHour; }

    void SetDD(int group, const QVariant &value);

private:
    struct Slot
    {
        DigitGroup layout;
        QRect cell;
        QVariant value;
    };
    struct Target;

    QStringView makeText(const Slot &slot, const QVariant &value, char16_t *buffer, int &zeroState,
                         QString &holder) const;
    void sendLabel9(QStringView text);
    bool prepareTarget(Target &target);
    void drawDigits(const Slot &slot, QStringView text, int zeroState, Target &target);
    void drawCharacters(const Slot &slot, QStringView text, Target &target);

    QImage &m_canvas;
    const QImage &m_resource;
    const Clock &m_clock;
    RepaintFn m_repaint;
    LabelFn m_setLabel;
    bool m_twentyFourHour = false;
    std::array<Slot, GroupCount> m_slots;
    QString m_label9;
    bool m_label9Sent = false;
    // The resource picture in the canvas's pixel format, when the two differ.
    QImage m_converted;
    qint64 m_convertedKey = 0;
};
