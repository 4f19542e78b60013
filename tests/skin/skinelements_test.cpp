#include "skin/elementstyle.h"
#include "skin/pressedoverlay.h"
#include "skin/skinanimwidget.h"
#include "skin/skinareawidget.h"
#include "skin/skinbuttonwidget.h"
#include "skin/skinlabelwidget.h"
#include "skin/skinlightwidget.h"
#include "skin/skinsliderwidget.h"

#include "skinrig.h"

#include <QApplication>
#include <QFontMetrics>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

struct Rig : SkinRig
{
    using SkinRig::SkinRig;
    SkinButtonWidget &button(int index) { return *loader.buttons().button(index); }
    PressedOverlay &overlay() { return loader.buttons().overlay(); }
};

const QString Buttons = QStringLiteral("B12,10,10,20,12,5,7,\"play\",\"Play\"\n"
                                       "B15,40,10,20,12,30,20,\"next\",\"Next\"\n"
                                       "K3,70,10,16,12,60,0,\"calc\",\"~\",\"calculator.skin\"\n");

// The overlay shows the resource rectangle at face, each picture pixel scale x scale.
::testing::AssertionResult showsFace(PressedOverlay &overlay, QPoint face, QSize size, int scale)
{
    const QImage shown = overlay.grab().toImage().convertToFormat(QImage::Format_RGB32);
    if (shown.size() != size * scale)
        return ::testing::AssertionFailure()
               << "overlay is " << shown.width() << "x" << shown.height();
    for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x)
            if (shown.pixel(x, y) != resourcePixel(face.x() + x / scale, face.y() + y / scale))
                return ::testing::AssertionFailure() << "differs at " << x << "," << y;
    return ::testing::AssertionSuccess();
}

// A drag goes straight to the held widget; moves with no button held use QTest::mouseMove
// on the window, whose window system tells the elements they were entered and left.
void mouseMove(QWidget &widget, QPoint pos, Qt::MouseButtons held)
{
    QMouseEvent move(QEvent::MouseMove, pos, widget.mapToGlobal(pos), Qt::NoButton, held, {});
    QApplication::sendEvent(&widget, &move);
}

} // namespace

TEST(SkinButtons, PressShowsThePressedFaceOverTheButtonScaled)
{
    Rig rig(3);
    ASSERT_TRUE(rig.load(Buttons));
    SkinButtonWidget &next = rig.button(2);
    QTest::mousePress(&next, Qt::LeftButton);
    PressedOverlay &overlay = rig.overlay();
    ASSERT_TRUE(overlay.isVisible());
    EXPECT_EQ(overlay.geometry(), next.geometry());
    EXPECT_TRUE(showsFace(overlay, {30, 20}, {20, 12}, 3));
    EXPECT_TRUE(rig.commands.empty()) << "a command ran on press";
}

TEST(SkinButtons, CommandRunsOnReleaseOverTheButtonOrOverlayOnly)
{
    // Release is relative to the button's top-left corner, in window pixels; hover style 2
    // puts the overlay over the button before the press.
    const std::tuple<const char *, int, QPoint, std::vector<qint16>> cases[] = {
        {"release over the button", 0, {5, 5}, {15}},
        {"release at the button's last pixel", 0, {19, 11}, {15}},
        {"release just right of it", 0, {20, 5}, {}},
        {"release over the overlay", 2, {5, 5}, {15}},
        {"release away from the overlay", 2, {5, -1}, {}},
    };
    for (const auto &[what, hoverStyle, release, commands] : cases) {
        SCOPED_TRACE(what);
        Rig rig;
        ASSERT_TRUE(rig.load(Buttons, hoverStyle));
        SkinButtonWidget &next = rig.button(2);
        QWidget *receiver = &next;
        if (hoverStyle == 2) {
            QTest::mouseMove(&rig.window, next.geometry().center());
            receiver = &rig.overlay();
        }
        QTest::mousePress(receiver, Qt::LeftButton, {}, {5, 5});
        QTest::mouseRelease(receiver, Qt::LeftButton, {}, release);
        EXPECT_EQ(rig.commands, commands);
        EXPECT_FALSE(rig.overlay().isVisible()) << "the overlay stays after release";
    }
}

