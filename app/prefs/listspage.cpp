#include "listspage.h"

#include "core/settingkeys.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QVBoxLayout>

QString normaliseExtensions(const QString &text)
{
    static const QRegularExpression separators(QStringLiteral("[\\s,;]+"));
    QStringList out;
    for (QString ext : text.split(separators, Qt::SkipEmptyParts)) {
        if (ext.startsWith(QLatin1String("*.")))
            ext.remove(0, 2);
        while (ext.startsWith(QLatin1Char('.')))
            ext.remove(0, 1);
        if (!ext.isEmpty())
            out << ext;
    }
    return out.join(QLatin1Char(' '));
}

ListsPage::ListsPage(const Settings &settings, Dialogs &dialogs) : PrefsPage(settings, dialogs)
{
    auto *page = new QVBoxLayout(this);
    auto *form = new QFormLayout;
    page->addLayout(form);
    form->addRow(check(&Settings::FriendlyNames,
                       QStringLiteral("Show &titles instead of file names"),
                       QStringLiteral("\"01 - Morning_Song.mp3\" shows as \"Morning Song.mp3\""),
                       Truth::Positive));
    QLineEdit *ext = text(&Settings::ValidExt,
                          QStringLiteral("File extensions added when you add a whole folder, "
                                         "separated by blanks"),
                          normaliseExtensions);
    form->addRow(QStringLiteral("&Extensions added from a folder:"), ext);
    form->addRow(check(&Settings::AutoCloseQF,
                       QStringLiteral("Close &Quick Find after playing an entry"),
                       QStringLiteral("The Quick Find/Play window closes once you play an entry")));
    QLineEdit *vis = text(&Settings::VisPLPath,
                          QStringLiteral("The folder the visual playlist selector shows first"));
    form->addRow(buddyLabel(QStringLiteral("&Visual selector folder:"), vis),
                 withChooser(vis, QStringLiteral("&Browse..."),
                             QStringLiteral("Choose the visual selector's folder"), [this, vis] {
                                 return chooseFolder(QStringLiteral("Select the playlist folder:"),
                                                     vis->text());
                             }));
    form->addRow(check(&Settings::UseTagCover,
                       QStringLiteral("&Use the tag's album and artist to find a cover"),
                       QStringLiteral("Look for a cover picture named after the album or artist "
                                      "when an MP3 starts"),
                       Truth::One));
    form->addRow(check(
        &Settings::AutoCover, QStringLiteral("&Show every cover in the album window"),
        QStringLiteral("Open the album cover window whenever a cover is loaded"), Truth::One));

    // The web browser's quick links, a list of addresses like the others here.
    auto *links = new QGroupBox(QStringLiteral("Web browser: home page and quick links"));
    auto *lform = new QFormLayout(links);
    for (int slot = 0; slot < 10; ++slot) {
        auto *edit = new QLineEdit(m_initial.URL[size_t(slot)]);
        edit->setObjectName(settingKey(&Settings::URL, slot));
        edit->setPlaceholderText(QStringLiteral("www.example.org"));
        edit->setToolTip(
            slot == 0 ? QStringLiteral("The browser's home page, and quick link 0 (command 110)")
                      : QStringLiteral("Quick link %1 (command %2)").arg(slot).arg(110 + slot));
        bind([edit] { return QVariant(edit->text().trimmed()); },
             [slot](Settings &s, const QVariant &v) { s.URL[size_t(slot)] = v.toString(); });
        lform->addRow(buddyLabel(slot == 0 ? QStringLiteral("&0 Home page:")
                                           : QStringLiteral("&%1 Quick link:").arg(slot),
                                 edit),
                      edit);
    }
    page->addWidget(links);
    page->addStretch();
}
