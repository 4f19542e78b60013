#include "skin/skinbuttonwidget.h"
#include "skin/skindigitcell.h"
#include "skin/skinlabelwidget.h"
#include "skin/skinlightwidget.h"
#include "skin/skinlistarea.h"
#include "skin/skinsliderwidget.h"

#include "skinrig.h"

#include <QAccessible>
#include <QSignalSpy>

namespace {

QString name(QObject *object)
{
    QAccessibleInterface *a = QAccessible::queryAccessibleInterface(object);
    return a ? a->text(QAccessible::Name) : QStringLiteral("(none)");
}

QString value(QObject *object)
{
    QAccessibleInterface *a = QAccessible::queryAccessibleInterface(object);
    return a ? a->text(QAccessible::Value) : QStringLiteral("(none)");
}

QAccessible::Role role(QObject *object)
{
    QAccessibleInterface *a = QAccessible::queryAccessibleInterface(object);
    return a ? a->role() : QAccessible::NoRole;
}

// The shipped player skin on a window, as a screen reader meets it.
class SkinAccessible : public ::testing::Test
{
protected:
    SkinAccessible()
    {
        window.loader = &loader;
        QObject::connect(&loader, &SkinLoader::command,
                         [this](qint16 cmd) { commands.push_back(cmd); });
        EXPECT_TRUE(loader.LoadSkin(QStringLiteral(VELTO_DATA_DIR "/skins/default.skin")));
        window.show();
    }

