#include "mediaerror.h"

QString mediaErrorMessage(int error, const QString &device, const QString &file,
                          const QString &errorText)
{
    const QString cr = QStringLiteral("\r");
    const QString fileLine = QStringLiteral("Filename: ") + file;
    QString explanation;
    switch (error) {
    case 263:
        explanation = QStringLiteral("MCI driver is NOT installed.") + cr +
                      QStringLiteral("See Velto documentation!");
        break;
    case 264:
        // The label counts towards the limit, so an 89-character path is
        // already too long.
        explanation = fileLine.size() > 98
                          ? QStringLiteral("The filename and path must be 98 characters or less!")
                          : QStringLiteral("Out of memory.");
        break;
    case 274:
        if (device == QLatin1String("MPEGVideo"))
            explanation =
                QStringLiteral("Make sure you are using the Microsoft MPEGVideo driver!") + cr +
                QStringLiteral("MPEG Video may have been re-assigned to a DVD drive or card.") +
                cr + QStringLiteral("You may need to use the ActiveMovie driver (see docs)!");
        else
            explanation =
                QStringLiteral("Try installing the latest MS MediaPlayer (formerly ActiveMovie).");
        break;
    case 277:
        explanation = QStringLiteral("The File could not be opened.") + cr +
                      QStringLiteral("It may be an unknown format, corrupt, or an un-supported "
                                     "variation of a known format.");
        break;
    default:
        // The file name appears twice in this box, on purpose.
        explanation = QStringLiteral("Unhandled Velto error") + cr + fileLine;
        break;
    }
    return QStringLiteral("MCI Device: ") + device + cr + fileLine + cr + cr +
           QStringLiteral("Error: ") + errorText + cr + cr + explanation;
}
