#include "dialogs.h"

#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
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

bool QtDialogs::question(const QString &title, const QString &text)
{
    QMessageBox box(QMessageBox::Question, title, displayText(text),
                    QMessageBox::Yes | QMessageBox::No, m_parent);
    box.setTextFormat(Qt::PlainText);
    return box.exec() == QMessageBox::Yes;
}

QString QtDialogs::askText(const QString &prompt, const QString &answer)
{
    return QInputDialog::getText(m_parent, kTitle, prompt, QLineEdit::Normal, answer);
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
        QStringList patterns = parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts);
        // "*.*" meant every file where the lists come from; here it would miss
        // names without a dot.
        for (QString &pattern : patterns) {
            if (pattern == QLatin1String("*.*"))
                pattern = QStringLiteral("*");
        }
        lines << caption + QStringLiteral(" (") + patterns.join(QLatin1Char(' ')) +
                     QLatin1Char(')');
    }
    return lines.join(QStringLiteral(";;"));
}

QStringList QtDialogs::openFiles(const QString &title, const QString &folder, const QString &filter)
{
    QFileDialog dlg(m_parent, title, folder, qtFilter(filter));
    dlg.setFileMode(QFileDialog::ExistingFiles);
    // Lists come from a world where "*.MP3" matches "song.mp3".
    dlg.setFilter(dlg.filter() & ~QDir::CaseSensitive);
    if (dlg.exec() != QDialog::Accepted)
        return {};
    return dlg.selectedFiles();
}

QString QtDialogs::openFile(const QString &title, const QString &folder, const QString &filter,
                            int &filterIndex)
{
    QFileDialog dlg(m_parent, title, folder, qtFilter(filter));
    dlg.setFileMode(QFileDialog::ExistingFile);
    dlg.setFilter(dlg.filter() & ~QDir::CaseSensitive);
    const QStringList filters = dlg.nameFilters();
    if (filterIndex >= 0 && filterIndex < filters.size())
        dlg.selectNameFilter(filters[filterIndex]);
    if (dlg.exec() != QDialog::Accepted)
        return {};
    const int chosen = int(filters.indexOf(dlg.selectedNameFilter()));
    if (chosen >= 0)
        filterIndex = chosen;
    return dlg.selectedFiles().value(0);
}

QString QtDialogs::saveFile(const QString &title, const QString &folder, const QString &filter)
{
    return QFileDialog::getSaveFileName(m_parent, title, folder, qtFilter(filter));
}

QString QtDialogs::selectFolder(const QString &prompt, const QString &folder)
{
    return QFileDialog::getExistingDirectory(m_parent, prompt, folder);
}
