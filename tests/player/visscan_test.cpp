#include "player/visscan.h"

#include "support/printers.h"
#include "support/temphome.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace {

QStringList entries(const VisScan &scan)
{
    QStringList list;
    for (int i = 0; i < scan.count(); ++i)
        list << (scan.isFolder(i) ? "[" + scan.name(i) + "]" : scan.path(i));
    return list;
}

bool finish(VisScan &scan, QSignalSpy &finished)
{
    return !scan.isRunning() || finished.wait(20000);
}

} // namespace

TEST(VisScan, ListsDirFoldersFirstThenThePlaylistsOfTheTreeBreadthFirst)
{
    TempHome home;
    const QString r = home.path() + '/';
    for (const char *name : {"b.m3u", "a.PLS", "notes.txt", "c.m3u8", "Rock.DIR/rock.m3u",
                             "jazz.dir/x.pls", "sub/deeper/deep.m3u", "sub/s.M3U", "plain/p.wav"})
        home.write(QString::fromLatin1(name), "");
    QFile::link(r, r + "sub/loop"); // back up the tree
    QDir().mkpath(r + "Empty.Dir");

    VisScan scan;
    QSignalSpy finished(&scan, &VisScan::finished);
    ASSERT_TRUE(scan.scan(home.path()));
    ASSERT_TRUE(finish(scan, finished));
    EXPECT_EQ(entries(scan),
              QStringList({"[Empty.Dir]", "[jazz.dir]", "[Rock.DIR]", r + "a.PLS", r + "b.m3u",
                           r + "jazz.dir/x.pls", r + "Rock.DIR/rock.m3u", r + "sub/s.M3U",
                           r + "sub/deeper/deep.m3u"}));
    EXPECT_EQ(scan.path(2), r + "Rock.DIR");
    EXPECT_EQ(scan.name(4), QStringLiteral("b"));
    ASSERT_EQ(finished.count(), 1);
    EXPECT_FALSE(finished[0][0].toBool()) << "not stopped";
}

TEST(VisScan, AMissingFolderListsNothing)
{
    VisScan scan;
    QSignalSpy finished(&scan, &VisScan::finished);
    EXPECT_FALSE(scan.scan(QStringLiteral("/no/such/folder")));
    EXPECT_EQ(scan.count(), 0);
    EXPECT_EQ(finished.count(), 1);
    EXPECT_FALSE(scan.scan(QString()));
}

TEST(VisScan, StopEndsTheScanWithWhatItFoundAndANewScanStartsOver)
{
    // Three lists, then a tree far too large to walk in one turn of the event
    // loop: the system's shared data.
    TempHome home;
    for (const char *name : {"a.m3u", "b.m3u", "c.pls"})
        home.write(QString::fromLatin1(name), "");
    QFile::link(QStringLiteral("/usr/share"), home.file(QStringLiteral("shared")));
    VisScan scan;
    QSignalSpy finished(&scan, &VisScan::finished);
    ASSERT_TRUE(scan.scan(home.path()));
    EXPECT_TRUE(scan.isRunning()) << "the window stays live while it scans";
    ASSERT_TRUE(QTest::qWaitFor([&] { return scan.count() >= 3; }));
    ASSERT_TRUE(scan.isRunning()) << "/usr/share is walked in more than one turn";
    scan.stop();
    EXPECT_FALSE(scan.isRunning());
    ASSERT_EQ(finished.count(), 1);
    EXPECT_TRUE(finished[0][0].toBool());
    const int found = scan.count();
    EXPECT_GE(found, 3);
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
    EXPECT_EQ(scan.count(), found) << "nothing comes after the stop";

    const QString other = home.write(QStringLiteral("other/one.pls"), "");
    ASSERT_TRUE(scan.scan(home.file(QStringLiteral("other"))));
    ASSERT_TRUE(finish(scan, finished));
    EXPECT_EQ(entries(scan), QStringList{other});
}
