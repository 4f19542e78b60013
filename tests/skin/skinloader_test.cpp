#include "skin/pressedoverlay.h"
#include "skin/skinanimwidget.h"
#include "skin/skinbuttonwidget.h"
#include "skin/skinlabelwidget.h"
#include "skin/skinlistarea.h"
#include "skin/skinsliderwidget.h"
#include "skin/skintextarea.h"
#include "skin/skintextfield.h"

#include "skinrig.h"

#include <QApplication>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace {

const QString Shipped = QStringLiteral(VELTO_DATA_DIR "/skins/");

using Rig = SkinRig;

int visibleElements(QWidget &window)
{
    int n = 0;
    for (QWidget *w : window.findChildren<QWidget *>(Qt::FindDirectChildrenOnly))
        n += w->isVisibleTo(&window);
    return n;
}

// What a skin places on the window (lights aside, which follow the player).
int placedBy(const SkinDescription &skin)
{
    std::set<std::pair<char, int>> numbered;
    const auto add = [&](char kind, const auto &list) {
        for (const auto &e : list)
            numbered.insert({kind, e.number});
    };
    add('L', skin.labels);
    add('X', skin.lists);
    add('T', skin.textFields);
    add('S', skin.sliders);
    add('C', skin.areas);
    add('D', skin.digitGroups);
    add('A', skin.anims);
    return int(skin.buttons.size() + numbered.size());
}

} // namespace

TEST(SkinLoader, NewSkinHidesEveryElementOfTheOldOneAndSwitchingCreatesNothing)
{
    Rig rig;
    const QString player = Shipped + QStringLiteral("default.skin");
    const QString calculator = Shipped + QStringLiteral("calculator.skin");
    ASSERT_TRUE(rig.loader.LoadSkin(player));
    rig.window.show();
    ASSERT_GT(rig.loader.skin().lists.size(), 0);
    EXPECT_EQ(visibleElements(rig.window), placedBy(rig.loader.skin()));

    ASSERT_TRUE(rig.loader.LoadSkin(calculator));
    EXPECT_EQ(visibleElements(rig.window), placedBy(rig.loader.skin()))
        << "the player's playlist and sliders stay on the calculator";
    EXPECT_TRUE(rig.dialogs.messages.isEmpty())
        << rig.dialogs.messages.join(QLatin1Char('|')).toStdString();

    const qsizetype everything = rig.window.findChildren<QObject *>().size();
    for (int i = 0; i < 100; ++i)
        ASSERT_TRUE(rig.loader.LoadSkin(i % 2 ? calculator : player));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(rig.window.findChildren<QObject *>().size(), everything);
}

TEST(SkinLoader, RefusedSkinLeavesTheOldOneInPlace)
{
    Rig rig;
    ASSERT_TRUE(rig.load(QStringLiteral("B7,10,10,20,12,0,0,\"a\",\"~\"\nW,100,60\n")));
    EXPECT_TRUE(rig.loader.LoadSkin(rig.home.file(QStringLiteral("skin/TEST.Skin"))))
        << "a skin file is found whatever its case";
    const QString before = rig.loader.file();
    EXPECT_FALSE(rig.loader.LoadSkin(
        rig.home.write(QStringLiteral("skin/bad.skin"), "\"velto skin\",\"x\"\n1,0\n")));
    EXPECT_EQ(rig.dialogs.messages, QStringList{"Invalid Skin!"});
    EXPECT_EQ(rig.loader.file(), before);
    EXPECT_EQ(rig.window.size(), QSize(100, 60));
    EXPECT_TRUE(rig.loader.buttons().button(1) && rig.loader.buttons().button(1)->isVisible());
}

