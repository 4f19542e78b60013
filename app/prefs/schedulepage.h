#pragma once

#include "app/prefs/prefspage.h"

#include <QStringList>

class QComboBox;
class QLabel;
class QListWidget;
class QSpinBox;
class QTimeEdit;

// The automatic on/off schedule, the snooze and the clock. The schedule's
// inputs are "AutoList", "AutoDay", "AutoOn", "AutoOff" and "AutoPreset".
class SchedulePage : public PrefsPage
{
    Q_OBJECT
public:
    SchedulePage(const Settings &settings, const QStringList &autoList, Dialogs &dialogs);

    QStringList autoList() const;
    bool autoListChanged() const { return autoList() != m_initialAutoList; }

    // Adding refuses an entry that switches on and off at 00:00 and says why
    // on the page.
    bool addEntry();
    void deleteEntry();

protected:
    // Delete in the schedule list removes the selected entry.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const QStringList m_initialAutoList;
    QListWidget *m_list = nullptr;
    QComboBox *m_day = nullptr;
    QTimeEdit *m_on = nullptr;
    QTimeEdit *m_off = nullptr;
    QSpinBox *m_preset = nullptr;
    QLabel *m_note = nullptr;
};