TEST(SkinButtons, HeldButtonLooksReleasedOutsideAndOtherMouseButtonsReachTheWindow)
{
    Rig rig;
    ASSERT_TRUE(rig.load(Buttons));
    SkinButtonWidget &play = rig.button(1);
    QTest::mousePress(&play, Qt::LeftButton, {}, {4, 4});
    mouseMove(play, {40, 4}, Qt::LeftButton);
    EXPECT_EQ(std::pair(rig.overlay().isVisible(), rig.overlay().pressedLook()),
              std::pair(true, false));
    mouseMove(play, {4, 4}, Qt::LeftButton);
    EXPECT_TRUE(rig.overlay().pressedLook());
    QTest::mouseRelease(&play, Qt::LeftButton, {}, {4, 4});
    EXPECT_EQ(rig.commands, std::vector<qint16>{12});

    // Other mouse buttons are the window's.
    QTest::mouseClick(&play, Qt::RightButton);
    EXPECT_EQ(rig.window.presses, std::vector<Qt::MouseButton>{Qt::RightButton});
    EXPECT_FALSE(rig.overlay().isVisible());
    EXPECT_EQ(rig.commands, std::vector<qint16>{12});
}

// Style 1 borders the button under the mouse, style 2 shows it pressed; neither runs it.
TEST(SkinButtons, HoverStylesMarkOnlyTheButtonUnderTheMouse)
{
    for (const int style : {0, 1, 2, 3}) {
        SCOPED_TRACE(style);
        Rig rig;
        ASSERT_TRUE(rig.load(Buttons, style));
        SkinButtonWidget &play = rig.button(1), &next = rig.button(2);
        PressedOverlay &overlay = rig.overlay();
        QTest::mouseMove(&rig.window, {5, 60});
        QTest::mouseMove(&rig.window, play.geometry().center());
        QTest::mouseMove(&rig.window, next.geometry().center());
        // Moving on within the button: the overlay covering it must not end the hover.
        QTest::mouseMove(&rig.window, next.geometry().center() + QPoint(1, 1));
        EXPECT_EQ(std::tuple(next.hoverBorder(), play.hoverBorder(), overlay.isVisible()),
                  std::tuple(style == 1, false, style == 2));
        if (style == 2) {
            EXPECT_EQ(std::pair(overlay.geometry(), overlay.index()),
                      std::pair(next.geometry(), 2));
        }

        QTest::mouseMove(&rig.window, {5, 60});
        EXPECT_FALSE(next.hoverBorder() || overlay.isVisible()) << "left after the mouse went";
        EXPECT_TRUE(rig.commands.empty());
    }
}

TEST(SkinButtons, CommandThatLoadsAnotherSkinReusesTheButtonSafely)
{
    Rig rig;
    ASSERT_TRUE(rig.load(Buttons));
    const QString other = rig.write(QStringLiteral("other.skin"),
                                    QStringLiteral("B99,0,50,30,20,0,0,\"x\",\"Other\"\n"));
    QObject::connect(&rig.loader, &SkinLoader::command, [&](qint16 cmd) {
        if (cmd == 1003)
            rig.loader.LoadSkin(other);
    });
    SkinButtonWidget &calc = rig.button(3);
    QTest::mouseClick(&calc, Qt::LeftButton);
    EXPECT_EQ(rig.commands, std::vector<qint16>{1003});
    ASSERT_NE(rig.loader.buttons().button(1), nullptr);
    EXPECT_EQ(rig.loader.buttons().button(1)->button().command, 99);
    EXPECT_EQ(rig.loader.buttons().button(2), nullptr);
    EXPECT_FALSE(rig.overlay().isVisible());
}