// Which cells a change repaints is a cost, measured by BM_SetDDAndRepaintItsCell.
TEST(SkinLoader, AHiddenDigitGroupShowsThePictureAndItsValueOnReturn)
{
    Rig rig;
    ASSERT_TRUE(rig.load(QStringLiteral("D1,20,30,0,0,6,8,2,0,0,-3,\"Track\"\n")));
    rig.loader.SetDD(1, 7);
    ASSERT_EQ(rig.loader.canvas().pixel(37, 37), resourcePixel(47, 7));
    rig.loader.setGroupVisible(1, false);
    EXPECT_EQ(rig.loader.canvas().pixel(37, 37), mainPixel(37, 37));
    rig.loader.SetDD(1, 8);
    EXPECT_EQ(rig.loader.canvas().pixel(37, 37), mainPixel(37, 37)) << "drawn while hidden";
    rig.loader.setGroupVisible(1, true);
    EXPECT_EQ(rig.loader.canvas().pixel(32, 30), resourcePixel(48, 0)) << "shows 8 on return";
}

TEST(SkinLoader, NextSkinShowsTheValuesAndContentsOfTheLast)
{
    Rig rig;
    ASSERT_TRUE(rig.load(QStringLiteral("D1,20,30,0,0,6,8,2,0,0,-3,\"~\"\n"
                                        "X1,0,0,50,40,1,1,1,2,2,2,8,\"\",\"~\"\n"
                                        "X2,50,0,50,40,1,1,1,2,2,2,8,\"\",\"~\"\n"
                                        "T1,0,60,50,12,1,1,1,8,\"\",\"~\"\n")));
    rig.loader.setLabel(8, QStringLiteral("set before the skin has label 8"));
    rig.loader.SetDD(1, 42);
    rig.loader.list(1)->addItem(QStringLiteral("first song"));
    rig.loader.notepad()->setPlainText(QStringLiteral("unsaved note"));
    rig.loader.textField(1)->setText(QStringLiteral("http://radio"));

    ASSERT_TRUE(rig.load(QStringLiteral("B5,0,0,10,10,0,0,\"a\",\"~\"\n")));
    rig.loader.slider(1)->setValue(0.25);
    ASSERT_TRUE(rig.load(QStringLiteral("L8,0,0,50,10,1,1,1,8,\"\",\"~\"\n"
                                        "S1,0,20,100,8,0,40,0,10,\"~\"\n"
                                        "D1,60,50,0,0,6,8,2,0,0,-3,\"~\"\n"
                                        "X1,0,0,80,40,1,1,1,2,2,2,8,\"\",\"~\"\n"
                                        "X2,50,0,50,40,1,1,1,2,2,2,8,\"\",\"~\"\n"
                                        "T1,0,60,50,12,1,1,1,8,\"\",\"~\"\n")));
    ASSERT_EQ(rig.loader.list(1)->count(), 1);
    EXPECT_EQ(rig.loader.list(1)->item(0)->text(), QStringLiteral("first song"));
    EXPECT_EQ(rig.loader.notepad()->toPlainText(), QStringLiteral("unsaved note"));
    EXPECT_EQ(rig.loader.textField(1)->text(), QStringLiteral("http://radio"));
    EXPECT_EQ(rig.loader.label(8), QStringLiteral("set before the skin has label 8"));
    EXPECT_TRUE(rig.loader.labelWidget(8)->isVisible());
    EXPECT_DOUBLE_EQ(rig.loader.slider(1)->value(), 0.25);
    // " 42" at the new place: the 4 in the second cell.
    EXPECT_EQ(rig.loader.canvas().pixel(66, 50), resourcePixel(24, 0));
    EXPECT_EQ(rig.loader.list(2), nullptr) << "list 2 is the notepad";
}

