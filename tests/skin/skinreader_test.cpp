#include "skin/skinreader.h"

#include "support/printers.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <tuple>

namespace {

const QString kClosing = QStringLiteral("Error in skin file!\rThe skin file contains references to "
                                        "the following elements that do not exist!:\r");
const QString kTooMany = QStringLiteral("This skin contains too many buttons!");

// A skin folder with real pictures, so messages hold only what the body causes.
const QString &skinFolder()
{
    static QTemporaryDir dir;
    static const QString path = [] {
        QImage picture(8, 8, QImage::Format_RGB32);
        picture.fill(Qt::red);
        QDir(dir.path()).mkpath(QStringLiteral("Sub"));
        QFile notAPicture(dir.filePath(QStringLiteral("text.png")));
        notAPicture.open(QIODevice::WriteOnly);
        notAPicture.write("not a picture");
        EXPECT_TRUE(picture.save(dir.filePath(QStringLiteral("main.bmp"))) &&
                    picture.save(dir.filePath(QStringLiteral("Res.PNG"))) &&
                    picture.save(dir.filePath(QStringLiteral("Sub/Alt.png"))));
        return dir.path();
    }();
    return path;
}

const QByteArray kHead = "\"Velto Skin/PLAYER\",\"Test\"\r\n1,0\r\n\"Main\",\"main.bmp\"\r\n"
                         "\"Resource\",\"res.png\"\r\n\"*\",\"\"\r\n1,0,20,24,32,0,0,0\r\n";

SkinDescription readBytes(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return readSkin(buffer, skinFolder());
}

SkinDescription readBody(const QByteArray &body)
{
    return readBytes(kHead + body);
}

const QByteArray kLabel = "L1,0,0,10,10,0,0,0,8,\"Arial\",\"tip\"\r\n";

} // namespace

// How fields split is the tokenizer's; here, that records read through it.
TEST(SkinReader, ReadsFieldsWhereverTheLineBreaksFall)
{
    const std::tuple<const char *, QByteArray, QString> cases[] = {
        {"one line", kLabel, "tip"},
        {"across lines", "L1,0,0\r\n10,10\r\n0,0,0\r\n8\r\nArial\r\n\r\ntip\r\n", "tip"},
        {"empty number fields", "L1,,,10,10,,,,8,Arial,tip", "tip"},
        {"Windows-1252", "L1,0,0,10,10,0,0,0,8,Arial,Caf\xe9 \x80\r\n", u"Café €"_qs},
        {"UTF-8", "L1,0,0,10,10,0,0,0,8,Arial,Caf\xc3\xa9\r\n", u"Café"_qs},
    };
    for (const auto &[what, body, tip] : cases) {
        SCOPED_TRACE(what);
        const SkinDescription d = readBody(body);
        ASSERT_EQ(d.labels.size(), 1);
        EXPECT_EQ(d.labels[0].toolTip, tip);
        EXPECT_EQ(d.labels[0].rect, QRect(0, 0, 10, 10));
        EXPECT_FALSE(d.errorFlag) << d.errorList.toStdString();
    }
}

TEST(SkinReader, HeaderDecidesAcceptanceTypesAndName)
{
    const std::tuple<QByteArray, bool, QStringList, QString> cases[] = {
        {"\"Velto Skin/PLAYER,CALCULATOR\",Two", true, {"PLAYER", "CALCULATOR"}, "Two"},
        {"\xEF\xBB\xBFVelto Skin,Bom", true, {}, "Bom"},
        {"\"Ne-Orb Skin\",\"Old\"", true, {"PLAYER"}, "Old"},
        {"\"velto skin/PLAYER\",\"x\"", false, {}, "x"},
    };
    for (const auto &[header, accepted, types, name] : cases) {
        const QByteArray bytes = header + "\r\n1,0\r\nMain,main.bmp\r\n*,\r\n0,0,1,2,3,0,0,0\r\n";
        SCOPED_TRACE(header.constData());
        const SkinDescription d = readBytes(bytes);
        EXPECT_EQ(std::tuple(d.accepted, d.displayName), std::tuple(accepted, name));
        EXPECT_EQ(d.messages, accepted ? QStringList() : QStringList{"Invalid Skin!"});
        if (accepted) {
            EXPECT_EQ(d.types, types);
        }
    }
}

