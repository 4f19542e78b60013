#include "prefspage.h"

#include "core/settingkeys.h"
#include "platform/dialogs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

PrefsPage::PrefsPage(const Settings &settings, Dialogs &dialogs)
    : m_initial(settings), m_dialogs(dialogs)
{
}

void PrefsPage::bind(std::function<QVariant()> read,
                     std::function<void(Settings &, const QVariant &)> write)
{
    QVariant initial = read();
    m_bindings.push_back({std::move(read), std::move(initial), std::move(write)});
}

void PrefsPage::applyTo(Settings &settings) const
{
    for (const Binding &b : m_bindings) {
        const QVariant now = b.read();
        if (now != b.initial)
            b.write(settings, now);
    }
}

bool PrefsPage::isOn(qint16 value, Truth truth)
{
    switch (truth) {
    case Truth::One:
        return value == 1;
    case Truth::Positive:
        return value > 0;
    case Truth::Zero:
        return value == 0;
    case Truth::NonZero:
        break;
    }
    return value != 0;
}

QCheckBox *PrefsPage::check(qint16 Settings::*field, const QString &text, const QString &tip,
                            Truth truth)
{
    auto *box = new QCheckBox(text);
    box->setObjectName(settingKey(field));
    box->setToolTip(tip);
    box->setChecked(isOn(m_initial.*field, truth));
    const qint16 on = truth == Truth::Zero ? 0 : 1;
    bind([box] { return QVariant(box->isChecked()); },
         [field, on](Settings &s, const QVariant &v) {
             s.*field = qint16(v.toBool() ? on : 1 - on);
         });
    return box;
}

QComboBox *PrefsPage::choice(const QString &name, const QStringList &items, int index,
                             const QString &tip, std::function<void(Settings &, int)> write)
{
    auto *combo = new QComboBox;
    combo->setObjectName(name);
    combo->addItems(items);
    combo->setCurrentIndex(index);
    combo->setToolTip(tip);
    bind([combo] { return QVariant(combo->currentIndex()); },
         [write = std::move(write)](Settings &s, const QVariant &v) { write(s, v.toInt()); });
    return combo;
}

QComboBox *PrefsPage::choice(qint16 Settings::*field, const QStringList &items, int index,
                             const QString &tip)
{
    return choice(settingKey(field), items, index, tip,
                  [field](Settings &s, int i) { s.*field = qint16(i); });
}

QComboBox *PrefsPage::choice(QString Settings::*field, const QStringList &items, int index,
                             const QString &tip)
{
    return choice(settingKey(field), items, index, tip,
                  [field](Settings &s, int i) { s.*field = QString::number(i); });
}

QLineEdit *PrefsPage::text(QString Settings::*field, const QString &tip,
                           std::function<QString(const QString &)> clean)
{
    auto *edit = new QLineEdit(m_initial.*field);
    edit->setObjectName(settingKey(field));
    edit->setToolTip(tip);
    bind([edit] { return QVariant(edit->text()); },
         [field, clean = std::move(clean)](Settings &s, const QVariant &v) {
             s.*field = clean ? clean(v.toString()) : v.toString();
         });
    return edit;
}

QSpinBox *PrefsPage::number(qint16 Settings::*field, int min, int max, const QString &tip)
{
    auto *spin = new QSpinBox;
    spin->setObjectName(settingKey(field));
    spin->setRange(min, max);
    spin->setValue(qBound(min, int(m_initial.*field), max));
    spin->setToolTip(tip);
    bind([spin] { return QVariant(spin->value()); },
         [field](Settings &s, const QVariant &v) { s.*field = qint16(v.toInt()); });
    return spin;
}

QWidget *PrefsPage::withChooser(QLineEdit *edit, const QString &buttonText, const QString &tip,
                                std::function<QString()> choose)
{
    auto *row = new QWidget;
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(edit, 1);
    auto *button = new QPushButton(buttonText);
    button->setObjectName(edit->objectName() + QStringLiteral("Choose"));
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [edit, choose = std::move(choose)] {
        const QString chosen = choose();
        if (!chosen.isEmpty())
            edit->setText(chosen);
    });
    layout->addWidget(button);
    return row;
}

QString PrefsPage::chooseFile(const QString &title, const QString &current, const QString &filter)
{
    const QString folder = current.isEmpty() ? QDir::homePath() : QFileInfo(current).path();
    return m_dialogs.openFiles(title, folder, filter).value(0);
}

QString PrefsPage::chooseFolder(const QString &prompt, const QString &current)
{
    return m_dialogs.selectFolder(prompt, current.isEmpty() ? QDir::homePath() : current);
}

QLabel *PrefsPage::buddyLabel(const QString &text, QWidget *buddy)
{
    auto *label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}
