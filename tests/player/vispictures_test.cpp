#include "player/vispictures.h"

#include "support/temphome.h"
#include "support/testbytes.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

const QSize kBox(96, 96);

TEST(VisPictures, EachPlaylistShowsItsOwnPictureElseTheDefaultOne)
{
    TempHome home;
    const QString d = home.path() + '/';
    const QString noCover = home.write("nocover.bmp", picture(0xff808080, "BMP"));
    home.write("rock.jpg", picture(0xffff0000, "JPG"));
    home.write("Both.BMP", picture(0xff0000ff, "BMP"));
    home.write("Both.JPG", picture(0xff00ff00, "JPG"));
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
    TempHome home;
    const QRgb red = 0xffff0000;
    const struct
    {
        QString file;
        QSize size; // 0 x 0: no picture
    } cases[] = {
        {home.write("big.jpg", picture(red, "JPG", {3000, 1500})), {96, 48}},
        {home.write("tall.png", picture(red, "PNG", {200, 400})), {48, 96}},
        {home.write("small.bmp", picture(red, "BMP", {50, 40})), {50, 40}},
        {home.write("text.jpg", "not a picture"), {0, 0}},
    };
    for (const auto &c : cases)
        EXPECT_EQ(VisPictures::loadScaled(c.file, kBox).size(), c.size) << c.file.toStdString();

    // A JPEG whose header claims 10000 x 10000 pixels that never come: what can
    // be decoded shows, in the box, without using memory for the claimed size.
    QByteArray huge = picture(red, "JPG", {16, 16});
    const qsizetype sof = huge.indexOf("\xFF\xC0");
    ASSERT_GT(sof, 0);
    huge.replace(sof + 5, 4, "\x27\x10\x27\x10"); // height and width 10000
    const QImage claimed = VisPictures::loadScaled(home.write("huge.jpg", huge), kBox);
    EXPECT_LE(claimed.width(), 96);
    EXPECT_LE(claimed.height(), 96);
}

TEST(VisPictures, RequestsAnswerOffTheEventLoopOnceAndFromTheCacheAfter)
{
    TempHome home;
    const QString d = home.path() + '/';
    const QString noCover = home.write("nocover.bmp", picture(0xff808080, "BMP", {8, 8}));
    home.write("a.jpg", picture(0xffff0000, "JPG", {3000, 3000}));
    home.write("b.gif", "broken");
    VisPictures pictures(noCover, kBox);
    QSignalSpy ready(&pictures, &VisPictures::pictureReady);

    pictures.request(1, {d + "a.m3u", d + "b.m3u", d + "c.m3u"});
    EXPECT_TRUE(ready.isEmpty()) << "decoded on worker threads";
    EXPECT_TRUE(pictures.busy());
    ASSERT_TRUE(QTest::qWaitFor([&] { return ready.count() == 3; }, 20000));
    QMap<int, QImage> byBox;
    for (const QList<QVariant> &args : ready)
        byBox[args[1].toInt()] = args[2].value<QImage>();
    EXPECT_EQ(byBox[1].size(), QSize(8, 8)) << "a broken cover gives the default picture";

    ready.clear();
    pictures.request(2, {d + "c.m3u", d + "a.m3u"});
    ASSERT_EQ(ready.count(), 2) << "kept from the first showing";
    EXPECT_EQ(ready[1][1].toInt(), 1);
    EXPECT_EQ(ready[1][2].value<QImage>().size(), QSize(96, 96));

    // Paging on before the pictures came: the old page's answers are dropped.
    ready.clear();
    home.write("x.bmp", picture(0xff0000ff, "BMP", {300, 300}));
    pictures.request(3, {d + "x.m3u"});
    pictures.request(4, {d + "a.m3u"});
    ASSERT_TRUE(QTest::qWaitFor([&] { return !pictures.busy(); }, 20000));
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
    for (const QList<QVariant> &args : ready)
        EXPECT_EQ(args[0].toInt(), 4);
}