TEST(SkinSlider, DragMovesTheKnobAlongItsTrack)
{
    // Track 60 long, knob 10: the knob's left edge travels 0 to 50.
    // Press and move are in picture pixels along the slider.
    const std::tuple<const char *, int, bool, QPoint, QPoint, double> cases[] = {
        {"held by the knob, past the start", 1, false, {30, 4}, {-20, 4}, 0.0},
        {"held by the knob's edge, moved 10", 1, false, {26, 4}, {36, 4}, 0.7},
        {"pressed on the track: the knob centres there", 1, false, {10, 4}, {10, 4}, 0.1},
        {"at scale 2", 2, false, {30, 4}, {40, 4}, 0.7},
        {"upright: the top is the maximum", 1, true, {4, 30}, {4, 5}, 1.0},
    };
    for (const auto &[what, scale, vertical, press, move, value] : cases) {
        SCOPED_TRACE(what);
        Rig rig(scale);
        ASSERT_TRUE(rig.load(vertical ? QStringLiteral("S2,20,10,8,60,0,40,1,10,\"Volume\"\n")
                                      : QStringLiteral("S2,20,40,60,8,0,40,0,10,\"Volume\"\n")));
        SkinSliderWidget *slider = rig.loader.slider(2);
        ASSERT_TRUE(slider && slider->isVisible());
        QSignalSpy changed(&rig.loader, &SkinLoader::sliderChanged);
        QSignalSpy released(&rig.loader, &SkinLoader::sliderReleased);
        EXPECT_DOUBLE_EQ(slider->value(), 0.5) << "a new slider sits in the middle";

        QTest::mousePress(slider, Qt::LeftButton, {}, press * scale);
        mouseMove(*slider, move * scale, Qt::LeftButton);
        QTest::mouseRelease(slider, Qt::LeftButton, {}, move * scale);
        EXPECT_NEAR(slider->value(), value, 1e-9);
        EXPECT_FALSE(slider->dragging());
        ASSERT_FALSE(changed.isEmpty());
        EXPECT_EQ(std::pair(changed.last().at(0).toInt(), released.size()),
                  std::pair(2, qsizetype(1)));
        EXPECT_NEAR(changed.last().at(1).toDouble(), value, 1e-9);

        // The knob's picture is drawn where the value puts it.
        const int along = int(std::lround((vertical ? 1 - value : value) * 50));
        const QPoint knob = vertical ? QPoint(20, 10 + along) : QPoint(20 + along, 40);
        EXPECT_EQ(rig.shot().pixel(knob * scale), resourcePixel(0, 40));
    }
}

TEST(SkinSlider, DoubleClickCentresOnlySlidersThreeAndFive)
{
    for (int number = 0; number <= 6; ++number) {
        Rig rig;
        ASSERT_TRUE(rig.load(QStringLiteral("S%1,20,40,60,8,0,40,0,10,\"~\"\n").arg(number)));
        SkinSliderWidget *slider = rig.loader.slider(number);
        slider->setValue(0.2);
        QSignalSpy changed(&rig.loader, &SkinLoader::sliderChanged);
        QTest::mouseDClick(slider, Qt::LeftButton, {}, {55, 4});
        const bool centres = number == 3 || number == 5;
        EXPECT_EQ(std::tuple(slider->value(), changed.size()),
                  std::tuple(centres ? 0.5 : 0.2, centres ? 1 : 0))
            << "slider " << number;
    }
}

TEST(SkinLabel, DrawsItsTextInItsFontAtItsSkinSizeInsideItsRectangle)
{
    // How the fields are read is the reader's; here the widget must apply them.
    Rig rig(2);
    ASSERT_TRUE(rig.load(QStringLiteral("L1,0,0,90,20,1,2,3,-9,\"DejaVu Sans:iu\",\"~\"\n"
                                        "L7,10,40,100,20,255,255,0,12,\"No Such Font\",\"~\"\n")));
    const QFont f = rig.loader.labelWidget(1)->font();
    EXPECT_EQ(std::tuple(f.family(), f.pointSize(), f.bold(), f.italic(), f.underline()),
              std::tuple(QStringLiteral("DejaVu Sans"), 18, false, true, true));

    // A font the machine lacks still draws, in the label's colour, the skin around the text.
    rig.loader.setLabel(7, QStringLiteral("WWWW MMMM WWWW MMMM WWWW MMMM WWWW"));
    const QImage shot = rig.shot();
    const QImage label = shot.copy(20, 80, 200, 40);
    const auto *pixels = reinterpret_cast<const QRgb *>(label.constBits());
    EXPECT_GT(std::count(pixels, pixels + label.width() * label.height(), qRgb(255, 255, 0)), 20);
    EXPECT_EQ(shot.pixel(20, 80), mainPixel(10, 40));

    // The text's height in pixels on a screen of that DPI, at the skin's scale.
    const auto height = [](int dpi, int scale) {
        QImage screen(1, 1, QImage::Format_RGB32);
        screen.setDotsPerMeterX(qRound(dpi / 0.0254));
        screen.setDotsPerMeterY(qRound(dpi / 0.0254));
        return QFontMetrics(fontFromSkin({QStringLiteral("DejaVu Sans"), 12}, scale, dpi), &screen)
            .height();
    };
    EXPECT_NEAR(height(96, 2), 2 * height(96, 1), 2);
    EXPECT_NEAR(height(288, 2), height(96, 2), 1);
}

