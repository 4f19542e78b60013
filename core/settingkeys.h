#pragma once

#include "core/settings.h"

#include <QString>
#include <span>
#include <variant>

// One row of the settings table: a key of velto.ini's [config] group, the
// variable it fills, and how start-up reads and shut-down writes it.
struct SettingKey
{
    // I a 16-bit number, S text, L a 32-bit number. An I kept in a text
    // variable ("MCIDevice") holds the decimal text of the number read.
    enum class Type { I, S, L };
    enum class Read {
        Accessor, // through GetCfgStr/GetCfgInt
        Direct,   // under the writers' application and section names
        Position, // by ReadPosition, defaulting to the window's current edge
        Never,
    };
    enum class Written {
        Never,     // not at shut-down; "Path" is saved by the file dialogs at once
        Leading,   // in the writer's first group, before every other key
        Yes,       // after the first group, in table order
        IfSavePos, // last, and only when "WinSavePos" is 1
    };
    using List = std::array<QString, 10>;
    using Field =
        std::variant<qint16 Settings::*, qint32 Settings::*, QString Settings::*, List Settings::*>;

    const char *name; // the stem of a numbered list ("FavSkin" for "FavSkin0".."FavSkin9")
    Type type;
    Field field;
    const char *defaultText; // nullptr: the key has no default of its own
    Read read;
    Written written;
    const char *writtenAs = nullptr; // the writer's spelling, when it is not the reader's

    int keyCount() const { return std::holds_alternative<List Settings::*>(field) ? 10 : 1; }
    QString key(int slot = 0) const;
    QString writtenKey(int slot = 0) const;
    // The text the writer stores for the variable.
    QString text(const Settings &s, int slot = 0) const;
    // Fills the variable from a stored or default text, the way the reader converts it.
    void take(Settings &s, int slot, const QString &stored) const;
};

// Every key in the order start-up reads them.
std::span<const SettingKey> settingKeys();

// The key of a variable, for naming what edits it ("WinOnTop", "FavSkin3").
QString settingKey(SettingKey::Field field, int slot = 0);
