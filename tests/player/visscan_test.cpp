#include "player/visscan.h"

#include "support/printers.h"
#include "support/temphome.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace {

QStringList entries(const VisScan &scan)
{
    QStringList list;
    for (int i = 0; i < scan.count(); ++i)
        list << (scan.isFolder(i) ? "[" + scan.name(i) + "]" : scan.path(i));
    return list;
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
    ASSERT_TRUE(!scan.isRunning() || finished.wait(20000));
    EXPECT_EQ(entries(scan),
              QStringList({"[Empty.Dir]", "[jazz.dir]", "[Rock.DIR]", r + "a.PLS", r + "b.m3u",
                           r + "jazz.dir/x.pls", r + "Rock.DIR/rock.m3u", r + "sub/s.M3U",
                           r + "sub/deeper/deep.m3u"}));
    EXPECT_EQ(scan.path(2), r + "Rock.DIR");
    EXPECT_EQ(scan.name(4), QStringLiteral("b"));
    ASSERT_EQ(finished.count(), 1);
    EXPECT_FALSE(finished[0][0].toBool()) << "not stopped";
}
