#include "player/id3tag.h"
#include "support/temphome.h"
#include "support/testbytes.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

TagFields fields(const QString &title, const QString &track = QStringLiteral("3"), int genre = 1)
{
    return {title, "Someone", "Record", "2001", "ok", track, genre};
}

} // namespace

TEST(TagRecord, FieldsFollowTheStoredBytesAndArePaddedPastTheirEnd)
{
    const std::tuple<int, int, const char *, int> cases[] = {
        {7, 80, "07", 80}, {255, 255, "255", 0}, {32, 81, "32", 0}};
    for (const auto &[track, genre, trackText, genreIndex] : cases) {
        TagRecord r;
        r.Title = QStringLiteral("  Hi").leftJustified(30);
        r.Artist = QString::fromLatin1("Band\0\0\0junk", 11).leftJustified(30);
        r.Track = track;
        r.Genre = genre;
        const TagFields f = fieldsFromRecord(r);
        EXPECT_EQ(f.title, "Hi");
        EXPECT_EQ(f.artist, "Band"); // NUL padding ends the text
        EXPECT_EQ(f.track, QString::fromLatin1(trackText));
        EXPECT_EQ(f.genre, genreIndex);
    }
    for (const int code : {0, 81, -1})
        EXPECT_EQ(genreName(code), QStringLiteral("Unknown")) << code;
    // Fields past the end of the bytes read are padded with spaces.
    QByteArray last(256, char(0x90));
    last.replace(200, 8, "tAgShort"); // 23 bytes of artist remain, nothing after
    last.replace(230, 3, "TAG");      // the first tag word counts, not a later one
    const TagRecord r = readTag(last);
    EXPECT_EQ(r.Title, "Short" + fromWindows1252(last.mid(208, 25)));
    EXPECT_EQ(r.Artist, fromWindows1252(last.mid(233, 23)) + QString(7, ' '));
    EXPECT_EQ(r.Album, QString(30, ' '));
    EXPECT_EQ(r.Genre, ' ');
}

TEST(WriteTag, AddsThenUpdatesEvenAtAMisplacedTagWordAndLeavesOtherBytesAlone)
{
    TempHome home;
    const QByteArray original = audio(5000);
    const QString path = home.write("a.mp3", original);

    EXPECT_EQ(writeTag(path, fields(QStringLiteral("First"))), TagWrite::Added);
    // The window's tests read the other two messages.
    EXPECT_EQ(tagWriteMessage(TagWrite::Updated), "Tag Updated!");
    const QByteArray once = readAll(path);
    ASSERT_EQ(once.size(), original.size() + 128);
    EXPECT_EQ(once.left(original.size()), original);

    // A character outside the code page, even one beyond 16 bits, is one mark.
    EXPECT_EQ(writeTag(path, fields(QStringLiteral("Second \u00e9\U0001F600"), "12", 80)),
              TagWrite::Updated);
    const QByteArray twice = readAll(path);
    ASSERT_EQ(twice.size(), once.size());
    EXPECT_EQ(twice.left(original.size()), original);
    const QByteArray tag = twice.right(128);
    EXPECT_EQ(tag.left(33), QByteArray("TAGSecond \xe9?").leftJustified(33, ' '));
    EXPECT_EQ(tag.mid(93, 4), "2001");
    EXPECT_EQ(quint8(tag[126]), 12);
    EXPECT_EQ(quint8(tag[127]), 80);

    // A "tag" word in the audio, without a real tag, is where the update goes.
    QByteArray misplaced = audio(3000);
    misplaced.replace(misplaced.size() - 50, 3, "tag");
    const QString other = home.write("m.mp3", misplaced);
    EXPECT_EQ(writeTag(other, fields(QStringLiteral("X"))), TagWrite::Updated);
    const QByteArray after = readAll(other);
    ASSERT_EQ(after.size(), misplaced.size() - 50 + 128);
    EXPECT_EQ(after.left(misplaced.size() - 50), misplaced.left(misplaced.size() - 50));
    EXPECT_TRUE(after.mid(misplaced.size() - 50).startsWith("TAGX "));
}

