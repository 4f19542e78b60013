#include "playbackpage.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QSpinBox>

PlaybackPage::PlaybackPage(const Settings &settings, Dialogs &dialogs)
    : PrefsPage(settings, dialogs)
{
    auto *form = new QFormLayout(this);
    const int device = m_initial.MCIDevice == QLatin1String("0")   ? 0
                       : m_initial.MCIDevice == QLatin1String("1") ? 1
                                                                   : 2;
    form->addRow(QStringLiteral("Media de&vice:"),
                 choice(&Settings::MCIDevice,
                        {QStringLiteral("MPEGVideo"), QStringLiteral("MPEGVideo2"),
                         QStringLiteral("ActiveMovie")},
                        device,
                        QStringLiteral("The media device that plays MP3 and most other files")));
    QSpinBox *overlap =
        number(&Settings::PBOverlap, 0, 32767,
               QStringLiteral("The next item starts this long before the current one ends, "
                              "so the two overlap"));
    overlap->setSuffix(QStringLiteral(" ms"));
    form->addRow(QStringLiteral("Start the next item &early by:"), overlap);
    form->addRow(check(&Settings::AutoPlay,
                       QStringLiteral("Start pla&ying when something is loaded"),
                       QStringLiteral("Play at once after a file or playlist is opened")));
    form->addRow(
        check(&Settings::ClearPLFirst, QStringLiteral("Clea&r the playlist before loading one"),
              QStringLiteral("Loading a playlist replaces the list instead of adding to it"),
              Truth::One));
    form->addRow(check(&Settings::ScrollName, QStringLiteral("&Scroll the title in the display"),
                       QStringLiteral("Titles too long for the display scroll through it")));
}
