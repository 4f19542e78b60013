#pragma once

#include "skin/skinareawidget.h"
#include "skin/skindescription.h"
#include "skin/skinlistarea.h"
#include "skin/skinsurface.h"
#include "skin/skintextarea.h"
#include "skin/skintextfield.h"

#include <QMap>
#include <QWidget>

#include <type_traits>

// A skin surface that notes what parts write to it, for tests of a part
// without a window. Its list, text and area elements are real widgets on a
// hidden parent, made on first use.
class RecordingSurface : public SkinSurface
{
public:
    SkinDescription description;
    QMap<int, QString> labels;
    QMap<int, QVariant> groups;
    QMap<int, double> sliders;
    QMap<int, QImage> pictures;
    LightsView lights;

    const SkinDescription &skin() const override { return description; }
    void setLabel(int number, const QString &text) override { labels[number] = text; }
    QString label(int number) const override { return labels.value(number); }
    void SetDD(int group, const QVariant &value) override { groups[group] = value; }
    QVariant digitValue(int group) const override { return groups.value(group); }
    void ShowLights(const LightsView &view) override { lights = view; }
    void setSliderValue(int number, double value) override { sliders[number] = value; }
    void setSliderShown(int, bool) override {}
    void setPicture(int area, const QImage &picture, const QString &) override
    {
        pictures[area] = picture;
    }
    SkinListArea *list(int number) override { return made(m_lists, number); }
    SkinTextArea *notepad() override { return made(m_notepad, 0); }
    SkinTextField *textField(int number) override { return made(m_fields, number); }
    SkinAreaWidget *area(int number) override { return made(m_areas, number); }

private:
    // Made on first use, owned by the hidden parent.
    template<typename Element> Element *made(QMap<int, Element *> &elements, int number)
    {
        Element *&slot = elements[number];
        if (!slot) {
            if constexpr (std::is_same_v<Element, SkinTextArea>)
                slot = new Element(&m_parent);
            else
                slot = new Element(number, &m_parent);
        }
        return slot;
    }

    QWidget m_parent;
    QMap<int, SkinListArea *> m_lists;
    QMap<int, SkinTextArea *> m_notepad;
    QMap<int, SkinTextField *> m_fields;
    QMap<int, SkinAreaWidget *> m_areas;
};
