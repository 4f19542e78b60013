#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// Finding a playlist entry by what the user types. Names are compared in a
// folded form, upper case without accents, so "cafe" finds "Café".
class QuickFind
{
public:
    explicit QuickFind(const QStringList &names);

    // The names sorted by their folded form; equal ones keep playlist order.
    const QStringList &names() const { return m_sorted; }
    // The playlist index (0-based) of the name at a row of names().
    int entryOf(int row) const { return m_entry.value(row, -1); }

    // The row to select for a prefix search: the first name whose start is not
    // below the text, or the last name when every one is. -1 when the text is
    // empty (the selection stays) or there are no names.
    int FindMatch(const QString &text) const;
    // Rows of the names that contain the text, in the order of names(). An
    // empty text gives every name that is not empty.
    QList<int> FindAny(const QString &text) const;

    // Upper case, accents and other marks removed, ligatures spelled out.
    static QString fold(const QString &text);

private:
    QStringList m_sorted;
    QStringList m_keys; // fold() of each sorted name
    QList<int> m_entry;
};
