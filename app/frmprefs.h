#pragma once

#include "core/settings.h"

#include <QDialog>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <vector>

class Dialogs;
class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QSpinBox;
class QTimeEdit;

// The preferences dialog. It works on a copy of the options and of the
// schedule list; on OK the window takes back what changed with applyTo() and
// autoList(). Like every option, a change reaches the store at shut-down.
// Each input is named after the option it edits ("WinOnTop", "CDDBcmd"), the
// schedule's inputs "AutoList", "AutoDay", "AutoOn", "AutoOff", "AutoPreset".
class frmPrefs : public QDialog
{
    Q_OBJECT
public:
    frmPrefs(const Settings &settings, const QStringList &autoList, Dialogs &dialogs,
             QWidget *parent = nullptr);

    // Writes only the options the user changed. The others keep their exact
    // values, even those no widget can show (an ExitMode of 7, a SnoozeTime
    // of "soon"), so opening the dialog and pressing OK changes nothing.
    void applyTo(Settings &settings) const;

    QStringList autoList() const;
    bool autoListChanged() const { return autoList() != m_initialAutoList; }
    // The skin file the user typed or chose, or empty when it is unchanged. The
    // window loads it; the loader sets "Skin" and "SkinPath" once it succeeds.
    QString chosenSkin() const;

    // The schedule page's buttons. Adding refuses an entry that switches on
    // and off at 00:00 and says why on the page.
    bool addEntry();
    void deleteEntry();

protected:
    // Delete in the schedule list removes the selected entry.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    enum class Truth { NonZero, One, Positive, Zero };
    struct Binding
    {
        std::function<QVariant()> read;
        QVariant initial;
        std::function<void(Settings &, const QVariant &)> write;
    };

    static bool isOn(qint16 value, Truth truth);

    QWidget *generalPage();
    QWidget *playbackPage();
    QWidget *listsPage();
    QWidget *skinsPage();
    QWidget *schedulePage();
    QWidget *cdPage();
    QWidget *devicesPage();

    void bind(std::function<QVariant()> read,
              std::function<void(Settings &, const QVariant &)> write);
    QCheckBox *check(const char *key, const QString &text, const QString &tip,
                     qint16 Settings::*field, Truth truth = Truth::NonZero);
    QComboBox *choice(const char *key, const QStringList &items, int index, const QString &tip,
                      std::function<void(Settings &, int index)> write);
    QLineEdit *text(const char *key, QString Settings::*field, const QString &tip,
                    std::function<QString(const QString &)> clean = {});
    QSpinBox *number(const char *key, qint16 Settings::*field, int min, int max,
                     const QString &tip);
    // A line edit with a button beside it that fills it from a chooser.
    QWidget *withChooser(QLineEdit *edit, const QString &buttonText, const QString &tip,
                         std::function<QString()> choose);
    QString chooseFile(const QString &title, const QString &current, const QString &filter);
    QString chooseFolder(const QString &prompt, const QString &current);

    const Settings m_initial;
    const QStringList m_initialAutoList;
    Dialogs &m_dialogs;
    std::vector<Binding> m_bindings;

    QLineEdit *m_skin = nullptr;
    QString m_initialSkin;
    QListWidget *m_list = nullptr;
    QComboBox *m_day = nullptr;
    QTimeEdit *m_on = nullptr;
    QTimeEdit *m_off = nullptr;
    QSpinBox *m_preset = nullptr;
    QLabel *m_note = nullptr;
};

// Extensions as the folder scan reads them: separated by single blanks, with
// commas, semicolons, leading dots and "*." taken away ("*.mp3, .ogg" gives
// "mp3 ogg").
QString normaliseExtensions(const QString &text);