TEST(SkinReader, BitmapSectionFindsFilesWhateverTheirCase)
{
    const QString folder = skinFolder();
    const std::tuple<QByteArray, QStringList, QString, QString> cases[] = {
        {"Main,main.bmp\r\nResource,res.png", {}, "main.bmp", "Res.PNG"},
        {"\"main\",\"MAIN.BMP\",\"RESOURCE\",\"sub\\alt.PNG\"", {}, "main.bmp", "Sub/Alt.png"},
        {"Main,gone.bmp\r\nResource,lost.png",
         {"Main bitmap not found: gone.bmp", "Resource bitmap not found: lost.png"},
         "",
         ""},
        {"Resource,res.png", {"Main bitmap not found: "}, "", "Res.PNG"},
    };
    for (const auto &[pairs, messages, mainPath, resourcePath] : cases) {
        const SkinDescription d = readBytes("Velto Skin,x\n1,0\n" + pairs +
                                            "\r\n\"*\",\"\"\r\n0,0,0,0,0,0,0,0\r\n" + kLabel);
        EXPECT_EQ(d.messages, messages) << pairs.constData();
        EXPECT_EQ(d.mainBitmapPath, mainPath.isEmpty() ? "" : folder + '/' + mainPath);
        EXPECT_EQ(d.resourceBitmapPath, resourcePath.isEmpty() ? "" : folder + '/' + resourcePath);
        EXPECT_EQ(d.labels.size(), 1) << "the elements still load";
    }
}

TEST(SkinReader, ListsOutOfRangeRecordsInOneMessage)
{
    // Each refused record is read in full: the label after it still loads.
    const std::tuple<QByteArray, int, int, std::function<qsizetype(const SkinDescription &)>>
        kinds[] = {
            {"A%1,0,0,0,0,5,5,1,100,0,~", 0, 4, [](auto &d) { return d.anims.size(); }},
            {"C%1,0,0,5,5,tip", 1, 3, [](auto &d) { return d.areas.size(); }},
            {"D%1,0,0,0,0,8,12,4,0,1,-2,~", 0, 13, [](auto &d) { return d.digitGroups.size(); }},
            {"I%1,0,0,5,5,255,0,0,1,~", 0, 22, [](auto &d) { return d.lights.size(); }},
            {"L%1,0,0,5,5,0,0,0,8,Arial,~", 0, 80, [](auto &d) { return d.labels.size() - 1; }},
            {"S%1,0,0,50,5,0,0,0,5,~", 0, 6, [](auto &d) { return d.sliders.size(); }},
            {"W%1,5,5", 0, 1, [](auto &d) { return qsizetype(d.pictureSize.has_value()); }},
            {"X%1,0,0,5,5,0,0,0,255,255,255,8,Arial,~", 1, 8,
             [](auto &d) { return d.lists.size(); }},
            {"B%1,0,0,5,5,0,0,name,~", 1, 32767, [](auto &d) { return d.buttons.size(); }},
        };
    for (const auto &[record, low, high, built] : kinds) {
        const QString format = QString::fromLatin1(record);
        for (int n : {low, high}) {
            const SkinDescription d = readBody(format.arg(n).toLatin1() + "\r\n" + kLabel);
            EXPECT_EQ(built(d), 1) << format.arg(n).toStdString();
            EXPECT_FALSE(d.errorFlag) << format.arg(n).toStdString();
        }
        QByteArray body;
        QString listed;
        for (int n : {record[0] == 'B' ? -1 : low - 1, high + 1}) {
            body += format.arg(n).toLatin1() + "\r\n";
            listed += ' ' + QString(record[0]) + QString::number(n);
        }
        const SkinDescription d = readBody(body + kLabel);
        EXPECT_EQ(built(d), 0) << body.constData();
        EXPECT_EQ(d.labels.size(), 1) << body.constData();
        EXPECT_EQ(d.messages, QStringList{kClosing + listed}) << body.constData();
    }
}

