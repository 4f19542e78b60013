#include "notepad.h"

#include "platform/dialogs.h"
#include "platform/printer.h"
#include "platform/readfile.h"
#include "platform/text.h"
#include "skin/skinsurface.h"
#include "skin/skintextarea.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>

namespace {

const QString kFilter = QStringLiteral("Text Files|*.TXT|All Files|*.*");

} // namespace

NoteText readNoteText(QByteArrayView bytes, const QString &name)
{
    NoteText note;
    QByteArray kept = bytes.toByteArray();
    const qsizetype nuls = kept.count('\0');
    if (nuls > 0) {
        kept.replace(QByteArrayView("\0", 1), QByteArrayView());
        note.messages << QStringLiteral("%1 holds %2 NUL byte(s), which a note cannot show: "
                                        "they were left out.")
                             .arg(name)
                             .arg(nuls);
    }
    note.text = decodeText(kept);
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    [[maybe_unused]] const QString decoded = utf8.decode(kept);
    if (utf8.hasError())
        note.messages << QStringLiteral("%1 is not UTF-8 text: it was read as Windows-1252, and "
                                        "Save writes it as UTF-8.")
                             .arg(name);
    return note;
}

Notepad::Notepad(Services services) : m_svc(services), m_folder(QDir::homePath()) {}

void Notepad::DoIt(qint16 cmd)
{
    switch (cmd) {
    case 76:
        return NoteLoad();
    case 77:
        return NoteSave();
    case 78:
        return NoteClear();
    case 79:
        return NotePrint();
    default:
        return;
    }
}

QString Notepad::text() const
{
    return m_svc.skin.notepad()->toPlainText();
}

void Notepad::NoteLoad()
{
    const QString path =
        m_svc.dialogs.openFile(QStringLiteral("Open Note File"), m_folder, kFilter, m_filter);
    if (path.isEmpty())
        return;
    const QFileInfo info(path);
    m_folder = info.absolutePath();
    const FileBytes file = readRegularFile(path, kMaxBytes);
    if (file.fault == FileFault::TooBig) {
        m_svc.dialogs.message(QStringLiteral("%1 is too big for the notepad (%2 bytes): it loads "
                                             "files of up to 32767 bytes.")
                                  .arg(info.fileName())
                                  .arg(info.size()));
        return;
    }
    if (file.fault != FileFault::None) {
        m_svc.dialogs.message(QStringLiteral("%1 cannot be loaded: it is %2.")
                                  .arg(path, QLatin1String(faultText(file.fault))));
        return;
    }
    const NoteText note = readNoteText(file.bytes, info.fileName());
    m_svc.skin.notepad()->setPlainText(note.text);
    if (!note.messages.isEmpty())
        m_svc.dialogs.message(note.messages.join(QLatin1Char('\r')));
}

void Notepad::NoteSave()
{
    const QString path =
        m_svc.dialogs.saveFile(QStringLiteral("Save Note file"), m_folder, kFilter);
    if (path.isEmpty())
        return;
    m_folder = QFileInfo(path).absolutePath();
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text().toUtf8() + '\n') < 0 ||
        !file.commit())
        m_svc.dialogs.message(
            QStringLiteral("The note could not be saved to %1: %2").arg(path, file.errorString()));
}

void Notepad::NoteClear()
{
    m_svc.skin.notepad()->clear();
}

void Notepad::NotePrint()
{
    const QString note = text();
    if (note.isEmpty()) {
        m_svc.dialogs.message(QStringLiteral("Notepad is empty!"));
        return;
    }
    const QString title = QStringLiteral("Velto note");
    if (m_svc.printer.hasPrinter()) {
        if (m_svc.printer.print(note, title) == Printer::Result::Failed)
            m_svc.dialogs.message(QStringLiteral("The note could not be printed."));
        return;
    }
    // Without a printer the page goes to a file the user can print elsewhere.
    QString path = m_svc.dialogs.saveFile(QStringLiteral("Print to PDF File"), m_folder,
                                          QStringLiteral("PDF Files|*.pdf"));
    if (path.isEmpty())
        return;
    if (QFileInfo(path).suffix().isEmpty())
        path += QStringLiteral(".pdf");
    m_folder = QFileInfo(path).absolutePath();
    if (m_svc.printer.printToPdf(note, title, path) == Printer::Result::Failed)
        m_svc.dialogs.message(QStringLiteral("The note could not be printed to %1.").arg(path));
}
