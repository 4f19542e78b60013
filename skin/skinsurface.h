#pragma once

#include "lights.h"

#include <QImage>
#include <QString>
#include <QVariant>

class SkinAreaWidget;
class SkinListArea;
class SkinTextArea;
class SkinTextField;
struct SkinDescription;

// What a part of the program may change on the skin, by the numbers skins
// use. Parts hold one and write to it directly; the skin never reaches back
// into a part (what the user does on it comes out as commands and signals).
// Everything a skin does not place is kept and shown by the next skin that does.
class SkinSurface
{
public:
    virtual ~SkinSurface() = default;

    // The skin as read: which elements it places, and how.
    virtual const SkinDescription &skin() const = 0;

    virtual void setLabel(int number, const QString &text) = 0;
    virtual QString label(int number) const = 0;
    // The segment display.
    virtual void SetDD(int group, const QVariant &value) = 0;
    virtual QVariant digitValue(int group) const = 0;
    // Lights 1 to 22 and label 26.
    virtual void ShowLights(const LightsView &view) = 0;

    // A slider's knob, 0 to 1; left alone while the user drags it.
    virtual void setSliderValue(int number, double value) = 0;
    // Shown only where the skin places the slider.
    virtual void setSliderShown(int number, bool shown) = 0;
    // A picture over a "C" area (1 is the cover); a null picture clears it.
    virtual void setPicture(int area, const QImage &picture, const QString &hint) = 0;

    // The interactive elements, made on first use; null for numbers a skin
    // cannot have.
    virtual SkinListArea *list(int number) = 0; // 1 and 4 to 8
    virtual SkinTextArea *notepad() = 0;        // list 2
    virtual SkinTextField *textField(int number) = 0;
    virtual SkinAreaWidget *area(int number) = 0; // 1 cover, 2 video, 3 web page
};
