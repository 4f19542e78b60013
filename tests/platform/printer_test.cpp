#include "platform/printer.h"

#include "support/pdftext.h"

#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

TEST(QtPrinter, APdfHoldsTheTextWrappedToThePage)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("note.pdf"));
    QStringList lines;
    for (int i = 1; i <= 150; ++i)
        lines << QStringLiteral("Line %1 of the note").arg(i);
    const QString longLine = QStringLiteral("word ").repeated(60).trimmed();
    lines.insert(2, longLine);
    lines.insert(3, QStringLiteral("Gr\u00fc\u00dfe, \u00e7a va? 10 \u20ac"));

    QtPrinter printer;
    ASSERT_EQ(printer.printToPdf(lines.join('\n'), QStringLiteral("Velto note"), file),
              Printer::Result::Printed);
    const QString text = pdfText(file);
    for (const QString &line :
         {QStringLiteral("Line 1 of the note"), QStringLiteral("Line 150 of the note"),
          QStringLiteral("Gr\u00fc\u00dfe, \u00e7a va? 10 \u20ac")})
        EXPECT_TRUE(text.contains(line)) << line.toStdString();
    EXPECT_EQ(text.count(QStringLiteral("word")), 60) << "a long line wraps, nothing is cut";
    EXPECT_GE(text.count(QLatin1Char('\f')), 2) << "150 lines fill more than one page";
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
