#pragma once

#include "core/settings.h"

#include <QDialog>
#include <QStringList>
#include <vector>

class Dialogs;
class PrefsPage;
class SchedulePage;
class SkinsPage;

// The preferences dialog: a tab per page of app/prefs/. It works on a copy of
// the options and of the schedule list; on OK the window takes back what
// changed with applyTo() and autoList(). Like every option, a change reaches
// the store at shut-down. Each input is named after the key of the option it
// edits ("WinOnTop", "CDDBcmd"), the schedule's inputs "AutoList", "AutoDay",
// "AutoOn", "AutoOff", "AutoPreset".
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
    bool autoListChanged() const;
    // The skin file the user typed or chose, or empty when it is unchanged. The
    // window loads it; the loader sets "Skin" and "SkinPath" once it succeeds.
    QString chosenSkin() const;

private:
    std::vector<PrefsPage *> m_pages;
    SkinsPage *m_skins = nullptr;
    SchedulePage *m_schedule = nullptr;
};
