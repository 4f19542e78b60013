#include "cdpage.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

CdPage::CdPage(const Settings &settings, Dialogs &dialogs) : PrefsPage(settings, dialogs)
{
    auto *form = new QFormLayout(this);
    QLineEdit *drive =
        text(&Settings::CDDrive, QStringLiteral("The CD drive's device file, %1 on most systems; "
                                                "a disc image (.cue) also plays as the disc")
                                     .arg(Settings().CDDrive));
    form->addRow(
        buddyLabel(QStringLiteral("CD dri&ve:"), drive),
        withChooser(drive, QStringLiteral("&Image..."),
                    QStringLiteral("Play a disc image as the disc in the drive"), [this, drive] {
                        return chooseFile(QStringLiteral("Select Disc Image"), drive->text(),
                                          QStringLiteral("Disc images (*.cue)|*.cue"));
                    }));
    form->addRow(check(
        &Settings::UseCDP, QStringLiteral("Look titles up in the CD player's title &file"),
        QStringLiteral("Name a disc's tracks from cdplayer.ini in Velto's folder"), Truth::One));
    QCheckBox *cddb = check(&Settings::UseCDDB, QStringLiteral("Look titles up on a CDDB &server"),
                            QStringLiteral("Ask the server below when the title file does not "
                                           "know the disc"),
                            Truth::One);
    form->addRow(cddb);
    QLineEdit *server =
        text(&Settings::CDDBcmd,
             QStringLiteral("The server's query address, ending in \"?cmd=\", for example %1")
                 .arg(Settings().CDDBcmd));
    form->addRow(QStringLiteral("Server &address:"), server);
    QLineEdit *email =
        text(&Settings::EmailID, QStringLiteral("The user and host name sent to the server as "
                                                "user@host; servers refuse made-up looking ones"));
    form->addRow(QStringLiteral("&E-mail:"), email);
    auto enable = [cddb, server, email] {
        server->setEnabled(cddb->isChecked());
        email->setEnabled(cddb->isChecked());
    };
    connect(cddb, &QCheckBox::toggled, this, enable);
    enable();
}
