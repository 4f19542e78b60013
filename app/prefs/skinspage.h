#pragma once

#include "app/prefs/prefspage.h"

class QLineEdit;

// The skin in use, how Select Skin chooses one, and the favourite skins.
class SkinsPage : public PrefsPage
{
    Q_OBJECT
public:
    SkinsPage(const Settings &settings, Dialogs &dialogs);

    // The skin file the user typed or chose, or empty when it is unchanged. The
    // window loads it; the loader sets "Skin" and "SkinPath" once it succeeds.
    QString chosenSkin() const;

private:
    QLineEdit *m_skin = nullptr;
    QString m_initialSkin;
};
