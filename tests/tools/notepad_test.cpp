#include "tools/notepad.h"

#include "platform/printer.h"
#include "skin/skintextarea.h"
#include "support/fakes.h"
#include "support/recordingsurface.h"
#include "support/temphome.h"
#include "support/testbytes.h"

#include <gtest/gtest.h>

namespace {

// A system with a printer, which no test machine has: what reached it.
class PrinterOnTheDesk : public Printer
{
public:
    QStringList printed;
    Result answer = Result::Printed;

    bool hasPrinter() const override { return true; }
    Result print(const QString &text, const QString &) override
    {
        printed << text;
        return answer;
    }
    Result printToPdf(const QString &, const QString &, const QString &) override
    {
        ADD_FAILURE() << "a PDF while a printer is there";
        return Result::Failed;
    }
};

class NotepadTest : public ::testing::Test
{
protected:
    void type(const QString &text) { skin.notepad()->setPlainText(text); }
    void load(const QString &path)
    {
        dialogs.openResults.push_back({path});
        note.DoIt(76);
    }
    void save(const QString &path)
    {
        dialogs.saveResult = path;
        note.DoIt(77);
    }

    TempHome home;
    RecordingSurface skin;
    FakeDialogs dialogs;
    QtPrinter printer;
    Notepad note{{skin, dialogs, printer}};
};

} // namespace

TEST(NoteText, ReadsWhatItCanAndSaysWhatItChanged)
{
    const QString cp1252 =
        "n.txt is not UTF-8 text: it was read as Windows-1252, and Save writes it as UTF-8.";
    const QString nuls =
        "n.txt holds %1 NUL byte(s), which a note cannot show: they were left out.";
    const struct
    {
        QByteArray bytes;
        QString text;
        QStringList messages = {};
    } cases[] = {
        {"plain\nlines\n", "plain\nlines\n"},
        {"\xEF\xBB\xBFGr\xC3\xBC\xC3\x9F!", "Gr\u00fc\u00df!"},
        {"caf\xE9 \x80", "caf\u00e9 \u20ac", {cp1252}},
        {QByteArray("a\0b\0\0c", 6), "abc", {nuls.arg(3)}},
    };
    for (const auto &c : cases) {
        const NoteText note = readNoteText(c.bytes, QStringLiteral("n.txt"));
        EXPECT_EQ(note.text, c.text) << c.bytes.toHex().toStdString();
        EXPECT_EQ(note.messages, c.messages) << c.bytes.toHex().toStdString();
    }
}

// Each round of saving and loading adds one line end, as it always did.
TEST_F(NotepadTest, SaveAddsOneLineEndLoadReadsItBackAndAFailedSaveLeavesTheFile)
{
    const QString file = home.file(QStringLiteral("note.txt"));
    type(QStringLiteral("first\nsecond \u00e9"));
    save(file);
    EXPECT_EQ(readAll(file), QByteArray("first\nsecond \xC3\xA9\n"));
    note.DoIt(78);
    EXPECT_EQ(note.text(), QString());
    load(file);
    EXPECT_EQ(note.text(), QStringLiteral("first\nsecond \u00e9\n"));
    save(file);
    load(file);
    EXPECT_EQ(note.text(), QStringLiteral("first\nsecond \u00e9\n\n"));
    EXPECT_EQ(dialogs.calls.last().folder, home.path()) << "the next dialog starts where this was";
    EXPECT_TRUE(dialogs.messages.isEmpty());

    const QString nowhere = home.file(QStringLiteral("no-such-folder/note.txt"));
    save(nowhere);
    ASSERT_EQ(dialogs.messages.size(), 1);
    EXPECT_TRUE(dialogs.messages[0].startsWith("The note could not be saved to " + nowhere + ": "));
    EXPECT_EQ(readAll(file), QByteArray("first\nsecond \xC3\xA9\n\n")) << "a failed save leaves it";
}

TEST_F(NotepadTest, LoadsUpTo32767BytesAndSaysWhyALargerFileDoesNot)
{
    const QString fits = home.write(QStringLiteral("fits.txt"), QByteArray(32767, 'a'));
    const QString over = home.write(QStringLiteral("over.txt"), QByteArray(32768, 'b'));
    load(fits);
    EXPECT_EQ(note.text().size(), 32767);
    load(over);
    EXPECT_EQ(dialogs.messages,
              QStringList{"over.txt is too big for the notepad (32768 bytes): it loads files of up "
                          "to 32767 bytes."});
    EXPECT_EQ(note.text(), QString(32767, QLatin1Char('a'))) << "what was there stays";

    dialogs.messages.clear();
    load(home.path());
    EXPECT_EQ(dialogs.messages,
              QStringList{home.path() + QStringLiteral(" cannot be loaded: it is not a regular "
                                                       "file.")});
}

TEST_F(NotepadTest, APrinterGetsTheNoteThroughItsDialogButNeverAnEmptyOne)
{
    PrinterOnTheDesk desk;
    Notepad withPrinter{{skin, dialogs, desk}};
    withPrinter.DoIt(79);
    note.DoIt(79);
    EXPECT_EQ(dialogs.messages, QStringList({"Notepad is empty!", "Notepad is empty!"}));
    EXPECT_TRUE(desk.printed.isEmpty());

    dialogs.messages.clear();
    type(QStringLiteral("to the printer"));
    withPrinter.DoIt(79);
    EXPECT_EQ(desk.printed, QStringList{"to the printer"});
    EXPECT_TRUE(dialogs.calls.isEmpty()) << "the print dialog is the printer's own";
    desk.answer = Printer::Result::Failed;
    withPrinter.DoIt(79);
    EXPECT_EQ(dialogs.messages, QStringList{"The note could not be printed."});
}

// The PDF itself is the end-to-end test's.
TEST_F(NotepadTest, WithoutAPrinterAPdfThatCannotBeWrittenIsTold)
{
    if (printer.hasPrinter())
        GTEST_SKIP() << "this machine has a printer; the PDF route is for machines without";
    type(QStringLiteral("Shopping"));
    note.DoIt(79);
    ASSERT_EQ(dialogs.calls.size(), 1);
    EXPECT_TRUE(dialogs.messages.isEmpty()) << "a cancelled dialog prints nothing";
    dialogs.saveResult = home.file(QStringLiteral("no-such-folder/x.pdf"));
    note.DoIt(79);
    EXPECT_EQ(dialogs.messages,
              QStringList{"The note could not be printed to " +
                          home.file(QStringLiteral("no-such-folder/x.pdf")) + "."});
}
