#include "skinspage.h"

#include "core/settingkeys.h"

#include <QCheckBox>
#include <QDir>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

SkinsPage::SkinsPage(const Settings &settings, Dialogs &dialogs) : PrefsPage(settings, dialogs)
{
    auto *layout = new QVBoxLayout(this);
    auto *form = new QFormLayout;

    m_initialSkin =
        m_initial.Skin.isEmpty() ? QString() : QDir(m_initial.SkinPath).filePath(m_initial.Skin);
    m_skin = new QLineEdit(m_initialSkin);
    m_skin->setObjectName(settingKey(&Settings::Skin));
    m_skin->setToolTip(QStringLiteral("The skin file in use; another one is loaded on OK"));
    const QString skinFilter = QStringLiteral("Skins (*.skin)|*.skin");
    form->addRow(buddyLabel(QStringLiteral("&Skin:"), m_skin),
                 withChooser(m_skin, QStringLiteral("&Browse..."),
                             QStringLiteral("Choose another skin file"), [this, skinFilter] {
                                 return chooseFile(QStringLiteral("Select Skin"), m_skin->text(),
                                                   skinFilter);
                             }));
    form->addRow(check(
        &Settings::UseSkinBrowser, QStringLiteral("Select Skin opens the skin bro&wser"),
        QStringLiteral("Select Skin shows the skin browser instead of a file dialog"), Truth::One));
    layout->addLayout(form);

    // The slots in the popup menu's order.
    const char *const slotNames[10] = {"Favorite", "Player",   "Calculator",  "Notepad",
                                       "Clock",    "FM Tuner", "Web Browser", "Web Radio",
                                       "Other 1",  "Other 2"};
    auto *favourites = new QGroupBox(QStringLiteral("Favorite skins"));
    auto *fform = new QFormLayout(favourites);
    for (int slot = 0; slot < 10; ++slot) {
        const QString name = QLatin1String(slotNames[slot]);
        auto *edit = new QLineEdit(m_initial.FavSkin[slot]);
        edit->setObjectName(settingKey(&Settings::FavSkin, slot));
        edit->setToolTip(QStringLiteral("The skin the popup menu's %1 entry loads").arg(name));
        bind([edit] { return QVariant(edit->text()); },
             [slot](Settings &s, const QVariant &v) { s.FavSkin[slot] = v.toString(); });
        fform->addRow(buddyLabel(QStringLiteral("&%1 %2:").arg(slot).arg(name), edit),
                      withChooser(edit, QStringLiteral("..."),
                                  QStringLiteral("Choose the %1 favorite skin").arg(name),
                                  [this, edit, skinFilter] {
                                      return chooseFile(QStringLiteral("Select Favorite Skin"),
                                                        edit->text(), skinFilter);
                                  }));
    }
    layout->addWidget(favourites);
    layout->addStretch();
}

QString SkinsPage::chosenSkin() const
{
    const QString text = m_skin->text().trimmed();
    return text == m_initialSkin ? QString() : text;
}
