#pragma once

#include "core/commandtargets.h"

#include <QString>
#include <QStringList>

// DoIt: every button, key and menu entry ends here as a command number.
class Dispatcher
{
public:
    struct Parts
    {
        WindowCommands &window;
        PlayerCommands &player;
        PlaylistCommands &playlist;
        CalculatorCommands &calculator;
        StopwatchCommands &stopwatch;
        NotepadCommands &notepad;
        FmCommands &fm;
        WebCommands &web;
        WebRadioCommands &webRadio;
        ToolCommands &tools;

        PlayerFlags &flags;
        qint32 &MarkPos;
        qint16 &WRPresetIdx;
        // The skin's key table: entry n is the text of its "K" record n.
        QStringList &LinkList;
    };

    explicit Dispatcher(Parts parts) : m_parts(parts) {}

    // Numbers without a command do nothing. Whatever a command throws is
    // logged and swallowed, so one broken command never ends the program.
    void DoIt(qint16 cmd);

    // Entry index of the key table; throws std::out_of_range outside 0..20
    // or past the end of a shorter list.
    static const QString &linkEntry(const QStringList &list, int index);

private:
    Parts m_parts;
};
