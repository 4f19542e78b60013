#pragma once

#include "skin/skinpart.h"

#include <QSet>

class Dialogs;

// The command numbers of modes this version does not have yet: the first
// press of one says so, instead of doing nothing without a word.
class PendingModes : public SkinPart
{
public:
    explicit PendingModes(Dialogs &dialogs) : m_dialogs(dialogs) {}

    // The ranges this part answers for, low <= cmd < high.
    struct Range
    {
        int low, high;
        const char *mode;
    };
    static const QList<Range> &ranges();

    void DoIt(qint16 cmd) override;

private:
    Dialogs &m_dialogs;
    QSet<QString> m_told;
};
