#include "platform/readfile.h"
#include "player/albumcover.h"
#include "player/autolist.h"
#include "player/id3tag.h"
#include "player/lyrics.h"
#include "player/mp3info.h"
#include "player/playlist.h"
#include "skin/skinloader.h"
#include "skin/skinreader.h"
#include "support/deadline.h"
#include "support/oddfiles.h"
#include "support/printers.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>

namespace {

// One reader of a file Velto opens by name, and what it gives for a file it
// cannot use, as text.
struct Reader
{
    const char *what;
    const char *name;                               // the file it is handed
    std::function<QString(const QString &)> result; // of reading path
    QString nothing;                                // for a pipe, a device or a folder
    qint64 limit = -1;                              // bytes it takes, -1 for any
    QString tooBig;                                 // for a file one byte over it
};

QString playlistRead(const QString &path)
{
    PlaylistState state;
    state.PlNames = QStringList{QStringLiteral("kept")};
    state.PlPath = QStringList{QStringLiteral("/kept.mp3")};
    const QString message = Playlist(state).PlRead(path);
    return state.PlNames.join(',') + '|' + state.title + '|' + message.section('\r', 0, 0);
}

QString skinPicture(const QString &path)
{
    SkinDescription skin;
    skin.mainBitmapPath = path;
    return buildSkinPictures(skin).main.isNull() ? QStringLiteral("none")
                                                 : QStringLiteral("picture");
}

const QList<Reader> &readers()
{
    static const QList<Reader> list = {
        {"playlist", "list.m3u", playlistRead,
         "kept|untitled|Unable to read Playlist! It is not a file but a folder, pipe or device.",
         Playlist::kMaxListBytes,
         "kept|untitled|Unable to read Playlist! It is too big for a "
         "playlist."},
        {"schedule list", "autolist.txt",
         [](const QString &p) { return LoadAutoList(p).join('|'); }, "", 16 << 20, ""},
        {"lyrics", "song.lyr",
         [](const QString &p) {
             const QString media = p.left(p.lastIndexOf('.')) + ".mp3";
             return LoadLyrics(lyricsFileFor(media)).lines.join('|');
         },
         "No Lyrics", 16 << 20, "No Lyrics"},
        {"frame and tag", "song.mp3",
         [](const QString &p) { return GetMP3Info(p).examined ? "examined" : "nothing"; },
         "nothing", -1, ""},
        {"tag writer", "song.mp3",
         [](const QString &p) {
             return writeTag(p, TagFields{"T", "A", "B", "1999", "", "01", 0}) == TagWrite::Failed
                        ? "failed"
                        : "written";
         },
         "failed", -1, ""},
        {"cover", "cover.jpg",
         [](const QString &p) { return AlbumCover::loadPicture(p).isNull() ? "none" : "picture"; },
         "none", kMaxPictureFileBytes, "none"},
        {"skin", "blue.skin", [](const QString &p) { return readSkinFile(p).messages.join('|'); },
         "Skin not found!", 16 << 20, "Invalid Skin!"},
        {"skin bitmap", "main.bmp", skinPicture, "none", kMaxPictureFileBytes, "none"},
    };
    return list;
}

} // namespace

TEST(FileReaders, PassOverPipesDevicesAndFoldersWithoutWaiting)
{
    QTemporaryDir dir;
    for (const Reader &r : readers()) {
        const QString folder = dir.filePath(QString::fromLatin1(r.what));
        const QList<OddFile> odd = makeOddFiles(folder, QString::fromLatin1(r.name));
        ASSERT_EQ(odd.size(), 3);
        for (const OddFile &f : odd) {
            const std::string what = std::string(r.what) + " on a " + f.kind.toStdString();
            const Deadline deadline(what);
            EXPECT_EQ(r.result(f.path), r.nothing) << what;
        }
    }
}

TEST(FileReaders, RefuseAFileOneBytePastTheirLimit)
{
    // Sparse: one byte past each limit costs no disk, and a reader that read
    // it whole would take seconds and hundreds of megabytes.
    QTemporaryDir dir;
    for (const Reader &r : readers()) {
        if (r.limit < 0)
            continue;
        const QString path = dir.filePath(QString::fromLatin1(r.what)) + '/' + r.name;
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(r.limit + 1)) << r.what;
        file.close();
        const Deadline deadline(std::string(r.what) + " on a file too big");
        EXPECT_EQ(r.result(path), r.tooBig) << r.what;
    }
}
