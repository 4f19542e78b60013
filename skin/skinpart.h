#pragma once

#include <QDateTime>
#include <QStringList>
#include <QtGlobal>

#include <optional>

// A part of the program that the skin's buttons, keys and menus drive: the
// player, a desk tool, a radio. It owns a few ranges of command numbers (the
// dispatcher routes them here) and draws on the skin through a SkinSurface it
// holds. The hooks have nothing to do by default.
class SkinPart
{
public:
    virtual ~SkinPart() = default;

    // The skin words of the modes this part is ("PLAYER", "CLOCK"...); where
    // two parts own a number, the one whose mode the skin is for runs it.
    virtual QStringList modes() const { return {}; }
    // One of the part's command numbers; a part may own none.
    virtual void DoIt(qint16 cmd) { Q_UNUSED(cmd); }
    // While the skin is for one of its modes: the command of a typed
    // character that no button of the skin claims (Return, Backspace...).
    virtual std::optional<qint16> keyCommand(char32_t typed) const
    {
        Q_UNUSED(typed);
        return std::nullopt;
    }

    // Start-up, once the settings are read and the first skin is shown: the
    // part reads its files and shows its state.
    virtual void started() {}
    // Shut-down: the part closes its devices. interactive is false while the
    // desktop session ends, when no question may be asked.
    virtual void ending(bool interactive) { Q_UNUSED(interactive); }
    // A new skin is shown: the part shows its state on it again.
    virtual void skinLoaded() {}
    // The skin shown is now made for one of the part's modes, or no longer.
    virtual void entered() {}
    virtual void left() {}
    // The user changed the settings.
    virtual void settingsChanged() {}
    // The clock's beat (four times a second), with the time it read.
    virtual void clockTick(const QDateTime &now) { Q_UNUSED(now); }
};
