#include "pendingmodes.h"

#include "platform/dialogs.h"

const QList<PendingModes::Range> &PendingModes::ranges()
{
    static const QList<Range> r = {
        {40, 70, "The calculator"},
        {76, 80, "The notepad"},
        {80, 101, "The FM tuner"},
        {130, 149, "Web radio"},
    };
    return r;
}

void PendingModes::DoIt(qint16 cmd)
{
    for (const Range &r : ranges()) {
        if (cmd < r.low || cmd >= r.high)
            continue;
        const QString mode = QLatin1String(r.mode);
        // Once a run is enough: a skin full of its buttons must stay usable.
        if (!m_told.contains(mode)) {
            m_told.insert(mode);
            m_dialogs.message(mode + QStringLiteral(" is not in this version of Velto yet."));
        }
        return;
    }
}
