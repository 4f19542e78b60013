#include "app/frmneorb.h"
#include "skin/skinsliderwidget.h"

#include "support/shippedwindow.h"

#include <QTest>
#include <gtest/gtest.h>

namespace {

// The shipped player skin's balance slider (3) and its caption, label 25. A
// double click centres it: SkinSlider's and VolumeControl's tests.
class VolumeSliders : public ::testing::Test, protected ShippedWindow
{
protected:
    VolumeSliders() { start(); }
};

TEST_F(VolumeSliders, TheBalanceSliderSetsTheCaption)
{
    EXPECT_EQ(window->skin().label(25), QStringLiteral("Centre"));
    SkinSliderWidget *balance = window->skin().slider(3);
    ASSERT_TRUE(balance->isVisibleTo(window));
    const int y = balance->height() / 2;
    QTest::mousePress(balance, Qt::LeftButton, {}, QPoint(0, y));
    QTest::mouseRelease(balance, Qt::LeftButton, {}, QPoint(0, y));
    EXPECT_EQ(window->skin().label(25), QStringLiteral("100% left"));
}

} // namespace
