#pragma once

#include <QString>
#include <QStringList>

#include <vector>

class SkinPart;

// DoIt: every button, key and menu entry ends here as a command number. The
// table routes ranges of numbers to the parts that own them; the part maps
// its numbers to its procedures.
class Dispatcher
{
public:
    // Commands low <= cmd < high go to the part. Routes may overlap: the
    // part whose mode the skin is made for runs the number, else the part
    // routed first.
    void route(int low, int high, SkinPart &part);
    // The modes the skin shown is made for (its type words, upper-cased).
    void setSkinModes(const QStringList &modes) { m_skinModes = modes; }

    // Numbers without a route do nothing. Whatever a command throws is
    // logged and swallowed, so one broken command never ends the program.
    void DoIt(qint16 cmd);
    // The part that runs the command now, or null.
    SkinPart *target(qint16 cmd) const;
    // The skin shown is made for one of the part's modes.
    bool inMode(const SkinPart &part) const;

    // Entry index of the key table; throws std::out_of_range outside 0..20
    // or past the end of a shorter list.
    static const QString &linkEntry(const QStringList &list, int index);

private:
    struct Route
    {
        int low;
        int high;
        SkinPart *part;
    };

    std::vector<Route> m_routes;
    QStringList m_skinModes;
};
