#include "generalpage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

GeneralPage::GeneralPage(const Settings &settings, Dialogs &dialogs) : PrefsPage(settings, dialogs)
{
    auto *layout = new QVBoxLayout(this);

    auto *start = new QGroupBox(QStringLiteral("At start"));
    auto *form = new QFormLayout(start);
    const int startIndex = m_initial.StartMd == 1 ? 1 : m_initial.StartMd == 2 ? 2 : 0;
    QComboBox *startMd = choice(
        &Settings::StartMd,
        {QStringLiteral("Nothing"), QStringLiteral("The last playlist and track"),
         QStringLiteral("The file, playlist or folder below")},
        startIndex,
        QStringLiteral("What Velto opens when it starts without a file on the command line"));
    form->addRow(QStringLiteral("Open at s&tart:"), startMd);

    QLineEdit *startFile = text(
        &Settings::StartFile, QStringLiteral("The media file, playlist or folder opened at start"));
    auto *fileRow = new QWidget;
    auto *fileLayout = new QHBoxLayout(fileRow);
    fileLayout->setContentsMargins(0, 0, 0, 0);
    fileLayout->addWidget(
        withChooser(startFile, QStringLiteral("&Browse..."),
                    QStringLiteral("Choose the file to open at start"), [this, startFile] {
                        return chooseFile(QStringLiteral("Open at start"), startFile->text(),
                                          QStringLiteral("All files (*)|*"));
                    }));
    auto *folderButton = new QPushButton(QStringLiteral("Fold&er..."));
    folderButton->setObjectName(startFile->objectName() + QStringLiteral("Folder"));
    folderButton->setToolTip(QStringLiteral("Choose a folder to open at start"));
    folderButton->setAutoDefault(false);
    connect(folderButton, &QPushButton::clicked, this, [this, startFile] {
        const QString folder = chooseFolder(
            QStringLiteral("Select Directory containing Media Files:"), startFile->text());
        if (!folder.isEmpty())
            startFile->setText(folder);
    });
    fileLayout->addWidget(folderButton);
    form->addRow(buddyLabel(QStringLiteral("Start &file:"), startFile), fileRow);
    auto enableFile = [fileRow, startMd] { fileRow->setEnabled(startMd->currentIndex() == 2); };
    connect(startMd, &QComboBox::currentIndexChanged, this, enableFile);
    enableFile();

    form->addRow(check(&Settings::StartMin, QStringLiteral("Start &minimized"),
                       QStringLiteral("Start with the window minimized"), Truth::One));
    form->addRow(check(&Settings::StartMute, QStringLiteral("Start m&uted"),
                       QStringLiteral("Start with the sound muted")));
    layout->addWidget(start);

    auto *window = new QGroupBox(QStringLiteral("Window"));
    auto *wform = new QFormLayout(window);
    wform->addRow(check(&Settings::WinOnTop, QStringLiteral("&Always on top"),
                        QStringLiteral("Keep the Velto window above all other windows"),
                        Truth::One));
    wform->addRow(check(&Settings::WinSnap, QStringLiteral("S&nap to the screen edges"),
                        QStringLiteral("A window dropped near a screen edge moves onto it")));
    wform->addRow(check(&Settings::WinSavePos, QStringLiteral("&Remember the window position"),
                        QStringLiteral("Start where the window was when Velto ended"), Truth::One));
    wform->addRow(check(&Settings::NoRMB, QStringLiteral("Rig&ht click opens the popup menu"),
                        QStringLiteral("A right click on the window opens the popup menu"),
                        Truth::Zero));
    wform->addRow(
        QStringLiteral("Closing the &window:"),
        choice(
            &Settings::ExitMode,
            {QStringLiteral("Quits Velto"), QStringLiteral("Hides Velto to its tray icon")},
            m_initial.ExitMode == 1 ? 1 : 0,
            QStringLiteral("What the desktop's close does. Quit in the popup menu always quits.")));
    layout->addWidget(window);
    layout->addStretch();
}
