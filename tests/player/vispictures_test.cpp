#include "player/vispictures.h"

#include "support/printers.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

const QSize kBox(96, 96);

QString savePicture(const QString &path, QSize size, QColor colour, const char *format = nullptr)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(colour);
    EXPECT_TRUE(picture.save(path, format)) << path.toStdString();
    return path;
}

QByteArray jpeg(QSize size)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "JPG");
    return bytes;
}

QString writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    EXPECT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(bytes);
    return path;
}

} // namespace

TEST(VisPictures, EachPlaylistShowsItsOwnPictureElseTheDefaultOne)
{
    QTemporaryDir dir;
    const QString d = dir.path() + '/';
    const QString noCover = savePicture(d + "nocover.bmp", {8, 8}, Qt::gray);
    savePicture(d + "rock.jpg", {8, 8}, Qt::red, "JPG");
    savePicture(d + "Both.BMP", {8, 8}, Qt::blue);
    savePicture(d + "Both.JPG", {8, 8}, Qt::green, "JPG");
    const struct
    {
        QString entry, picture;
    } cases[] = {
        {d + "rock.m3u", d + "rock.jpg"}, // any letter case on disk
        {d + "Both.pls", d + "Both.BMP"}, // BMP before GIF before JPG
        {d + "none.m3u", noCover},        // nothing named like it
        {d + "Rock.DIR", d + "rock.jpg"}, // a folder entry: Rock plus the extensions
        {d + "noext", noCover},
    };
    for (const auto &c : cases)
        EXPECT_EQ(VisPictures::pictureFile(c.entry, noCover), c.picture) << c.entry.toStdString();
}

TEST(VisPictures, PicturesAreScaledIntoTheBoxAndBadOnesGiveNone)
{
    QTemporaryDir dir;
    const QString d = dir.path() + '/';
    const struct
    {
        QString file;
        QSize size; // 0 x 0: no picture
    } cases[] = {
        {savePicture(d + "big.jpg", {3000, 1500}, Qt::red, "JPG"), {96, 48}},
        {savePicture(d + "tall.png", {200, 400}, Qt::red, "PNG"), {48, 96}},
        {savePicture(d + "small.bmp", {50, 40}, Qt::red, "BMP"), {50, 40}},
        {writeBytes(d + "text.jpg", "not a picture"), {0, 0}},
        {writeBytes(d + "empty.gif", ""), {0, 0}},
        {d + "missing.jpg", {0, 0}},
        {d, {0, 0}}, // a folder
    };
    for (const auto &c : cases)
        EXPECT_EQ(VisPictures::loadScaled(c.file, kBox).size(), c.size) << c.file.toStdString();

    // A JPEG cut short, and one whose header claims 10000 x 10000 pixels that
    // never come: what can be decoded shows, in the box, without using memory
    // for the claimed size.
    QByteArray cut = jpeg({400, 400});
    cut.truncate(cut.size() / 2);
    const QImage half = VisPictures::loadScaled(writeBytes(d + "cut.jpg", cut), kBox);
    EXPECT_LE(half.width(), 96);
    QByteArray huge = jpeg({16, 16});
    const qsizetype sof = huge.indexOf("\xFF\xC0");
    ASSERT_GT(sof, 0);
    huge[sof + 5] = char(10000 >> 8);
    huge[sof + 6] = char(10000 & 0xFF);
    huge[sof + 7] = char(10000 >> 8);
    huge[sof + 8] = char(10000 & 0xFF);
    const QImage claimed = VisPictures::loadScaled(writeBytes(d + "huge.jpg", huge), kBox);
    EXPECT_LE(claimed.width(), 96);
    EXPECT_LE(claimed.height(), 96);
}

TEST(VisPictures, RequestsAnswerOffTheEventLoopOnceAndFromTheCacheAfter)
{
    QTemporaryDir dir;
    const QString d = dir.path() + '/';
    const QString noCover = savePicture(d + "nocover.bmp", {8, 8}, Qt::gray);
    savePicture(d + "a.jpg", {3000, 3000}, Qt::red, "JPG");
    writeBytes(d + "b.gif", "broken");
    VisPictures pictures(noCover, kBox);
    QSignalSpy ready(&pictures, &VisPictures::pictureReady);

    pictures.request(1, {d + "a.m3u", d + "b.m3u", d + "c.m3u"});
    EXPECT_TRUE(ready.isEmpty()) << "decoded on worker threads";
    EXPECT_TRUE(pictures.busy());
    ASSERT_TRUE(QTest::qWaitFor([&] { return ready.count() == 3; }, 20000));
    EXPECT_FALSE(pictures.busy());
    QMap<int, QImage> byBox;
    for (const QList<QVariant> &args : ready) {
        EXPECT_EQ(args[0].toInt(), 1);
        byBox[args[1].toInt()] = args[2].value<QImage>();
    }
    EXPECT_EQ(byBox[0].size(), QSize(96, 96));
    EXPECT_EQ(QColor(byBox[0].pixel(48, 48)).red() > 200, true);
    EXPECT_EQ(byBox[1].size(), QSize(8, 8)) << "a broken cover gives the default picture";
    EXPECT_EQ(byBox[2].size(), QSize(8, 8));

    ready.clear();
    pictures.request(2, {d + "c.m3u", d + "a.m3u"});
    ASSERT_EQ(ready.count(), 2) << "kept from the first showing";
    EXPECT_EQ(ready[1][1].toInt(), 1);
    EXPECT_EQ(ready[1][2].value<QImage>().size(), QSize(96, 96));

    // Paging on before the pictures came: the old page's answers are dropped.
    ready.clear();
    savePicture(d + "x.bmp", {300, 300}, Qt::blue);
    pictures.request(3, {d + "x.m3u"});
    pictures.request(4, {d + "a.m3u"});
    ASSERT_TRUE(QTest::qWaitFor([&] { return !pictures.busy(); }, 20000));
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
    for (const QList<QVariant> &args : ready)
        EXPECT_EQ(args[0].toInt(), 4);
}
