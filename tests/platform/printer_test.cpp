#include "platform/printer.h"

#include "support/pdftext.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// That the lines typed reach the file is the notepad e2e's to show; pages are
// Qt's to fill.
TEST(QtPrinter, APdfHoldsEveryWordOfALineLongerThanThePage)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("note.pdf"));
    const QString accents = QStringLiteral("Gr\u00fc\u00dfe, \u00e7a va? 10 \u20ac");
    const QString longLine = QStringLiteral("word ").repeated(60).trimmed();
    QtPrinter printer;
    ASSERT_EQ(printer.printToPdf(longLine + '\n' + accents, QStringLiteral("Velto note"), file),
              Printer::Result::Printed);
    const QString text = pdfText(file);
    EXPECT_EQ(text.count(QStringLiteral("word")), 60) << "a long line wraps, nothing is cut";
    EXPECT_TRUE(text.contains(accents)) << text.toStdString();
}

TEST(QtPrinter, AFileThatCannotBeWrittenFailsAndLeavesNothing)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("no-such-folder/note.pdf"));
    QtPrinter printer;
    EXPECT_EQ(printer.printToPdf(QStringLiteral("text"), QStringLiteral("t"), file),
              Printer::Result::Failed);
    EXPECT_FALSE(QFile::exists(file));
}
