#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>

class Dialogs;
class SkinListArea;
class SkinSurface;
class SkinTextField;

// What the two radio modes share about their list of stations: the file it
// is kept in, and the skin's list and edit field it is shown and edited in.
// The signals come only while the mode is shown, whichever skin is loaded.
class StationList : public QObject
{
    Q_OBJECT
public:
    StationList(SkinSurface &skin, Dialogs &dialogs, int listNumber, int fieldNumber, QString file,
                const bool &shown);

    // Follows the skin's list and field; again after each skin load.
    void hook();
    SkinListArea *list() const;
    SkinTextField *field() const;

    // The file's lines; a file that cannot be read is reported, and is then
    // never written over by save().
    QStringList load();
    // False when the file was not written (the user is told why).
    bool save(const QStringList &lines);
    const QString &file() const { return m_file; }

    // The list shows names, row current selected (none when out of range).
    void fill(const QStringList &names, int current);
    // Selects row without a signal; a row out of range clears the selection.
    void select(int row);
    // Puts text in the field for editing, all of it selected or the cursor at its end.
    void edit(const QString &text, bool selectAll);

    // A line break in an edited line would split the entry in two in the file.
    static QString oneLine(const QString &text);

signals:
    void clicked(int row);
    void currentChanged(int row);
    void activated(int row);
    // Delete and F2 on the list, with its current row.
    void keyPressed(int key, int row);
    void entered(const QString &text);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    SkinSurface &m_skin;
    Dialogs &m_dialogs;
    const int m_listNumber;
    const int m_fieldNumber;
    const QString m_file;
    const bool &m_shown;
    bool m_readable = true;
    QPointer<SkinListArea> m_hookedList;
    QPointer<SkinTextField> m_hookedField;
};
