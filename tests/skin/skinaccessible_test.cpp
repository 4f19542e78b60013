#include "skin/skinbuttonwidget.h"
#include "skin/skinlabelwidget.h"
#include "skin/skinlistarea.h"
#include "skin/skinsliderwidget.h"

#include "skinrig.h"

#include <QAccessible>
#include <QSignalSpy>

namespace {

QString name(QObject *object, QAccessible::Text text = QAccessible::Name)
{
    QAccessibleInterface *a = QAccessible::queryAccessibleInterface(object);
    return a ? a->text(text) : QStringLiteral("(none)");
}

QAccessible::Role role(QObject *object)
{
    QAccessibleInterface *a = QAccessible::queryAccessibleInterface(object);
    return a ? a->role() : QAccessible::NoRole;
}

// The shipped player skin on a window, as a screen reader meets it.
class SkinAccessible : public ::testing::Test, protected SkinRig
{
protected:
    SkinAccessible()
    {
        EXPECT_TRUE(loader.LoadSkin(QStringLiteral(VELTO_DATA_DIR "/skins/default.skin")));
        window.show();
    }
};

// Pressing one, and the window listing them, is what the AT-SPI end-to-end test does.
TEST_F(SkinAccessible, EveryButtonIsNamedByItsTip)
{
    const QList<SkinButton> &buttons = loader.skin().buttons;
    ASSERT_GE(buttons.size(), 20);
    for (const SkinButton &b : buttons) {
        SkinButtonWidget *w = loader.buttons().button(b.index);
        ASSERT_TRUE(w) << b.index;
        EXPECT_EQ(role(w), QAccessible::Button) << b.index;
        EXPECT_EQ(name(w), b.toolTip.isEmpty() ? b.name : b.toolTip) << b.index;
    }
}

// A digit group reads as drawn (SegmentDisplayTest.TextReadsWhatTheGroupShows),
// and over the bus in AtSpi.ScreenReaderReadsTitleAndTime...
TEST_F(SkinAccessible, LabelsReadAsTheirWholeText)
{
    SkinLabelWidget *title = loader.labelWidget(1);
    ASSERT_TRUE(title);
    // The whole text, not what fits the label's width.
    loader.setLabel(1, QString(300, u'W'));
    EXPECT_EQ(std::tuple(role(title), name(title), name(title, QAccessible::Value)),
              std::tuple(QAccessible::StaticText, QStringLiteral("Title"), QString(300, u'W')));
    QAccessibleTextInterface *text = QAccessible::queryAccessibleInterface(title)->textInterface();
    ASSERT_TRUE(text);
    EXPECT_EQ(text->text(0, text->characterCount()), QString(300, u'W'));
    // A label without a tip is named by its text.
    SkinLabelWidget *bare = loader.labelWidget(9);
    loader.setLabel(9, QStringLiteral("PM"));
    EXPECT_EQ(name(bare), QStringLiteral("PM"));
}

TEST_F(SkinAccessible, SlidersAndListsSayWhatTheyAre)
{
    SkinSliderWidget *position = loader.slider(1);
    loader.setSliderShown(1, true);
    loader.setSliderValue(1, 0.25);
    EXPECT_EQ(std::tuple(role(position), name(position), name(position, QAccessible::Value)),
              std::tuple(QAccessible::Slider, QStringLiteral("Position"), QStringLiteral("25%")));
    QAccessibleValueInterface *v =
        QAccessible::queryAccessibleInterface(position)->valueInterface();
    ASSERT_TRUE(v);
    EXPECT_EQ(std::pair(v->currentValue().toDouble(), v->maximumValue().toDouble()),
              std::pair(25.0, 100.0));
    // Set from outside, the slider acts as if the user let go of it there.
    QSignalSpy released(&loader, &SkinLoader::sliderReleased);
    v->setCurrentValue(50.0);
    ASSERT_EQ(released.size(), 1);
    EXPECT_EQ(released.first().value(1).toDouble(), 0.5);

    EXPECT_EQ(std::pair(role(loader.list(1)), name(loader.list(1))),
              std::pair(QAccessible::List, QStringLiteral("Playlist")));
}

} // namespace