TEST(SkinLights, FollowTheLightsViewInEverySkin)
{
    Rig rig;
    const QString lights = QStringLiteral("I2,10,40,8,8,255,0,0,0,\"Play\"\n"
                                          "I3,30,40,8,8,0,255,0,0,\"~\"\n"
                                          "I0,50,40,8,8,0,0,255,0,\"~\"\n"
                                          "L26,60,60,50,14,255,255,255,8,\"\",\"~\"\n");
    ASSERT_TRUE(rig.load(lights));
    LightsView view;
    view.visible[2] = true;
    view.visible[0] = true; // light 0 has no switch behind it: never lit
    view.label26 = QStringLiteral("CD");
    rig.loader.ShowLights(view);
    QImage shot = rig.shot();
    EXPECT_EQ(shot.pixel(14, 44), qRgb(255, 0, 0));
    EXPECT_EQ(shot.pixel(34, 44), mainPixel(34, 44));
    EXPECT_EQ(shot.pixel(54, 44), mainPixel(54, 44));
    EXPECT_EQ(rig.loader.label(26), QStringLiteral("CD"));

    // A new skin takes the lights as they are now, wherever it puts them.
    view.visible[3] = true;
    rig.loader.ShowLights(view);
    ASSERT_TRUE(rig.load(QStringLiteral("I3,70,10,8,8,0,255,0,0,\"~\"\n")));
    shot = rig.shot();
    EXPECT_EQ(shot.pixel(74, 14), qRgb(0, 255, 0));
    EXPECT_EQ(shot.pixel(34, 44), mainPixel(34, 44));
    EXPECT_EQ(rig.loader.light(2), nullptr);
}

TEST(SkinAnim, FramesStackInTheirDirectionAndRunOnlyWhileStarted)
{
    Rig rig;
    ASSERT_TRUE(rig.load(QStringLiteral("A1,10,40,0,20,8,6,4,20,1,\"~\"\n"
                                        "A2,30,40,0,20,8,6,1,20,0,\"~\"\n")));
    SkinAnimWidget *anim = rig.loader.anim(1);
    EXPECT_EQ(anim->frameRect(3), QRect(0, 38, 8, 6)) << "direction 1 stacks frames downwards";
    EXPECT_EQ(rig.loader.anim(2)->frameRect(2), QRect(16, 20, 8, 6));
    EXPECT_FALSE(anim->ticking()) << "not started";
    EXPECT_EQ(rig.shot().pixel(10, 40), resourcePixel(0, 20));

    anim->start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return anim->frame() != 0; }, 20000));

    anim->stop();
    EXPECT_FALSE(anim->ticking());
}

TEST(SkinAreas, CoverPictureAndDoubleClickReachTheirUsers)
{
    Rig rig;
    ASSERT_TRUE(rig.load(QStringLiteral("C1,60,20,40,30,\"Cover\"\nC2,0,50,40,30,\"~\"\n")));
    SkinAreaWidget *cover = rig.loader.area(1);
    ASSERT_TRUE(cover && cover->isVisible());
    QImage picture(4, 4, QImage::Format_RGB32);
    picture.fill(qRgb(1, 200, 3));
    cover->setPicture(picture);
    EXPECT_EQ(rig.shot().pixel(80, 35), qRgb(1, 200, 3));

    QSignalSpy doubleClicked(&rig.loader, &SkinLoader::areaDoubleClicked);
    QTest::mouseDClick(cover, Qt::LeftButton);
    ASSERT_EQ(doubleClicked.size(), 1);
    EXPECT_EQ(doubleClicked.first().at(0).toInt(), 1);

    auto *video = new QWidget;
    rig.loader.area(2)->setContent(video);
    ASSERT_TRUE(rig.load(QStringLiteral("C2,10,10,60,40,\"~\"\n")));
    EXPECT_FALSE(cover->isVisible());
    EXPECT_EQ(video->geometry(), QRect(0, 0, 60, 40)) << "the content follows its area";
}
