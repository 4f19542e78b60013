#include "frmprefs.h"

#include "app/prefs/cdpage.h"
#include "app/prefs/devicespage.h"
#include "app/prefs/generalpage.h"
#include "app/prefs/listspage.h"
#include "app/prefs/playbackpage.h"
#include "app/prefs/schedulepage.h"
#include "app/prefs/skinspage.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

frmPrefs::frmPrefs(const Settings &settings, const QStringList &autoList, Dialogs &dialogs,
                   QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Velto Preferences"));

    auto *tabs = new QTabWidget;
    tabs->setObjectName(QStringLiteral("tabs"));
    auto addPage = [&](PrefsPage *page, const QString &title) {
        tabs->addTab(page, title);
        m_pages.push_back(page);
    };
    addPage(new GeneralPage(settings, dialogs), QStringLiteral("&General"));
    addPage(new PlaybackPage(settings, dialogs), QStringLiteral("&Playback"));
    addPage(new ListsPage(settings, dialogs), QStringLiteral("&Lists"));
    addPage(m_skins = new SkinsPage(settings, dialogs), QStringLiteral("S&kins"));
    addPage(m_schedule = new SchedulePage(settings, autoList, dialogs),
            QStringLiteral("Auto &On/Off"));
    addPage(new CdPage(settings, dialogs), QStringLiteral("&CD"));
    addPage(new DevicesPage(settings, dialogs), QStringLiteral("&Devices"));

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    // Enter and Esc answer the dialog; desktop themes would give the two
    // buttons the mnemonics O and C, which the tabs use.
    QPushButton *ok = buttons->button(QDialogButtonBox::Ok);
    ok->setText(QStringLiteral("OK"));
    ok->setToolTip(QStringLiteral("Keep the changes (Enter)"));
    QPushButton *cancel = buttons->button(QDialogButtonBox::Cancel);
    cancel->setText(QStringLiteral("Cancel"));
    cancel->setToolTip(QStringLiteral("Forget the changes (Esc)"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(tabs);
    layout->addWidget(buttons);
}

void frmPrefs::applyTo(Settings &settings) const
{
    for (const PrefsPage *page : m_pages)
        page->applyTo(settings);
}

QStringList frmPrefs::autoList() const
{
    return m_schedule->autoList();
}

bool frmPrefs::autoListChanged() const
{
    return m_schedule->autoListChanged();
}

QString frmPrefs::chosenSkin() const
{
    return m_skins->chosenSkin();
}

