#include "listspage.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>

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
    auto *form = new QFormLayout(this);
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
}