TEST(SkinReader, UnreadableRecordsAreListedAndTheGoodOnesLoad)
{
    const std::tuple<QByteArray, QString, qsizetype> cases[] = {
        {"I1,0,x\r\n" + kLabel, " I1", 1},
        {"B7,0,0,5,5,0,0,Play", " Play", 0},
        {"N99999999999\r\n" + kLabel, " N99999999999", 1},
    };
    for (const auto &[body, listed, labels] : cases) {
        SCOPED_TRACE(body.constData());
        const SkinDescription d = readBody(body);
        EXPECT_EQ(d.errorFlag, !listed.isEmpty());
        EXPECT_EQ(d.messages, listed.isEmpty() ? QStringList() : QStringList{kClosing + listed});
        EXPECT_EQ(d.labels.size(), labels);
        EXPECT_TRUE(d.lights.isEmpty() && d.buttons.isEmpty());
    }
}

TEST(SkinReader, ButtonsBeyond120AreRefusedOneMessageEach)
{
    const QByteArray button = "B12,0,0,10,10,120,36,Play,~\r\n";
    for (int count : {120, 122}) {
        const SkinDescription d = readBody(button.repeated(count) + kLabel);
        ASSERT_EQ(d.buttons.size(), 120) << count;
        EXPECT_EQ(std::pair(d.buttons.first().index, d.buttons.last().index), std::pair(1, 120));
        QStringList expected(count - 120, kTooMany);
        if (count > 120)
            expected << kClosing;
        EXPECT_EQ(d.messages, expected) << count;
        EXPECT_EQ(d.labels.size(), 1) << count;
    }
}

TEST(SkinReader, ButtonRecordsKeepCommandFaceAndKeyText)
{
    const SkinDescription d = readBody("B12,1,2,30,40,120,36,Play,Play it\r\n"
                                       "K5,5,6,7,8,-1,0,Link,~,\"skins/calc.skin\"\r\n"
                                       "B0,0,0,10,10,0,0,Zero,~\r\n"
                                       "K21,0,0,10,10,0,0,Far,~,far.skin\r\n"
                                       "B32767,0,0,0,10,0,0,Flat,~\r\n" +
                                       kLabel);
    ASSERT_EQ(d.buttons.size(), 2);
    const SkinButton &play = d.buttons[0];
    EXPECT_EQ(std::tuple(play.index, play.command, play.keyNumber, play.rect, play.faceText,
                         play.name, play.toolTip),
              std::tuple(1, 12, -1, QRect(1, 2, 30, 40), QString("120,36"), QString("Play"),
                         QString("Play it")));
    const SkinButton &link = d.buttons[1];
    EXPECT_EQ(std::tuple(link.index, link.command, link.keyNumber, link.faceText, link.toolTip),
              std::tuple(2, 1005, 5, QString("-1,0"), QString()));
    EXPECT_EQ(d.keyTable[5], "skins/calc.skin");
    EXPECT_EQ(d.keyTable.count(QString()), 20) << "K21 enters nothing";
    EXPECT_EQ(d.labels.size(), 1) << "B0 and K21 were read in full";
    EXPECT_EQ(d.messages, QStringList{kClosing}) << "K21 sets the flag without a list entry";
}

