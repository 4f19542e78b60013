#include "dialogs.h"

#include <QFileDialog>
#include <QMessageBox>

namespace {
const QString kTitle = QStringLiteral("Velto");
}

QString QtDialogs::displayText(const QString &text)
{
    QString shown = text;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return shown;
}

void QtDialogs::message(const QString &text)
{
    QMessageBox box(QMessageBox::NoIcon, kTitle, displayText(text), QMessageBox::Ok, m_parent);
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

bool QtDialogs::askYesNo(const QString &text)
{
    QMessageBox box(QMessageBox::Question, kTitle, displayText(text),
                    QMessageBox::Yes | QMessageBox::No, m_parent);
    box.setTextFormat(Qt::PlainText);
    return box.exec() == QMessageBox::Yes;
}

QString QtDialogs::qtFilter(const QString &filter)
{
    // Pairs of "caption|patterns"; Qt wants "caption (patterns)" lines. The caption
    // already shows the patterns, so only the pattern list is what Qt matches.
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList lines;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        QString caption = parts[i];
        const int paren = caption.indexOf(QLatin1Char('('));
        if (paren > 0)
            caption = caption.left(paren).trimmed();
        QString patterns = parts[i + 1];
        patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
        lines << caption + QStringLiteral(" (") + patterns + QLatin1Char(')');
    }
    return lines.join(QStringLiteral(";;"));
}

QStringList QtDialogs::openFiles(const QString &title, const QString &folder,
                                 const QString &filter)
{
    QFileDialog dlg(m_parent, title, folder, qtFilter(filter));
    dlg.setFileMode(QFileDialog::ExistingFiles);
    // Lists come from a world where "*.MP3" matches "song.mp3".
    dlg.setFilter(dlg.filter() & ~QDir::CaseSensitive);
    if (dlg.exec() != QDialog::Accepted)
        return {};
    return dlg.selectedFiles();
}

QString QtDialogs::saveFile(const QString &title, const QString &folder, const QString &filter)
{
    return QFileDialog::getSaveFileName(m_parent, title, folder, qtFilter(filter));
}

QString QtDialogs::selectFolder(const QString &prompt, const QString &folder)
{
    return QFileDialog::getExistingDirectory(m_parent, prompt, folder);
}
