#include "skinaccessible.h"

#include "skinbuttonwidget.h"
#include "skindigitcell.h"
#include "skinlabelwidget.h"
#include "skinlightwidget.h"
#include "skinsliderwidget.h"

#include <QAccessibleWidget>

#include <functional>

namespace {

class ButtonAccessible : public QAccessibleWidget
{
public:
    explicit ButtonAccessible(SkinButtonWidget *button)
        : QAccessibleWidget(button, QAccessible::Button)
    {
    }

    QString text(QAccessible::Text t) const override
    {
        const SkinButton &b = button()->button();
        if (t == QAccessible::Name)
            return b.toolTip.isEmpty() ? b.name : b.toolTip;
        if (t == QAccessible::Description)
            return {};
        return QAccessibleWidget::text(t);
    }
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString &action) override
    {
        if (action == pressAction())
            button()->click();
    }

private:
    SkinButtonWidget *button() const { return static_cast<SkinButtonWidget *>(widget()); }
};

// A label or a digit group: read-only text, named by its tool tip when it
// has one and by the text itself otherwise.
class TextAccessible : public QAccessibleWidget, public QAccessibleTextInterface
{
public:
    TextAccessible(QWidget *widget, std::function<QString()> read)
        : QAccessibleWidget(widget, QAccessible::StaticText), m_read(std::move(read))
    {
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TextInterface)
            return static_cast<QAccessibleTextInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text t) const override
    {
        const QString tip = widget()->toolTip();
        switch (t) {
        case QAccessible::Name:
            return tip.isEmpty() ? m_read() : tip;
        case QAccessible::Value:
            return m_read();
        case QAccessible::Description:
            return {};
        default:
            return QAccessibleWidget::text(t);
        }
    }

    // QAccessibleTextInterface: nothing to select, no cursor.
    void selection(int, int *start, int *end) const override { *start = *end = 0; }
    int selectionCount() const override { return 0; }
    void addSelection(int, int) override {}
    void removeSelection(int) override {}
    void setSelection(int, int, int) override {}
    int cursorPosition() const override { return 0; }
    void setCursorPosition(int) override {}
    QString text(int start, int end) const override
    {
        const QString all = m_read();
        start = qBound(0, start, int(all.size()));
        end = end < 0 ? int(all.size()) : qBound(start, end, int(all.size()));
        return all.mid(start, end - start);
    }
    int characterCount() const override { return int(m_read().size()); }
    QRect characterRect(int) const override { return {}; }
    int offsetAtPoint(const QPoint &) const override { return -1; }
    void scrollToSubstring(int, int) override {}
    QString attributes(int, int *start, int *end) const override
    {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    std::function<QString()> m_read;
};

class SliderAccessible : public QAccessibleWidget, public QAccessibleValueInterface
{
public:
    explicit SliderAccessible(SkinSliderWidget *slider)
        : QAccessibleWidget(slider, QAccessible::Slider)
    {
    }

    void *interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface *>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text t) const override
    {
        if (t == QAccessible::Name) {
            const QString tip = widget()->toolTip();
            return tip.isEmpty() ? QStringLiteral("Slider %1").arg(slider()->number()) : tip;
        }
        if (t == QAccessible::Value)
            return QString::number(qRound(slider()->value() * 100.0)) + QLatin1Char('%');
        if (t == QAccessible::Description)
            return {};
        return QAccessibleWidget::text(t);
    }

    // QAccessibleValueInterface, in percent of the track.
    QVariant currentValue() const override { return slider()->value() * 100.0; }
    void setCurrentValue(const QVariant &value) override
    {
        bool ok = false;
        const double percent = value.toDouble(&ok);
        if (ok)
            slider()->setValueAsUser(percent / 100.0);
    }
    QVariant maximumValue() const override { return 100.0; }
    QVariant minimumValue() const override { return 0.0; }
    QVariant minimumStepSize() const override { return 5.0; }

private:
    SkinSliderWidget *slider() const { return static_cast<SkinSliderWidget *>(widget()); }
};

// AT-SPI has no indicator role Qt maps to: a light reads as a check box
// nobody can tick, checked while lit.
class LightAccessible : public QAccessibleWidget
{
public:
    explicit LightAccessible(SkinLightWidget *light)
        : QAccessibleWidget(light, QAccessible::CheckBox)
    {
    }

    QAccessible::State state() const override
    {
        QAccessible::State s = QAccessibleWidget::state();
        s.checkable = true;
        s.checked = widget()->isVisible();
        s.readOnly = true;
        return s;
    }
    QStringList actionNames() const override { return {}; }

    QString text(QAccessible::Text t) const override
    {
        const SkinLight &l = static_cast<SkinLightWidget *>(widget())->light();
        if (t == QAccessible::Name)
            return l.toolTip.isEmpty() ? QStringLiteral("Light %1").arg(l.number) : l.toolTip;
        // A light is shown only while it is lit.
        if (t == QAccessible::Value)
            return widget()->isVisible() ? QStringLiteral("on") : QStringLiteral("off");
        if (t == QAccessible::Description)
            return {};
        return QAccessibleWidget::text(t);
    }
};

QAccessibleInterface *skinElement(const QString &className, QObject *object)
{
    if (!object || !object->isWidgetType())
        return nullptr;
    if (className == QLatin1String("SkinButtonWidget"))
        return new ButtonAccessible(static_cast<SkinButtonWidget *>(object));
    if (className == QLatin1String("SkinLabelWidget")) {
        auto *label = static_cast<SkinLabelWidget *>(object);
        return new TextAccessible(label, [label] { return label->text(); });
    }
    if (className == QLatin1String("SkinDigitCell")) {
        auto *cell = static_cast<SkinDigitCell *>(object);
        return new TextAccessible(cell, [cell] { return cell->shownText(); });
    }
    if (className == QLatin1String("SkinSliderWidget"))
        return new SliderAccessible(static_cast<SkinSliderWidget *>(object));
    if (className == QLatin1String("SkinLightWidget"))
        return new LightAccessible(static_cast<SkinLightWidget *>(object));
    return nullptr;
}

} // namespace

void installSkinAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(skinElement);
        return true;
    }();
    (void)installed;
}

void announceTextChange(QWidget *element, const QString &before, const QString &now)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleTextUpdateEvent changed(element, 0, before, now);
    QAccessible::updateAccessibility(&changed);
    if (element->toolTip().isEmpty()) {
        QAccessibleEvent renamed(element, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&renamed);
    }
}