TEST(SkinReader, FontAndTipRules)
{
    const std::tuple<QByteArray, QByteArray, SkinFont, QString> cases[] = {
        {"-10,Arial:bi", "~no tip", {"Arial", 10, true, true, false}, ""},
        {"12,\"Courier New\"", "Play ~", {"Courier New", 12, false, false, false}, "Play ~"},
        {"9,\" Times :uB\"", "\"\"", {"Times", 9, true, false, true}, ""},
        {"9,:i", "~", {"Arial", 9, false, true, false}, ""},
        {"-32768,\"  \"", "t", {"  ", 32768, false, false, false}, "t"},
    };
    for (const auto &[sizeAndFont, tip, font, toolTip] : cases) {
        const SkinDescription d = readBody("T2,0,0,5,5,0,0,0," + sizeAndFont + ',' + tip);
        ASSERT_EQ(d.textFields.size(), 1) << sizeAndFont.constData();
        const SkinFont &f = d.textFields[0].font;
        EXPECT_EQ(
            std::tuple(f.name, f.size, f.bold, f.italic, f.underline, d.textFields[0].toolTip),
            std::tuple(font.name, font.size, font.bold, font.italic, font.underline, toolTip))
            << sizeAndFont.constData();
    }
}

// Anims, areas, lights, sliders and digit groups show their fields in the element tests.
TEST(SkinReader, ListFieldsLandAndEmptyElementsAreDropped)
{
    const SkinDescription d = readBody("C3,10,20,30,40,Web\r\n"
                                       "D13,1,2,3,4,8,12,4,0,1,-2,~\r\n"
                                       "X3,0,0,5,5,0,0,0,0,0,0,8,Arial,~\r\n"
                                       "X8,1,2,3,4,1,0,0,0,0,1,-9,Verdana:b,~\r\n"
                                       "L80,0,0,0,5,0,0,0,8,Arial,~\r\n"
                                       "C1,0,0,5,-1,~\r\nD0,0,0,0,0,0,12,4,0,1,-2,~\r\n");
    EXPECT_FALSE(d.errorFlag) << d.errorList.toStdString();
    EXPECT_EQ(d.areas.size(), 1) << "a zero-height area is dropped";
    EXPECT_EQ(d.digitGroups.size(), 1) << "a zero-width glyph is dropped";
    EXPECT_TRUE(d.labels.isEmpty()) << "a zero-width label is dropped";
    ASSERT_EQ(d.lists.size(), 1) << "X3 builds nothing";
    EXPECT_EQ(std::tuple(d.lists[0].number, d.lists[0].foreColour, d.lists[0].backColour,
                         d.lists[0].fontSize, d.lists[0].fontName),
              std::tuple(8, 1, 65536, -9, QString("Verdana:b")));
    EXPECT_EQ(std::tuple(d.hoverStyle, d.bitmapFormat), std::tuple(1, 1));
}

TEST(SkinReader, ConditionalSectionsCommentsAndUnknownCodesSkipWhatTheyShould)
{
    const std::tuple<QByteArray, QStringList, QString> cases[] = {
        // A missing picture sets the flag to 0; "?0" skips to its label.
        {"R0,gone.png\r\n?0,alt\r\nL1\r\n:alt\r\n" + kLabel, {"tip"}, ""},
        {"R0,main.bmp\r\n?0,alt\r\n" + kLabel + ":alt\r\n", {"tip"}, ""},
        // Unknown codes take one field each; nothing is read after E.
        {"; a, \"b\", L1,0\r\n/ Blue skin, by \"me\"\r\n  /second\r\n"
         "Q9,b1,:x,L1,0,0,10,10,0,0,0,8,Arial,tip\r\nE\r\n" +
             kLabel,
         {"tip"},
         "\r Blue skin, by \"me\"\rsecond"},
    };
    for (const auto &[body, labelTips, comment] : cases) {
        SCOPED_TRACE(body.constData());
        const SkinDescription d = readBody(body);
        QStringList tips;
        for (const SkinLabel &l : d.labels)
            tips << l.toolTip;
        EXPECT_EQ(tips, labelTips);
        EXPECT_FALSE(d.errorFlag);
        EXPECT_EQ(d.comment, comment);
    }
}

