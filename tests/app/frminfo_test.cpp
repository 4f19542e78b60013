#include "player/frminfo.h"
#include "support/testbytes.h"

#include "support/fakes.h"
#include "support/temphome.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <gtest/gtest.h>

namespace {

struct InfoWindow
{
    InfoWindow()
        : window(dialogs,
                 frmInfo::Source{
                     [this] { return current; }, {}, {}, [this](const QString &f) { saved << f; }})
    {
    }
    QLineEdit *edit(const char *name) { return window.findChild<QLineEdit *>(name); }
    QComboBox *genre() { return window.findChild<QComboBox *>("cboGenre"); }
    void click(const char *name) { window.findChild<QPushButton *>(name)->click(); }
    // As typed: the field's length limit applies.
    void type(const char *name, const QString &text) { edit(name)->setText(text); }

    TempHome home;
    FakeDialogs dialogs;
    QString current;
    QStringList saved;
    frmInfo window;
};

} // namespace

TEST(frmInfo, SavesTheTagWithinTheFieldLimitsOrReportsAFileThatVanished)
{
    InfoWindow w;
    w.current = w.home.write("a.mp3", audio(4000));
    w.window.GetInfo();
    EXPECT_EQ(w.edit("txtFileName")->text(), w.current);
    EXPECT_EQ(w.edit("txtTrack")->text(), "00");
    EXPECT_EQ(w.genre()->currentText(), "Hard Rock") << "an untagged file shows the initial genre";
    EXPECT_EQ(w.window.findChild<QLabel *>("lblFrame")->text(), "128 kbit/s, 44 kHz, jstereo");

    // What the tag holds, byte by byte, and the audio left alone, are WriteTag's tests.
    w.type("txtTitle", QStringLiteral("A title that is far longer than thirty characters"));
    w.type("txtTrack", "7");
    w.genre()->setCurrentIndex(1);
    w.click("cmdSave");
    EXPECT_EQ(w.dialogs.messages, QStringList{"Tag Added!"});
    EXPECT_EQ(w.saved, QStringList{w.current});

    w.window.GetInfo();
    EXPECT_EQ(w.edit("txtTitle")->text(), "A title that is far longer tha");
    EXPECT_EQ(w.edit("txtTrack")->text(), "07");
    EXPECT_EQ(w.genre()->currentText(), "Blues") << "stored as 1, one above the usual numbering";

    QFile::remove(w.current);
    w.click("cmdSave");
    EXPECT_EQ(w.dialogs.messages.last(), "Error writing tag (is file in use?)!");
    EXPECT_FALSE(QFile::exists(w.current)) << "no bare tag is left behind";
    EXPECT_EQ(w.saved.size(), 1);
}

TEST(frmInfo, HelpersForTaggingAnAlbum)
{
    InfoWindow w;
    w.current = w.home.write("05_My_Song.mp3", audio(500));
    w.window.GetInfo();
    w.click("cmdSetTitle");
    EXPECT_EQ(w.edit("txtTitle")->text(), "05 My Song.mp3");

    w.type("txtArtist", "Band");
    w.type("txtAlbum", "Record");
    w.type("txtYear", "2001");
    w.click("cmdMem");
    w.current = w.home.write("06.mp3", audio(500));
    w.window.GetInfo();
    EXPECT_EQ(w.edit("txtArtist")->text(), "");
    w.click("cmdCpy");
    EXPECT_EQ(w.edit("txtArtist")->text(), "Band");
    EXPECT_EQ(w.edit("txtAlbum")->text(), "Record");
    EXPECT_EQ(w.edit("txtYear")->text(), "2001");
}

TEST(frmInfo, FollowsTheCurrentItemUnlessEditIsChecked)
{
    InfoWindow w;
    const QString first = w.home.write("one.mp3", audio(500));
    const QString second = w.home.write("two.mp3", audio(500));
    const QString chosen = w.home.write("chosen.mp3", audio(500));
    w.current = first;
    w.window.GetInfo(chosen); // an entry picked in the list, not the playing one
    w.window.Timer1_Timer();
    EXPECT_EQ(w.edit("txtFileName")->text(), chosen) << "stays until the current item changes";

    w.current = second;
    w.window.findChild<QCheckBox *>("cbEdit")->setChecked(true);
    w.window.Timer1_Timer();
    EXPECT_EQ(w.edit("txtFileName")->text(), chosen);

    w.window.findChild<QCheckBox *>("cbEdit")->setChecked(false);
    w.window.Timer1_Timer();
    EXPECT_EQ(w.edit("txtFileName")->text(), second);
}