TEST(WriteTag, TrackAndFieldsBecomeSingleBytesOrFail)
{
    TempHome home;
    // Track text, genre, and the track byte written (-1: the save fails).
    const std::tuple<QString, int, int> cases[] = {
        {" 12 ", 2, 12}, {"255", 4, 255}, {"256", 4, -1}, {"7x", 5, 7}, {"3", 256, -1},
    };
    for (const auto &[track, genre, trackByte] : cases) {
        SCOPED_TRACE(track.toStdString());
        const QByteArray original = audio(600);
        const QString path = home.write("t.mp3", original);
        const TagWrite result = writeTag(path, fields(QString(40, 'x'), track, genre));
        if (trackByte < 0) {
            EXPECT_EQ(result, TagWrite::Failed);
            EXPECT_EQ(readAll(path), original);
            continue;
        }
        EXPECT_EQ(result, TagWrite::Added);
        const QByteArray tag = readAll(path).right(128);
        EXPECT_EQ(tag.mid(3, 30), QByteArray(30, 'x')); // cut when longer
        EXPECT_EQ(tag.mid(97, 29), QByteArray("ok").leftJustified(29, ' '));
        EXPECT_EQ(quint8(tag[126]), trackByte);
        EXPECT_EQ(quint8(tag[127]), genre);
    }
}

TEST(WriteTag, FailsWithoutChangingOrCreatingAnything)
{
    TempHome home;
    // A vanished file is frmInfo's test, a folder FileReaders'; here a path
    // that can never be opened.
    const QString regular = home.write("plain", "not a folder");
    EXPECT_EQ(writeTag(regular + QStringLiteral("/song.mp3"), fields(QStringLiteral("X"))),
              TagWrite::Failed);
    EXPECT_EQ(readAll(regular), "not a folder");

    if (geteuid() != 0) { // permission bits do not stop root
        const QString readOnly = home.write("ro.mp3", audio(1000));
        QFile::setPermissions(readOnly, QFileDevice::ReadOwner);
        EXPECT_EQ(writeTag(readOnly, fields(QStringLiteral("X"))), TagWrite::Failed);
        EXPECT_EQ(readAll(readOnly), audio(1000));
    }
}

TEST(WriteTag, AWriteThatStopsHalfWayLeavesTheFileAsItWas)
{
    TempHome home;
    const QByteArray original = audio(4096);
    const QString path = home.write("big.mp3", original);

    // The file may grow by 50 bytes only: the 128-byte tag fails part way.
    rlimit old{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &old), 0);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit small = old;
    small.rlim_cur = rlim_t(original.size() + 50);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const TagWrite result = writeTag(path, fields(QStringLiteral("X")));
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, oldHandler);

    EXPECT_EQ(result, TagWrite::Failed);
    EXPECT_EQ(readAll(path), original);
}

// The process dies inside the write (the file size limit kills it, as a
// crash or power loss would): the next start puts the old tail back.
TEST(WriteTag, AWriteCutByTheProcessDyingIsUndoneAtTheNextStart)
{
    TempHome home;
    const QString backup = home.file("tagwrite.bak");
    const QByteArray untagged = audio(4096);
    QByteArray tagged = untagged;
    tagged.replace(tagged.size() - 128, 3, "TAG");
    // The limit falls 50 bytes into the tag, whether it is added or replaced.
    for (const auto &[original, at] : {std::pair(untagged, 4096), std::pair(tagged, 4096 - 128)}) {
        const QString path = home.write("cut.mp3", original);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            rlimit small{};
            getrlimit(RLIMIT_FSIZE, &small);
            small.rlim_cur = rlim_t(at + 50);
            setTagBackupFile(backup);
            setrlimit(RLIMIT_FSIZE, &small);
            writeTag(path, fields(QStringLiteral("Cut")));
            _exit(0); // the limit should have ended the process before
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGXFSZ) << status;
        ASSERT_NE(readAll(path), original);
        ASSERT_TRUE(QFile::exists(backup));

        EXPECT_TRUE(restoreCutTagWrite(backup));
        EXPECT_EQ(readAll(path), original);
        EXPECT_FALSE(QFile::exists(backup));
    }
}

TEST(WriteTag, ADamagedBackupIsDropped)
{
    TempHome home;
    const QString backup = home.file("tagwrite.bak");
    const QString path = home.write("kept.mp3", audio(1000));
    EXPECT_TRUE(restoreCutTagWrite(backup)) << "no backup: nothing to do";

    setTagBackupFile(backup);
    ASSERT_EQ(writeTag(path, fields(QStringLiteral("Kept"))), TagWrite::Added);
    EXPECT_FALSE(QFile::exists(backup)) << "a confirmed write leaves no backup";
    const QByteArray written = readAll(path);

    for (const QByteArray &damaged :
         {QByteArray(), QByteArray("VTAG garbage"), QByteArray(90, 'x')}) {
        home.write("tagwrite.bak", damaged);
        EXPECT_TRUE(restoreCutTagWrite(backup));
        EXPECT_FALSE(QFile::exists(backup));
        EXPECT_EQ(readAll(path), written);
    }
    setTagBackupFile({});
}
