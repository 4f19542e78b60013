#pragma once

#include "skin/skinpart.h"

#include <QByteArrayView>
#include <QString>
#include <QStringList>

class Dialogs;
class Printer;
class SkinSurface;

// A note file as the notepad shows it, and what had to change on the way:
// NUL bytes are left out, and text that is not UTF-8 is read as the old
// Windows-1252. The messages say so.
struct NoteText
{
    QString text;
    QStringList messages;
};
NoteText readNoteText(QByteArrayView bytes, const QString &name);

// The notepad mode: one page of text (the skin's list 2) loaded from a
// file, saved, cleared and printed.
class Notepad : public SkinPart
{
public:
    // A note's length was once a 16-bit number: larger files do not load.
    static constexpr qint64 kMaxBytes = 32767;

    struct Services
    {
        SkinSurface &skin;
        Dialogs &dialogs;
        Printer &printer;
    };

    explicit Notepad(Services services);

    // SkinPart: commands 76-79.
    QStringList modes() const override { return {QStringLiteral("NOTEPAD")}; }
    void DoIt(qint16 cmd) override;

    void NoteLoad();
    // The text and one line end, replacing the file.
    void NoteSave();
    void NoteClear();
    // On the printer the system has, through its print dialog; to a PDF file
    // when it has none.
    void NotePrint();

    QString text() const;

private:
    Services m_svc;
    QString m_folder; // where the last note dialog was
    int m_filter = 0;
};
