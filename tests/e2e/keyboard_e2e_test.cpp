#include "e2e.h"

#include "support/testmedia.h"

#include <QStandardPaths>

namespace {

// The pixels along a rectangle's edges, where the author outline is drawn.
QList<QRgb> edge(const QImage &screen, const QRect &r)
{
    QList<QRgb> pixels;
    for (int x = r.left(); x <= r.right(); ++x)
        pixels << screen.pixel(x, r.top()) << screen.pixel(x, r.bottom());
    for (int y = r.top(); y <= r.bottom(); ++y)
        pixels << screen.pixel(r.left(), y) << screen.pixel(r.right(), y);
    return pixels;
}

// The key of a button record: a one-character name is its own key,
// otherwise the character after the first "&".
QString buttonKey(const ShippedSkin &skin, const QString &code)
{
    const QString name = skin.records.value(code).value(7);
    if (name.size() == 1)
        return name.toLower();
    const qsizetype amp = name.indexOf(QLatin1Char('&'));
    return amp >= 0 ? name.mid(amp + 1, 1).toLower() : QString();
}

// A window manager on the test's X server, for the run in which it gives
// Velto the focus rather than a click.
bool startWindowManager(Companion &wm)
{
    wm.start(QStringLiteral("openbox"), {"--sm-disable"});
    // It manages the screen once it names itself on the root window.
    return wm.waitForStarted(5000) && waitUntil([] {
               QProcess xprop;
               xprop.start(QStringLiteral("xprop"), {"-root", "_NET_SUPPORTING_WM_CHECK"});
               return xprop.waitForFinished(2000) &&
                      xprop.readAllStandardOutput().contains("window id");
           });
}

class Keyboard : public E2e, public ::testing::WithParamInterface<bool>
{
protected:
    void SetUp() override
    {
        E2e::SetUp();
        if (!IsSkipped() && GetParam()) {
            if (QStandardPaths::findExecutable(QStringLiteral("openbox")).isEmpty())
                GTEST_SKIP() << "no openbox to manage the windows";
            ASSERT_TRUE(startWindowManager(wm));
        }
    }

    Companion wm;
};

} // namespace

TEST_P(Keyboard, KeysReachTheSkinWhateverChildHasTheFocusAndTextFieldsKeepTheirs)
{
    const bool managed = GetParam();
    const ShippedSkin player = shippedSkin(QStringLiteral("default.skin"));
    const ShippedSkin calculator = shippedSkin(QStringLiteral("calculator.skin"));
    const ShippedSkin notepad = shippedSkin(QStringLiteral("notepad.skin"));
    const QString toCalculator = buttonKey(player, QStringLiteral("K3"));
    const QString toNotepad = buttonKey(calculator, QStringLiteral("K4"));
    const QString toKaraoke = buttonKey(notepad, QStringLiteral("K2"));
    ASSERT_FALSE(toCalculator.isEmpty() || toNotepad.isEmpty() || toKaraoke.isEmpty())
        << "the shipped skins give their mode buttons keys";

    TestMedia media;
    const QString tone = media.sineWav(QStringLiteral("tone.wav"), 30000);
    VeltoProcess velto;
    const QString window = velto.startWindow({tone});
    ASSERT_FALSE(window.isEmpty());
    const auto title = [&window] { return xdotool({"getwindowname", window}); };
    const auto origin = [&window] { return windowGeometry(window).topLeft(); };
    ASSERT_TRUE(waitUntil([&] { return windowGeometry(window).size() == player.size; }));

    if (managed) {
        ASSERT_TRUE(waitUntil([&] { return xdotool({"getactivewindow"}) == window; }))
            << "the window manager gives the new window the focus";
    } else {
        // The playlist takes the focus when the click activates the window.
        focusPlaylist(window);
    }
    key(QStringLiteral("space"));
    EXPECT_TRUE(waitUntil([&] { return title().contains(QLatin1String("tone")); }))
        << "space plays; the title is " << title().toStdString();

    const QRect close = player.rect(QStringLiteral("B1")).translated(origin());
    const QList<QRgb> plain = edge(grabScreen(), close);
    key(QStringLiteral("grave"));
    EXPECT_TRUE(waitUntil([&] { return edge(grabScreen(), close) != plain; }))
        << "the grave accent outlines the buttons";
    key(QStringLiteral("Escape"));
    EXPECT_TRUE(waitUntil([&] { return edge(grabScreen(), close) == plain; }))
        << "Escape hides the outlines again";

    key(toCalculator);
    ASSERT_TRUE(waitUntil([&] { return windowGeometry(window).size() == calculator.size; }))
        << "the player skin's key " << toCalculator.toStdString() << " loads the calculator";
    key(toNotepad);
    ASSERT_TRUE(waitUntil([&] { return windowGeometry(window).size() == notepad.size; }));

    const QRect page = notepad.rect(QStringLiteral("X2")).translated(origin());
    click(page.center());
    const QImage blank = grabScreen().copy(page);
    // A mode key typed into the note is text, not a command.
    key(toKaraoke);
    EXPECT_TRUE(waitUntil([&] { return grabScreen().copy(page) != blank; }))
        << "the letter appears on the page";
    EXPECT_EQ(windowGeometry(window).size(), notepad.size) << "and no other skin was loaded";

    key(QStringLiteral("ctrl+q"));
    EXPECT_TRUE(velto.waitForExit());
}

INSTANTIATE_TEST_SUITE_P(E2e, Keyboard, ::testing::Values(false, true), [](const auto &info) {
    return info.param ? std::string("UnderAWindowManager") : std::string("WithoutAWindowManager");
});
