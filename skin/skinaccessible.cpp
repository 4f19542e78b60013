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

    // QAccessibleTextInterface. Nothing here can be typed into, but a screen
    // reader walks the text with its own caret and may select a part of it
    // to copy: one caret and one selection, kept within the text shown.
    int characterCount() const override { return int(m_read().size()); }
    QString text(int start, int end) const override
    {
        const QString all = m_read();
        start = qBound(0, start, int(all.size()));
        end = end < 0 ? int(all.size()) : qBound(start, end, int(all.size()));
        return all.mid(start, end - start);
    }
    int cursorPosition() const override { return qMin(m_cursor, characterCount()); }
    void setCursorPosition(int position) override
    {
        m_cursor = qBound(0, position, characterCount());
    }
    int selectionCount() const override
    {
        return qMin(m_selectionEnd, characterCount()) > m_selectionStart ? 1 : 0;
    }
    void selection(int index, int *start, int *end) const override
    {
        const bool has = index == 0 && selectionCount() == 1;
        *start = has ? qMin(m_selectionStart, characterCount()) : 0;
        *end = has ? qMin(m_selectionEnd, characterCount()) : 0;
    }
    void addSelection(int start, int end) override { setSelection(0, start, end); }
    void removeSelection(int index) override
    {
        if (index == 0)
            m_selectionStart = m_selectionEnd = 0;
    }
    void setSelection(int index, int start, int end) override
    {
        if (index != 0)
            return;
        const int count = characterCount();
        if (end < 0)
            end = count;
        m_selectionStart = qBound(0, qMin(start, end), count);
        m_selectionEnd = qBound(0, qMax(start, end), count);
    }
    // The text fills the element's width, a character to an equal share: exact
    // for digit groups, whose cells are all alike, and near enough for labels.
    QRect characterRect(int offset) const override
    {
        const int count = characterCount();
        if (offset < 0 || offset >= count)
            return {};
        const QRect r = rect();
        const int left = r.left() + r.width() * offset / count;
        const int right = r.left() + r.width() * (offset + 1) / count;
        return QRect(left, r.top(), right - left, r.height());
    }
    int offsetAtPoint(const QPoint &point) const override
    {
        const QRect r = rect();
        const int count = characterCount();
        if (count == 0 || !r.contains(point))
            return -1;
        return qMin(count - 1, (point.x() - r.left()) * count / r.width());
    }
    // All of an element's text is always drawn; it is out of sight only while
    // the window is minimised.
    void scrollToSubstring(int, int) override
    {
        if (QWidget *window = widget()->window(); window->isMinimized())
            window->showNormal();
    }
    QString attributes(int, int *start, int *end) const override
    {
        *start = 0;
        *end = characterCount();
        return {};
    }

private:
    std::function<QString()> m_read;
    int m_cursor = 0;
    int m_selectionStart = 0, m_selectionEnd = 0;
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