// The program hands the clock's stopwatch group "h:mm:ss.t"; a digit sheet
// would blank its leading zeros, so the shipped clock draws it from a letter
// sheet, and every character needs a glyph of its own there.
TEST(SkinLoader, ShippedClockDrawsEveryCharacterOfTheStopwatchTenths)
{
    Rig rig;
    ASSERT_TRUE(rig.loader.LoadSkin(Shipped + QStringLiteral("clock.skin")));
    const auto &groups = rig.loader.skin().digitGroups;
    const auto group = std::find_if(groups.begin(), groups.end(),
                                    [](const SkinDigitGroup &g) { return g.number == 6; });
    ASSERT_NE(group, groups.end());
    EXPECT_EQ(group->sheetType, 3);
    const QString shown = QStringLiteral("0:01:05.3");
    ASSERT_GE(std::abs(group->mode), shown.size());
    EXPECT_NE(group->mode, 5) << "mode 5 shows whole seconds";

    const auto cell = [&](int i) {
        return rig.loader.canvas().copy(group->pos.x() + i * (group->glyphWidth + group->gap),
                                        group->pos.y(), group->glyphWidth, group->glyphHeight);
    };
    rig.loader.SetDD(6, QStringLiteral(" "));
    const QImage blank = cell(0);
    rig.loader.SetDD(6, shown);
    std::map<QChar, QImage> glyphs;
    for (int i = 0; i < shown.size(); ++i) {
        SCOPED_TRACE(i);
        const QImage glyph = cell(i);
        QImage flat(glyph.size(), glyph.format());
        flat.fill(glyph.pixelColor(0, 0));
        EXPECT_NE(glyph, blank);
        EXPECT_NE(glyph, flat) << "a glyph, not an empty cell";
        const auto [known, fresh] = glyphs.insert({shown[i], glyph});
        EXPECT_EQ(known->second, glyph) << "the same character, the same glyph";
        for (const auto &[ch, other] : glyphs) {
            if (ch != shown[i]) {
                EXPECT_NE(other, glyph) << "'" << char(ch.unicode()) << "' looks like '"
                                        << char(shown[i].unicode()) << "'";
            }
        }
    }
}

// Scale 3 here; crisp pixels and the exact shape at scale 2 on a real screen are the
// end-to-end test's (ShapedWindow.ScalesByTheScreensWholeFactorCrispAndWithItsShapeExact).
TEST(SkinLoader, RescaledWindowHasWholePixelsAndTheBackgroundBeyondThePicture)
{
    const int scale = 3;
    Rig rig;
    // The window is wider and taller than the 120 x 80 picture.
    ASSERT_TRUE(rig.load(QStringLiteral("O,255,0,255\nW,160,90\n")));
    rig.loader.setScale(scale);
    EXPECT_EQ(rig.window.size(), QSize(160, 90) * scale);

    // Part of the window across the picture's edge: its pixels whole, the background beyond.
    QImage part(rig.window.size(), QImage::Format_RGB32);
    QPainter q(&part);
    const QRect dirty(QPoint(100, 60) * scale + QPoint(1, 1), rig.window.rect().bottomRight());
    rig.loader.paint(q, dirty);
    q.end();
    EXPECT_EQ(part.pixel(dirty.topLeft()),
              rig.loader.canvas().pixel(dirty.x() / scale, dirty.y() / scale));
    EXPECT_EQ(part.pixel(QPoint(120, 80) * scale - QPoint(1, 1)), qRgb(255, 0, 255));
    EXPECT_EQ(part.pixel(QPoint(150, 85) * scale), qRgb(10, 20, 30));
}

// Records past every bound load and take clicks; what the reader makes of
// them is the fuzz replay's. The window stays within what a screen can hold.
TEST(SkinLoader, HostileRecordsNeverCrashTheWindow)
{
    Rig rig;
    ASSERT_TRUE(rig.load(QStringLiteral("B1,32000,32000,32767,32767,-32768,-32768,\"a\",\"~\"\n"
                                        "L1,0,0,32767,32767,255,255,255,32767,\":biu\",\"~\"\n"
                                        "S1,0,0,30,8,127,63,0,-5,\"~\"\n"
                                        "A1,0,0,0,0,5,5,32767,1,5,\"~\"\n")));
    QTest::mouseClick(rig.loader.buttons().button(1), Qt::LeftButton, {}, {1, 1});
    QTest::mousePress(rig.loader.slider(1), Qt::LeftButton, {}, {2, 2});
    rig.loader.setScale(3);
    QApplication::processEvents();
    EXPECT_FALSE(rig.window.grab(QRect(0, 0, 64, 64)).toImage().isNull());

    rig.window.hide();
    ASSERT_TRUE(rig.loader.LoadSkin(rig.write(QStringLiteral("huge.skin"), "W,32767,32767\n")));
    EXPECT_TRUE(QRect(0, 0, 8192, 8192).contains(rig.window.rect()));
}
