#include "app/frmneorb.h"
#include "app/frmprefs.h"

#include "support/shippedwindow.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMetaProperty>
#include <QPushButton>
#include <QTest>
#include <QTimeEdit>
#include <gtest/gtest.h>

namespace {

// Everything the shut-down would write for these settings, key by key.
QMap<QString, QString> stored(const Settings &s)
{
    MemoryStore store;
    ConfigStore(store).WriteAll(s);
    return store.values;
}

QMap<QString, QString> differences(const Settings &before, const Settings &after)
{
    const QMap<QString, QString> a = stored(before), b = stored(after);
    QMap<QString, QString> diff;
    for (auto it = b.begin(); it != b.end(); ++it)
        if (a.value(it.key()) != it.value())
            diff[it.key()] = it.value();
    return diff;
}

// One input of each kind: each changes its own setting alone.
TEST(PrefsDialog, EachInputChangesOnlyItsOwnSetting)
{
    const struct
    {
        const char *input;
        QVariant typed;     // written to the input's user property, as a user would
        const char *key;    // as velto.ini holds it after shut-down
        const char *stored; // the value written there
    } cases[] = {
        {"StartMd", "The file, playlist or folder below", "config/startmd", "2"},
        {"PBOverlap", 300, "config/pboverlap", "300"},
        {"FriendlyNames", false, "config/friendlynames", "0"},
        {"ValidExt", "*.mp3, .FLAC;;ogg  ..wav *.", "config/validext", "mp3 FLAC ogg wav"},
        {"SnoozeTime", QTime(6, 45), "config/snoozetime", "06:45"},
        {"StartFreq", 101.5, "config/startfreq", "101.5"},
        {"URL3", " www.example.org ", "config/url3", "www.example.org"},
    };
    FakeDialogs dialogs;
    for (const auto &c : cases) {
        const Settings before;
        frmPrefs prefs(before, {}, dialogs);
        QWidget *input = prefs.findChild<QWidget *>(QLatin1String(c.input));
        ASSERT_NE(input, nullptr) << c.input;
        ASSERT_TRUE(input->metaObject()->userProperty().write(input, c.typed)) << c.input;
        Settings after = before;
        prefs.applyTo(after);
        const QMap<QString, QString> expected{{QLatin1String(c.key), QString::fromUtf8(c.stored)}};
        EXPECT_EQ(differences(before, after), expected) << c.input;
        EXPECT_FALSE(prefs.autoListChanged()) << c.input;
        EXPECT_TRUE(prefs.chosenSkin().isEmpty()) << c.input;
    }
}

TEST(PrefsDialog, OkWithoutChangesKeepsValuesNoInputCanShow)
{
    Settings odd;
    odd.ExitMode = 7;
    odd.WinOnTop = -1;
    odd.SnoozeTime = QStringLiteral("soon");
    odd.PBOverlap = -20;
    odd.StartFreq = QStringLiteral("tuned");
    odd.ValidExt = QStringLiteral("  MP3,,ogg ");
    odd.Skin = QStringLiteral("gone.skin");
    const QStringList list{QStringLiteral("X 99:99 ab:cd zz"), QStringLiteral("E 07:30 08:00 03")};
    FakeDialogs dialogs;
    frmPrefs prefs(odd, list, dialogs);
    Settings after = odd;
    prefs.applyTo(after);
    EXPECT_TRUE(differences(odd, after).isEmpty())
        << differences(odd, after).firstKey().toStdString();
    EXPECT_EQ(prefs.autoList(), list);
    EXPECT_FALSE(prefs.autoListChanged());
    EXPECT_TRUE(prefs.chosenSkin().isEmpty());
}

// An entry made on the page is the alarm test's, its layout Schedule's.
TEST(PrefsDialog, AScheduleEntryThatCanNeverSwitchIsRefusedAndEntriesAreRemoved)
{
    FakeDialogs dialogs;
    QStringList expected{"E 07:30 08:00 03", "D 07:30 00:00 00", "S 09:05 11:00 09"};
    frmPrefs prefs(Settings(), expected, dialogs);
    auto *list = prefs.findChild<QListWidget *>(QStringLiteral("AutoList"));
    auto *note = prefs.findChild<QLabel *>(QStringLiteral("AutoNote"));
    ASSERT_TRUE(list && note);

    prefs.findChild<QTimeEdit *>(QStringLiteral("AutoOn"))->setTime(QTime(0, 0));
    prefs.findChild<QTimeEdit *>(QStringLiteral("AutoOff"))->setTime(QTime(0, 0));
    QTest::mouseClick(prefs.findChild<QPushButton *>(QStringLiteral("AutoAdd")), Qt::LeftButton);
    EXPECT_EQ(prefs.autoList(), expected);
    EXPECT_EQ(note->text(), QStringLiteral("Not added: an entry that switches on and off at 00:00 "
                                           "would never switch anything."));

    list->setCurrentRow(0);
    QTest::mouseClick(prefs.findChild<QPushButton *>(QStringLiteral("AutoDelete")), Qt::LeftButton);
    expected.removeFirst();
    EXPECT_EQ(prefs.autoList(), expected);
    EXPECT_TRUE(prefs.autoListChanged());
}

class PrefsWindow : public ::testing::Test, protected ShippedWindow
{
protected:
    PrefsWindow() { start(); }

