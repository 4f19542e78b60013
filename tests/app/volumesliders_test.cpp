#include "app/frmneorb.h"
#include "skin/skinlistarea.h"
#include "skin/skinsliderwidget.h"

#include "support/shippedwindow.h"

#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace {

// The real main window on the shipped player skin: its volume slider (2),
// balance slider (3) with label 25, the wheel and the volume keys.
class VolumeSliders : public ::testing::Test, protected ShippedWindow
{
protected:
    VolumeSliders() { start(); }

    double knob(int slider) { return window->skin().slider(slider)->value(); }

    void wheel(QPoint at, int delta)
    {
        QWheelEvent event(at, window->mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(window, &event);
    }
};

TEST_F(VolumeSliders, BalanceSliderAndDoubleClickSetTheCaptionTheWheelAndKeysTheVolume)
{
    EXPECT_EQ(window->skin().label(25), QStringLiteral("Centre"));
    SkinSliderWidget *balance = window->skin().slider(3);
    ASSERT_TRUE(balance->isVisibleTo(window));
    const int y = balance->height() / 2;
    QTest::mousePress(balance, Qt::LeftButton, {}, QPoint(0, y));
    QTest::mouseRelease(balance, Qt::LeftButton, {}, QPoint(0, y));
    EXPECT_EQ(window->skin().label(25), QStringLiteral("100% left"));
    QTest::mouseDClick(balance, Qt::LeftButton, {}, QPoint(0, y));
    EXPECT_EQ(window->skin().label(25), QStringLiteral("Centre"));
    EXPECT_EQ(knob(3), 0.5);

    // The wheel outside the list and the keys move the volume knob; the steps
    // and what the next run starts at are VolumeControl's.
    EXPECT_NEAR(knob(2), 1.0, 0.001) << "a fresh output is at full";
    wheel(QPoint(4, 4), -120); // over the skin's picture, no element
    EXPECT_NEAR(knob(2), 0.95, 1e-6);
    // The skin's volume buttons carry the keys.
    QTest::keyClick(window, '-');
    EXPECT_NEAR(knob(2), 0.90, 1e-6);
    QTest::keyClick(window, '+');
    EXPECT_NEAR(knob(2), 0.95, 1e-6);

    SkinListArea *list = window->skin().list(1);
    ASSERT_TRUE(list && list->isVisibleTo(window));
    wheel(list->geometry().center(), -120);
    EXPECT_NEAR(knob(2), 0.95, 1e-6) << "the wheel over the list scrolls it instead";
}

} // namespace
