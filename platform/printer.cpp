#include "printer.h"

#include <QFontDatabase>
#include <QLocale>
#include <QPageSize>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QSaveFile>
#include <QTextDocument>
#include <QTextOption>

namespace {

void layOut(QTextDocument &document, const QString &text)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSize(10);
    document.setDefaultFont(font);
    // A line longer than the page wraps, if need be inside a word.
    QTextOption option = document.defaultTextOption();
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    document.setDefaultTextOption(option);
    document.setPlainText(text);
}

QPageSize localPaper()
{
    return QPageSize(QLocale().measurementSystem() == QLocale::ImperialUSSystem ? QPageSize::Letter
                                                                                : QPageSize::A4);
}

} // namespace

bool QtPrinter::hasPrinter() const
{
    return !QPrinterInfo::availablePrinterNames().isEmpty();
}

Printer::Result QtPrinter::print(const QString &text, const QString &title)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(title);
    QPrintDialog dialog(&printer, m_parent);
    if (dialog.exec() != QDialog::Accepted)
        return Result::Cancelled;
    QTextDocument document;
    layOut(document, text);
    document.print(&printer);
    return printer.printerState() == QPrinter::Error ? Result::Failed : Result::Printed;
}

Printer::Result QtPrinter::printToPdf(const QString &text, const QString &title,
                                      const QString &file)
{
    QSaveFile out(file);
    if (!out.open(QIODevice::WriteOnly))
        return Result::Failed;
    QPdfWriter pdf(&out);
    pdf.setTitle(title);
    pdf.setCreator(QStringLiteral("Velto"));
    pdf.setPageSize(localPaper());
    QTextDocument document;
    layOut(document, text);
    // The painter that print() opens and closes writes the whole file.
    document.print(&pdf);
    return out.commit() ? Result::Printed : Result::Failed;
}
