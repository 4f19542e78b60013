#pragma once

#include <QColor>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

// What a skin file says, as plain data. Produced by readSkin() (skinreader.h);
// the window applies it. Numbers are kept as the file gives them.

// A skin colour: red + 256 * green + 65536 * blue.
using SkinColour = qint32;

inline QColor skinColourToQColor(SkinColour value)
{
    const quint32 v = quint32(value);
    return QColor(int(v & 0xFF), int((v >> 8) & 0xFF), int((v >> 16) & 0xFF));
}

struct SkinFont
{
    QString name;
    int size = 0;
    bool bold = false;
    bool italic = false;
    bool underline = false;
};

// "B" and "K" records.
struct SkinButton
{
    int index = 0;      // button number, 1 to 120
    int keyNumber = -1; // "K" records: 0 to 20; -1 for "B"
    qint16 command = 0; // "K": 1000 + keyNumber
    QRect rect;
    QPoint face;      // pressed face on the resource bitmap
    QString faceText; // "x,y", as the button keeps it
    QString name;
    QString toolTip; // empty: no tool tip
};

// "A" records.
struct SkinAnim
{
    int number = 0;
    QRect rect;
    QPoint face;
    int frames = 0;
    int msPerFrame = 0;
    int direction = 0; // 0: frames side by side to the right, 1: stacked downwards
    QString toolTip;
};

// "C" records: 1 cover, 2 video, 3 web page.
struct SkinArea
{
    int number = 0;
    QRect rect;
    QString toolTip;
};

// "D" records.
struct SkinDigitGroup
{
    int number = 0;
    QPoint pos;
    QPoint face;
    int glyphWidth = 0;
    int glyphHeight = 0;
    int narrowWidth = 0;
    int sheetType = 0;
    int gap = 0;
    int mode = 0;
    QString toolTip;
};

// "I" records. Shape: 0 rectangle, 1 ellipse, 2 rounded rectangle,
// 3 triangle pointing right, 4 triangle pointing left, other: rectangle.
struct SkinLight
{
    int number = 0;
    QRect rect;
    SkinColour colour = 0;
    int shape = 0;
    QString toolTip;
};

// "L" and "T" records.
struct SkinLabel
{
    int number = 0;
    QRect rect;
    SkinColour foreColour = 0;
    SkinFont font;
    QString toolTip;
};

// "S" records.
struct SkinSlider
{
    int number = 0;
    QRect rect;
    QPoint face;         // knob image: knobLength x track thickness
    int orientation = 0; // 0 horizontal, 1 vertical
    int knobLength = 0;
    QString toolTip;
};

// "X" records (never number 3).
struct SkinList
{
    int number = 0;
    QRect rect;
    SkinColour foreColour = 0;
    SkinColour backColour = 0;
    int fontSize = 0;
    QString fontName;
    QString toolTip;
};

// "R", "Z", "U" and "O" work on the pictures in file order; the window replays
// them in this order so "O" cuts the shape from the picture as it stands then.
struct SkinPictureStep
{
    enum Kind { LoadMain, Copy, Commit, TransparentColour };
    Kind kind = Commit;
    int slot = 0;     // LoadMain: the record's number
    QString fileName; // LoadMain: as written in the skin
    QString path;     // LoadMain: the file found, empty when none
    bool loaded = false;
    QRect target;          // Copy: where on the main picture
    QPoint source;         // Copy: top-left corner of the source on the main picture
    SkinColour colour = 0; // TransparentColour
};

// "N", "M" and "P" records.
struct SkinOutline
{
    qint32 declaredPoints = 0;
    bool multiPolygon = false;
    QList<qint32> polygonPointCounts;
    QList<QPoint> points;

    bool complete() const { return declaredPoints > 0 && points.size() == declaredPoints; }
};

struct SkinDescription
{
    // False after "Skin not found!" or "Invalid Skin!": the old skin stays.
    bool accepted = false;

    QString signature;
    QString typeText;  // as written after the "/"
    QStringList types; // its words; "PLAYER" for the older format
    QString displayName;
    QString comment; // each "/" line preceded by "\r"

    int bitmapFormat = 0;
    int bitmapReserved = 0;
    QString mainBitmapName;
    QString resourceBitmapName;
    QString mainBitmapPath; // empty when the file was not found
    QString resourceBitmapPath;

    int hoverStyle = 0;
    int backgroundReserved = 0;
    SkinColour backgroundColour = 0;
    std::array<int, 3> backgroundUnused{};

    QList<SkinButton> buttons;
    QStringList keyTable = QStringList(21); // "K" key texts by key number
    QList<SkinAnim> anims;
    QList<SkinArea> areas;
    QList<SkinDigitGroup> digitGroups;
    QList<SkinLight> lights;
    QList<SkinLabel> labels;
    QList<SkinLabel> textFields;
    QList<SkinSlider> sliders;
    QList<SkinList> lists;
    std::optional<QSize> pictureSize;

    QList<SkinPictureStep> pictureSteps;
    SkinOutline outline;

    // In the order they are shown; the closing error message comes last.
    QStringList messages;
    QString errorList; // " " + code (or button name) per failed record
    bool errorFlag = false;
};
