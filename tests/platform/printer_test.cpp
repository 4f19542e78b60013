#include "platform/printer.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

// What is typed reaching the PDF is the notepad e2e's to show.
TEST(QtPrinter, AFileThatCannotBeWrittenFailsAndLeavesNothing)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("no-such-folder/note.pdf"));
    QtPrinter printer;
    EXPECT_EQ(printer.printToPdf(QStringLiteral("text"), QStringLiteral("t"), file),
              Printer::Result::Failed);
    EXPECT_FALSE(QFile::exists(file));
}
