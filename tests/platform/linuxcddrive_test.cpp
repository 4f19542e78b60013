#include "platform/cdtrackreader.h"
#include "platform/linuxcddrive.h"

#include "support/discimage.h"
#include "support/temphome.h"

#include <QDir>
#include <gtest/gtest.h>

namespace {

class CdImages : public ::testing::Test
{
protected:
    TempHome home;
    LinuxCdDrive drive;
};

// Everything a reader gives from `from` on, in pieces of `piece` bytes.
QByteArray readAll(CdTrackReader &reader, qint64 from, qint64 piece)
{
    EXPECT_TRUE(reader.seek(from));
    QByteArray out, buffer(int(piece), '\0');
    for (qint64 n; (n = reader.read(buffer.data(), piece)) > 0;)
        out += buffer.left(int(n));
    return out;
}

} // namespace

// Every track reads back as a WAV file holding exactly the image's bytes,
// from any byte on and in pieces of any size. That mpv takes the header is
// MpvDevice's test: a track's length comes from it.
TEST_F(CdImages, TracksReadBitForBitFromAnyByte)
{
    DiscImage image;
    image.sectors = {30, 41, 12};
    const QString cue = image.write(home.file(QStringLiteral("b")), "disc");
    const QByteArray bin = image.binBytes();
    const CdDisc disc = drive.read(cue);
    ASSERT_TRUE(disc.ok()) << disc.problem.toStdString();

    qint64 at = 0;
    for (int t = 1; t <= 3; ++t) {
        SCOPED_TRACE(t);
        std::unique_ptr<CdTrackReader> reader = CdTrackReader::open(disc.playSource, t);
        ASSERT_TRUE(reader);
        const qint64 bytes = qint64(image.sectors[t - 1]) * 2352;
        ASSERT_EQ(reader->size(), 44 + bytes);
        const QByteArray track = bin.mid(at, bytes);
        at += bytes;

        const QByteArray whole = readAll(*reader, 0, 1 << 16);
        ASSERT_EQ(whole.size(), 44 + bytes);
        EXPECT_TRUE(whole.mid(44) == track);

        for (const auto &[from, piece] :
             {std::pair<qint64, qint64>{10, 7}, {44 + 2351, 3}, {44 + bytes - 1, 100}}) {
            SCOPED_TRACE(from);
            EXPECT_TRUE(readAll(*reader, from, piece) == whole.mid(from));
        }
        EXPECT_TRUE(reader->seek(reader->size()));
        char c;
        EXPECT_EQ(reader->read(&c, 1), 0);
        EXPECT_FALSE(reader->seek(reader->size() + 1));
        EXPECT_FALSE(reader->seek(-1));
    }
    EXPECT_FALSE(CdTrackReader::open(disc.playSource, 4));
}

// The image named in the sheet is read, whatever its own name: libcdio alone
// would read "disc.bin".
TEST_F(CdImages, AnImageNamedOtherwiseThanItsSheetIsReadThroughAView)
{
    DiscImage image;
    image.sectors = {20, 30};
    image.binName = "Some Other Name.BIN";
    const QString cue = image.write(home.file(QStringLiteral("c")), "disc");
    // A decoy where libcdio would look.
    home.write("c/disc.bin", QByteArray(50 * 2352, '\x55'));

    const CdDisc disc = drive.read(cue);
    ASSERT_TRUE(disc.ok()) << disc.problem.toStdString();
    std::unique_ptr<CdTrackReader> reader = CdTrackReader::open(disc.playSource, 2);
    ASSERT_TRUE(reader);
    EXPECT_TRUE(readAll(*reader, 44, 4096) == image.binBytes().mid(20 * 2352));

    // Names written on Windows: backslashes and another letter case.
    home.write("c/disc.cue", image.cueText("C:\\Rips\\some other name.bin"));
    EXPECT_TRUE(drive.read(cue).ok());
}

TEST_F(CdImages, BrokenImagesSayWhatIsWrong)
{
    DiscImage good;
    good.sectors = {20, 30};
    const QString base = home.path();
    home.write("short.bin", good.binBytes().left(21 * 2352 - 5));
    QDir().mkpath(base + "/folder.cue");

    const struct
    {
        QString cue;
        const char *problem;
    } cases[] = {
        {home.write("short.cue", good.cueText("short.bin")),
         "The image file short.bin ends before track 2 begins: it is cut short."},
        {base + "/folder.cue", "The cue sheet cannot be read: it is not a regular file."},
        {base + "/gone.cue", "The cue sheet cannot be read: it is missing."},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.cue.toStdString());
        const CdDisc disc = drive.read(c.cue);
        EXPECT_FALSE(disc.ok());
        EXPECT_EQ(disc.problem, QString::fromUtf8(c.problem));
        EXPECT_TRUE(disc.tracks.isEmpty());
    }
    EXPECT_EQ(drive.status(base + "/gone.cue"), CdDrive::Status::NoDisc);
}

TEST_F(CdImages, WhatIsNoDriveIsToldApart)
{
    EXPECT_EQ(drive.status(QStringLiteral("/nonexistent/cdrom")), CdDrive::Status::NoDrive);
    EXPECT_EQ(drive.status(QStringLiteral("/dev/null")), CdDrive::Status::NoDrive)
        << "a device, but no block device";
}

TEST(CdTrackUrl, NamesATrackOfASourceAndRefusesAnythingElse)
{
    int track = 0;
    QString path;
    ASSERT_TRUE(
        parseCdTrackUrl(cdTrackUrl(QStringLiteral("/discs/Caf\u00e9.cue"), 12), track, path));
    EXPECT_EQ(track, 12);
    EXPECT_EQ(path, QStringLiteral("/discs/Caf\u00e9.cue"));
    for (const char *url : {"cdtrack://0/dev/sr0", "cdtrack://100/dev/sr0", "cdda://5/dev/sr0"}) {
        SCOPED_TRACE(url);
        EXPECT_FALSE(parseCdTrackUrl(url, track, path));
    }
}