TEST(SkinReader, PictureStepsKeepFileOrder)
{
    const SkinDescription d =
        readBody("O0,255,0,255\r\nR1,sub\\ALT.png\r\nZ0,1,2,3,4,5,6\r\n"
                 "U\r\nR2,gone.bmp\r\nR0,text.png\r\nO1,1,2,3\r\nO,32767,0,32767\r\n");
    ASSERT_EQ(d.pictureSteps.size(), 8);
    using K = SkinPictureStep;
    QList<K::Kind> kinds;
    for (const SkinPictureStep &s : d.pictureSteps)
        kinds << s.kind;
    EXPECT_EQ(kinds,
              (QList<K::Kind>{K::TransparentColour, K::LoadMain, K::Copy, K::Commit, K::LoadMain,
                              K::LoadMain, K::TransparentColour, K::TransparentColour}));
    EXPECT_EQ(d.pictureSteps[0].colour, 255 + 65536 * 255);
    const SkinPictureStep &load = d.pictureSteps[1], &copy = d.pictureSteps[2];
    EXPECT_EQ(std::tuple(load.path, load.fileName, load.slot, load.loaded),
              std::tuple(skinFolder() + "/Sub/Alt.png", QString("sub\\ALT.png"), 1, true));
    EXPECT_EQ(std::tuple(copy.target, copy.source), std::tuple(QRect(1, 2, 3, 4), QPoint(5, 6)));
    EXPECT_EQ(std::tuple(d.pictureSteps[4].path, d.pictureSteps[4].loaded),
              std::tuple(QString(), false));
    EXPECT_FALSE(d.pictureSteps[5].loaded) << "a file that is no picture does not load";
    EXPECT_EQ(d.pictureSteps[6].colour, 1 + 256 * 2 + 65536 * 3);
    EXPECT_EQ(d.pictureSteps[7].colour, 32767 + 65536 * 32767) << "the largest sum that fits";
}

TEST(SkinReader, PolygonOutlineNeedsExactlyTheDeclaredPoints)
{
    const std::tuple<QByteArray, qsizetype, bool, bool, QList<qint32>> cases[] = {
        {"N4\r\nP0,0\r\nP10,0\r\nP10,10\r\nP0,10\r\n", 4, true, false, {}},
        {"N5\r\nP0,0\r\nP10,0\r\nP10,10\r\nP0,10\r\n", 4, false, false, {}},
        // Surplus points leave their y unread: "L1..." is the next code.
        {"P7,8\r\nN2\r\nP0,0\r\nP1,1\r\nP7,L1,0,0,10,10,0,0,0,8,Arial,tip\r\n", 2, true, false, {}},
        {"M6,2,3,100000\r\nP0,0,P9,0,P0,9,P20,20,P30,20,P20,30\r\n", 6, true, true, {3, 100000}},
    };
    for (const auto &[body, points, complete, multi, counts] : cases) {
        const SkinDescription d = readBody(body);
        EXPECT_EQ(std::tuple(d.outline.points.size(), d.outline.complete(), d.outline.multiPolygon,
                             d.outline.polygonPointCounts, d.errorFlag),
                  std::tuple(points, complete, multi, counts, false))
            << body.constData();
    }
    const SkinDescription surplus = readBody(std::get<0>(cases[2]));
    EXPECT_EQ(surplus.labels.size(), 1);
}

// Crashes on cut or random input are the fuzzer's to find (tests/fuzz).
TEST(SkinReader, DamagedHeaderListsItsSections)
{
    EXPECT_EQ(readBytes("").messages, QStringList{"Invalid Skin!"});
    EXPECT_EQ(readBytes("Velto Skin,x\r\n1,0\r\nMain,main.bmp").errorList, " Bitmaps Background");
    EXPECT_EQ(readBytes("Velto Skin,x\r\n1,zero\r\n*,\r\n0,0,0,0,0,0,0,0\r\n" + kLabel).errorList,
              " Bitmaps");
    const SkinDescription bad = readBytes(QByteArray(kHead).replace("1,0,20", "1,x,20") + kLabel);
    EXPECT_EQ(std::tuple(bad.errorList, bad.labels.size()), std::tuple(QString(" Background"), 1));
    EXPECT_EQ(bad.backgroundColour, 20 + 256 * 24 + 65536 * 32) << "the fields after stay in place";
}
