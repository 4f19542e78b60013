#include "cd/cdtable.h"

#include "platform/linuxcddrive.h"
#include "support/discimage.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// A disc whose tracks start at these disc positions and end at leadOut.
CdDisc discOf(const QList<qint32> &starts, qint32 leadOut)
{
    CdDisc disc;
    for (int i = 0; i < starts.size(); ++i) {
        CdDisc::Track t;
        t.number = i + 1;
        t.start = starts[i];
        t.sectors = (i + 1 < starts.size() ? starts[i + 1] : leadOut) - starts[i];
        disc.tracks << t;
    }
    disc.leadOut = leadOut;
    return disc;
}

} // namespace

// Both identities of images made here, checked against the same sums worked
// out from the images' sector counts apart from the code (DiscImage).
TEST(CdTable, IdentitiesOfGeneratedImagesMatchAnIndependentCount)
{
    const QList<QList<qint32>> discs = {
        {451, 777, 90, 1200, 800, 75, 76, 1000, 449, 451, 2222, 150},
        {4500 + 17},
    };
    QTemporaryDir dir;
    LinuxCdDrive drive;
    int n = 0;
    for (const QList<qint32> &sectors : discs) {
        SCOPED_TRACE(sectors.size());
        DiscImage image;
        image.sectors = sectors;
        const QString cue = image.write(dir.path(), QStringLiteral("disc%1").arg(++n));
        const CdDisc disc = drive.read(cue);
        ASSERT_TRUE(disc.ok()) << disc.problem.toStdString();
        const CdTable table = readCdTable(disc);
        EXPECT_EQ(table.CDTracks, sectors.size());
        EXPECT_EQ(table.CDDBId, image.cddbId());
        EXPECT_EQ(table.CDPlayerId, image.cdPlayerId());
        for (int t = 1; t <= table.CDTracks; ++t)
            EXPECT_EQ(table.tracks[size_t(t)].Frames, image.offsets()[t - 1]) << t;
    }
}

TEST(CdTable, TracksInTimeUnitsAndTheTrackUnderAPosition)
{
    // Track 1 at 0:02.00 for 3 s, track 2 at 0:05.00 for 65.4 s, track 3 at 1:10.30 to the end.
    const CdTable table = readCdTable(discOf({150, 375, 375 + 4905}, 375 + 4905 + 4500));
    const std::tuple<int, qint16, qint16, qint16, qint32, qint32, qint32, const char *> want[] = {
        {1, 0, 2, 0, 150, 2000, 3000, "01 - Track  1  (00:03)"},
        {2, 0, 5, 0, 375, 5000, 65400, "02 - Track  2  (01:05)"},
        {3, 1, 10, 30, 5280, 70400, 60000, "03 - Track  3  (01:00)"},
    };
    ASSERT_EQ(table.names.size(), 3);
    for (const auto &[track, min, sec, frame, frames, startMs, lengthMs, name] : want) {
        SCOPED_TRACE(track);
        const CdTrackTime &t = table.tracks[size_t(track)];
        EXPECT_EQ(std::tuple(t.Min, t.Sec, t.Frame, t.Frames, t.StartMs, t.LengthMs, t.EndMs),
                  std::tuple(min, sec, frame, frames, startMs, lengthMs, startMs + lengthMs - 1));
        EXPECT_EQ(table.names[track - 1], QLatin1String(name));
    }
    EXPECT_EQ(table.CDSeconds, 128) << "(4905 + 4500 + 225) sectors, whole seconds";

    const std::pair<qint32, int> under[] = {{0, 1},     {4999, 1},   {5000, 2},
                                            {70400, 3}, {130399, 3}, {130400, 0}};
    for (const auto &[ms, track] : under)
        EXPECT_EQ(findCdTrack(table, ms), track) << ms;
    EXPECT_EQ(findCdTrack(CdTable(), 1), 0) << "no disc";
}

TEST(CdTable, EntriesShowNumberTitleAndLength)
{
    const std::tuple<int, const char *, qint32, const char *> cases[] = {
        {3, "Intro", 65400, "03 - Intro  (01:05)"},
        {1, "x", 59600, "01 - x  (00:60)"}, // the seconds round on their own
        {1, "x", 60499, "01 - x  (01:00)"},
        {99, "", 4799999, "99 -   (79:60)"},
    };
    for (const auto &[track, title, ms, entry] : cases)
        EXPECT_EQ(MakeCDEntry(track, QString::fromUtf8(title), ms), QString::fromUtf8(entry));
}

// No Disc, Stopped, Playing and Ready are the CD part's to show.
TEST(CdTable, StatusWords)
{
    const std::tuple<int, bool, const char *> cases[] = {{525, true, "Paused"},
                                                         {526, true, "Playing"},
                                                         {529, false, "Paused"},
                                                         {527, false, "unknown"}};
    for (const auto &[mode, paused, word] : cases)
        EXPECT_EQ(cdStatusWord(mode, paused), QLatin1String(word)) << mode;
}
