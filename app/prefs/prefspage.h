#pragma once

#include "core/settings.h"

#include <QVariant>
#include <QWidget>
#include <functional>
#include <vector>

class Dialogs;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;

// One page of the preferences dialog, shown from a copy of the options. Each
// input is named after the key of the option it edits ("WinOnTop", "CDDBcmd").
class PrefsPage : public QWidget
{
    Q_OBJECT
public:
    // Writes only the options the user changed. The others keep their exact
    // values, even those no input can show (an ExitMode of 7, a SnoozeTime
    // of "soon"), so opening the dialog and pressing OK changes nothing.
    void applyTo(Settings &settings) const;

protected:
    PrefsPage(const Settings &settings, Dialogs &dialogs);

    // How the code that uses an option tests it, so a box shows what Velto
    // will do with a stored value such as -1 or 2.
    enum class Truth { NonZero, One, Positive, Zero };

    void bind(std::function<QVariant()> read,
              std::function<void(Settings &, const QVariant &)> write);
    QCheckBox *check(qint16 Settings::*field, const QString &text, const QString &tip,
                     Truth truth = Truth::NonZero);
    // A list whose index is the option's value, as its decimal text in a text variable.
    QComboBox *choice(qint16 Settings::*field, const QStringList &items, int index,
                      const QString &tip);
    QComboBox *choice(QString Settings::*field, const QStringList &items, int index,
                      const QString &tip);
    QLineEdit *text(QString Settings::*field, const QString &tip,
                    std::function<QString(const QString &)> clean = {});
    QSpinBox *number(qint16 Settings::*field, int min, int max, const QString &tip);
    // A line edit with a button beside it that fills it from a chooser.
    QWidget *withChooser(QLineEdit *edit, const QString &buttonText, const QString &tip,
                         std::function<QString()> choose);
    QString chooseFile(const QString &title, const QString &current, const QString &filter);
    QString chooseFolder(const QString &prompt, const QString &current);
    static QLabel *buddyLabel(const QString &text, QWidget *buddy);

    const Settings m_initial;

private:
    struct Binding
    {
        std::function<QVariant()> read;
        QVariant initial;
        std::function<void(Settings &, const QVariant &)> write;
    };

    static bool isOn(qint16 value, Truth truth);
    QComboBox *choice(const QString &name, const QStringList &items, int index, const QString &tip,
                      std::function<void(Settings &, int index)> write);

    Dialogs &m_dialogs;
    std::vector<Binding> m_bindings;
};