    TempHome home;
    FakeDialogs dialogs;
    FakeClock clock;
    SkinWindow window;
    SkinLoader loader{window, dialogs, clock};
    std::vector<qint16> commands;
};

TEST_F(SkinAccessible, EveryButtonIsNamedByItsTipAndPressesLikeAClick)
{
    const QList<SkinButton> &buttons = loader.skin().buttons;
    ASSERT_GE(buttons.size(), 20);
    for (const SkinButton &b : buttons) {
        SkinButtonWidget *w = loader.buttons().button(b.index);
        ASSERT_TRUE(w) << b.index;
        EXPECT_EQ(role(w), QAccessible::Button) << b.index;
        EXPECT_EQ(name(w), b.toolTip.isEmpty() ? b.name : b.toolTip) << b.index;
        QAccessibleInterface *a = QAccessible::queryAccessibleInterface(w);
        ASSERT_TRUE(a->actionInterface());
        EXPECT_EQ(a->actionInterface()->actionNames(),
                  QStringList{QAccessibleActionInterface::pressAction()});
    }
    // The window lists them among its children, as AT-SPI walks it.
    QAccessibleInterface *top = QAccessible::queryAccessibleInterface(&window);
    int found = 0;
    for (int i = 0; i < top->childCount(); ++i)
        found += top->child(i)->role() == QAccessible::Button;
    EXPECT_EQ(found, buttons.size());

    const auto playRecord = std::find_if(buttons.begin(), buttons.end(),
                                         [](const SkinButton &b) { return b.command == 12; });
    ASSERT_NE(playRecord, buttons.end());
    SkinButtonWidget *play = loader.buttons().button(playRecord->index);
    EXPECT_EQ(name(play), QStringLiteral("Play"));
    QAccessible::queryAccessibleInterface(play)->actionInterface()->doAction(
        QAccessibleActionInterface::pressAction());
    EXPECT_EQ(commands, std::vector<qint16>{12});
}

TEST_F(SkinAccessible, LabelsAndDigitGroupsReadAsTheirText)
{
    struct Case
    {
        const char *what;
        std::function<void()> set;
        QObject *element;
        QString name, value;
    };
    const QList<Case> cases = {
        {"a label with a tip", [&] { loader.setLabel(4, QStringLiteral("MP3")); },
         loader.labelWidget(4), QStringLiteral("File type"), QStringLiteral("MP3")},
        {"the title", [&] { loader.setLabel(1, QStringLiteral("Song")); }, loader.labelWidget(1),
         QStringLiteral("Title"), QStringLiteral("Song")},
        // The skin shows the first digit of the hours blank, as drawn.
        {"playing time", [&] { loader.SetDD(0, 125); }, loader.digitCell(0),
         QStringLiteral("Playing time"), QStringLiteral("0:02:05")},
        {"playing time past an hour", [&] { loader.SetDD(0, 3725); }, loader.digitCell(0),
         QStringLiteral("Playing time"), QStringLiteral("1:02:05")},
        {"track number, its first zero blank", [&] { loader.SetDD(1, 7); }, loader.digitCell(1),
         QStringLiteral("Track number"), QStringLiteral("07")},
        {"name in character cells", [&] { loader.SetDD(2, QStringLiteral("Night Drive")); },
         loader.digitCell(2), QStringLiteral("Now playing"), QStringLiteral("Night Drive")},
        {"bit rate with a decimal", [&] { loader.SetDD(4, 128); }, loader.digitCell(4),
         QStringLiteral("Bit rate"), QStringLiteral("128")},
    };
    for (const Case &c : cases) {
        ASSERT_TRUE(c.element) << c.what;
        c.set();
        EXPECT_EQ(role(c.element), QAccessible::StaticText) << c.what;
        EXPECT_EQ(name(c.element), c.name) << c.what;
        EXPECT_EQ(value(c.element), c.value) << c.what;
        QAccessibleTextInterface *text =
            QAccessible::queryAccessibleInterface(c.element)->textInterface();
        ASSERT_TRUE(text) << c.what;
        EXPECT_EQ(text->text(0, text->characterCount()), c.value) << c.what;
    }
    // A label without a tip is named by its text.
    SkinLabelWidget *bare = loader.labelWidget(9);
    loader.setLabel(9, QStringLiteral("PM"));
    EXPECT_EQ(name(bare), QStringLiteral("PM"));
}

TEST_F(SkinAccessible, SlidersListsAreasAndLightsSayWhatTheyAre)
{
    SkinSliderWidget *position = loader.slider(1);
    loader.setSliderShown(1, true);
    loader.setSliderValue(1, 0.25);
    EXPECT_EQ(role(position), QAccessible::Slider);
    EXPECT_EQ(name(position), QStringLiteral("Position"));
    EXPECT_EQ(value(position), QStringLiteral("25%"));
    QAccessibleValueInterface *v =
        QAccessible::queryAccessibleInterface(position)->valueInterface();
    ASSERT_TRUE(v);
    EXPECT_EQ(v->currentValue().toDouble(), 25.0);
    EXPECT_EQ(v->maximumValue().toDouble(), 100.0);
    // Set from outside, the slider acts as if the user let go of it there.
    QSignalSpy released(&loader, &SkinLoader::sliderReleased);
    v->setCurrentValue(50.0);
    ASSERT_EQ(released.size(), 1);
    EXPECT_EQ(released.first().value(1).toDouble(), 0.5);
    v->setCurrentValue(QStringLiteral("loud"));
    EXPECT_EQ(released.size(), 1);

    SkinListArea *playlist = loader.list(1);
    EXPECT_EQ(role(playlist), QAccessible::List);
    EXPECT_EQ(name(playlist), QStringLiteral("Playlist"));
    // A list the skin does not place still has a name.
    EXPECT_EQ(name(loader.list(4)), QStringLiteral("Lyrics"));
    EXPECT_EQ(name(loader.area(1)), QStringLiteral("Album cover: double-click to choose one"));

    LightsView lit;
    lit.visible[2] = true;
    loader.ShowLights(lit);
    QAccessibleInterface *play = QAccessible::queryAccessibleInterface(loader.light(2));
    EXPECT_EQ(play->role(), QAccessible::CheckBox);
    EXPECT_EQ(play->text(QAccessible::Name), QStringLiteral("PLAY"));
    EXPECT_EQ(play->text(QAccessible::Value), QStringLiteral("on"));
    EXPECT_TRUE(play->state().checked);
    EXPECT_TRUE(play->state().readOnly);
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(loader.light(3))->state().checked);
}

} // namespace

// A screen reader's caret and selection stay within the text shown, and its
// pointer finds the character under it.
TEST_F(SkinAccessible, ReadersWalkAndSelectTheTextOfADigitGroup)
{
    loader.SetDD(1, 7);
    QAccessibleInterface *group = QAccessible::queryAccessibleInterface(loader.digitCell(1));
    QAccessibleTextInterface *text = group->textInterface();
    ASSERT_TRUE(text);
    ASSERT_EQ(text->characterCount(), 2);

    text->setCursorPosition(9);
    EXPECT_EQ(text->cursorPosition(), 2);
    text->setSelection(0, 5, 0);
    int start = -1, end = -1;
    text->selection(0, &start, &end);
    EXPECT_EQ(std::pair(start, end), std::pair(0, 2)) << "ends ordered and kept in the text";
    text->removeSelection(0);
    EXPECT_EQ(text->selectionCount(), 0);

    const QRect first = text->characterRect(0), second = text->characterRect(1);
    EXPECT_TRUE(group->rect().contains(first) && group->rect().contains(second));
    EXPECT_EQ(first.right() + 1, second.left());
    EXPECT_EQ(text->offsetAtPoint(second.center()), 1);
    EXPECT_EQ(text->offsetAtPoint(group->rect().topLeft() - QPoint(1, 1)), -1);
    EXPECT_TRUE(text->characterRect(2).isNull());
}
