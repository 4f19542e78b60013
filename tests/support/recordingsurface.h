#pragma once

#include "skin/skinareawidget.h"
#include "skin/skindescription.h"
#include "skin/skinlistarea.h"
#include "skin/skinsurface.h"
#include "skin/skintextarea.h"
#include "skin/skintextfield.h"

#include <QMap>
#include <QWidget>

#include <map>
#include <memory>

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
    SkinListArea *list(int number) override
    {
        auto &slot = m_lists[number];
        if (!slot)
            slot = std::make_unique<SkinListArea>(number, &m_parent);
        return slot.get();
    }
    SkinTextArea *notepad() override
    {
        if (!m_notepad)
            m_notepad = std::make_unique<SkinTextArea>(&m_parent);
        return m_notepad.get();
    }
    SkinTextField *textField(int number) override
    {
        auto &slot = m_fields[number];
        if (!slot)
            slot = std::make_unique<SkinTextField>(number, &m_parent);
        return slot.get();
    }
    SkinAreaWidget *area(int number) override
    {
        auto &slot = m_areas[number];
        if (!slot)
            slot = std::make_unique<SkinAreaWidget>(number, &m_parent);
        return slot.get();
    }

private:
    QWidget m_parent;
    std::map<int, std::unique_ptr<SkinListArea>> m_lists;
    std::unique_ptr<SkinTextArea> m_notepad;
    std::map<int, std::unique_ptr<SkinTextField>> m_fields;
    std::map<int, std::unique_ptr<SkinAreaWidget>> m_areas;
};