    frmPrefs *openPrefs()
    {
        velto->DoIt(5);
        auto *prefs = window->findChild<frmPrefs *>();
        EXPECT_TRUE(prefs && prefs->isVisible());
        return prefs;
    }

    void press(frmPrefs *prefs, QDialogButtonBox::StandardButton which)
    {
        QTest::mouseClick(prefs->findChild<QDialogButtonBox *>()->button(which), Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    QString autoListFile() const { return home.file(QStringLiteral("data/velto/autolist.txt")); }
};

// How the alarm fades in is VolumeFade's and ClockTick's; here the entry made
// on the page reaches the file and the schedule.
TEST_F(PrefsWindow, WeekdayAlarmSetInPreferencesBringsTheWindowUp)
{
    frmPrefs *prefs = openPrefs();
    ASSERT_NE(prefs, nullptr);
    prefs->findChild<QCheckBox *>(QStringLiteral("Auto"))->setChecked(true);
    prefs->findChild<QComboBox *>(QStringLiteral("AutoDay"))->setCurrentIndex(1); // weekdays
    prefs->findChild<QTimeEdit *>(QStringLiteral("AutoOn"))->setTime(QTime(7, 30));
    prefs->findChild<QTimeEdit *>(QStringLiteral("AutoOff"))->setTime(QTime(8, 30));
    QTest::mouseClick(prefs->findChild<QPushButton *>(QStringLiteral("AutoAdd")), Qt::LeftButton);
    press(prefs, QDialogButtonBox::Ok);
    EXPECT_EQ(window->findChild<frmPrefs *>(), nullptr);
    QFile file(autoListFile());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << "the list is written at once";
    EXPECT_EQ(file.readAll(), QByteArray("D 07:30 08:30 00\n"));

    window->show();
    window->showMinimized();
    ASSERT_TRUE(tickAt(QTime(7, 29, 59)));
    EXPECT_TRUE(window->isMinimized());
    ASSERT_TRUE(tickAt(QTime(7, 30, 0)));
    EXPECT_FALSE(window->isMinimized()) << "the alarm brings the window up";
    window->close();
    EXPECT_EQ(store.values.value("config/auto"), QStringLiteral("1"));
}

TEST_F(PrefsWindow, CancelForgetsAndOkReachesTheStoreOnlyAtShutDown)
{
    frmPrefs *prefs = openPrefs();
    ASSERT_NE(prefs, nullptr);
    EXPECT_EQ(openPrefs(), prefs) << "opening twice shows the one dialog";
    prefs->findChild<QCheckBox *>(QStringLiteral("WinSnap"))->setChecked(true);
    press(prefs, QDialogButtonBox::Cancel);
    EXPECT_EQ(velto->settings().WinSnap, 0);

    prefs = openPrefs();
    ASSERT_NE(prefs, nullptr);
    prefs->findChild<QCheckBox *>(QStringLiteral("WinSnap"))->setChecked(true);
    prefs->findChild<QCheckBox *>(QStringLiteral("TimeFmt"))->setChecked(true);
    press(prefs, QDialogButtonBox::Ok);
    EXPECT_EQ(velto->settings().WinSnap, 1);
    EXPECT_FALSE(store.values.contains("config/winsnap")) << "nothing is stored before shut-down";
    EXPECT_FALSE(QFile::exists(autoListFile())) << "an untouched schedule is not rewritten";

    window->close();
    EXPECT_EQ(store.values.value("config/winsnap"), QStringLiteral("1"));
    EXPECT_EQ(store.values.value("config/timefmt"), QStringLiteral("1"));
}

TEST_F(PrefsWindow, ASkinChosenInPreferencesIsLoaded)
{
    const QString calculator = home.file(QStringLiteral("data/velto/skins/calculator.skin"));
    ASSERT_TRUE(QFile::exists(calculator));
    frmPrefs *prefs = openPrefs();
    ASSERT_NE(prefs, nullptr);
    dialogs.openResults.push_back({calculator});
    QTest::mouseClick(prefs->findChild<QPushButton *>(QStringLiteral("SkinChoose")),
                      Qt::LeftButton);
    EXPECT_EQ(prefs->findChild<QLineEdit *>(QStringLiteral("Skin"))->text(), calculator);
    press(prefs, QDialogButtonBox::Ok);
    EXPECT_EQ(velto->settings().Skin, QStringLiteral("calculator.skin"));
    EXPECT_TRUE(dialogs.messages.isEmpty()) << dialogs.messages.join('|').toStdString();
}

} // namespace
