#include "atspi.h"
#include "e2e.h"

#include "support/pdftext.h"
#include "support/pseudoterminal.h"
#include "support/testmedia.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <gtest/gtest.h>

namespace {

void click(QPoint at)
{
    xdotool({"mousemove", QString::number(at.x()), QString::number(at.y()), "click", "1"});
}

void key(const QString &name)
{
    xdotool({"key", name});
}

// The settings Velto starts with, written as the preferences would.
void writeSettings(const VeltoProcess &velto, const QList<QPair<QString, QString>> &values)
{
    QDir().mkpath(velto.home(QStringLiteral("config/velto")));
    QSettings ini(velto.home(QStringLiteral("config/velto/velto.ini")), QSettings::IniFormat);
    for (const auto &[key, value] : values)
        ini.setValue(QStringLiteral("config/") + key, value);
}

// What the sign receives for a text, readable in a failure message.
std::string frame(const char *text)
{
    return std::string("<ID01><PA><CG>  ") + text + "   \r\n";
}

std::string received(PseudoTerminal &sign, size_t bytes, int timeoutMs = 10000)
{
    return sign.read(qsizetype(bytes), timeoutMs).toStdString();
}

class DeskTools : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (!haveDisplay())
            GTEST_SKIP() << "no X server (scripts/test starts Xvfb)";
    }

    // Starts Velto on a shipped skin; the window's origin on the screen.
    QPoint start(VeltoProcess &velto, const QString &skin,
                 QList<QPair<QString, QString>> settings = {}, const QStringList &args = {})
    {
        settings << QPair<QString, QString>(QStringLiteral("skin"), skin)
                 << QPair<QString, QString>(QStringLiteral("skinpath"),
                                            velto.home(QStringLiteral("data/velto/skins")));
        writeSettings(velto, settings);
        if (!velto.start(args))
            return {-1, -1};
        window = velto.waitForWindow();
        const QSize size = shippedSkin(skin).size;
        if (window.isEmpty() || !waitUntil([&] { return windowGeometry(window).size() == size; }))
            return {-1, -1};
        return windowGeometry(window).topLeft();
    }

    QString window;
};

} // namespace

// 1 + 2 x 3 = 9, left to right, clicked on the skin's buttons and read back
// from the display as a screen reader reads it.
TEST_F(DeskTools, CalculatorComputesWithItsButtonsAndKeys)
{
    SessionBus session;
    ASSERT_TRUE(session.isRunning()) << "dbus-daemon could not start";
    const ShippedSkin calculator = shippedSkin(QStringLiteral("calculator.skin"));
    ASSERT_FALSE(calculator.rect(QStringLiteral("L23")).isEmpty());

    VeltoProcess velto;
    velto.setEnvironment(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), session.address());
    velto.setEnvironment(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
    const QPoint origin = start(velto, QStringLiteral("calculator.skin"));
    ASSERT_GE(origin.x(), 0);

    AtSpi atspi(session);
    ASSERT_TRUE(atspi.isConnected()) << "no accessibility bus";
    std::optional<Accessible> app;
    ASSERT_TRUE(waitUntil([&] { return (app = atspi.application(velto.pid())).has_value(); }))
        << "Velto never joined the accessibility bus";
    const QRect displayRect = calculator.rect(QStringLiteral("L23")).translated(origin);
    std::optional<Accessible> display;
    ASSERT_TRUE(waitUntil([&] { return (display = atspi.findAt(*app, displayRect)).has_value(); }))
        << "no accessible object covers label 23";
    const auto shows = [&](const char *text) {
        return waitUntil([&] { return atspi.name(*display) == QLatin1String(text); });
    };
    EXPECT_TRUE(shows("0")) << atspi.name(*display).toStdString();

    for (const char *button : {"B41", "B51", "B42", "B53", "B43", "B55"})
        click(calculator.rect(QString::fromLatin1(button)).translated(origin).center());
    EXPECT_TRUE(shows("9")) << "1 + 2 x 3 = shows " << atspi.name(*display).toStdString();

    // The pointer rests on the window, so without a window manager it has the keys.
    key(QStringLiteral("BackSpace"));
    EXPECT_TRUE(shows("")) << atspi.name(*display).toStdString();
    xdotool({"type", "7"});
    EXPECT_TRUE(shows("7"));
    key(QStringLiteral("Delete"));
    EXPECT_TRUE(shows("0")) << "Delete clears the entry";
    xdotool({"type", "4*5"});
    key(QStringLiteral("Return"));
    EXPECT_TRUE(shows("20")) << "Return is =; shows " << atspi.name(*display).toStdString();
    xdotool({"type", "+"});
    key(QStringLiteral("Escape"));
    xdotool({"type", "1="});
    EXPECT_TRUE(shows("1")) << "Escape cleared everything, the pending + too";

    key(QStringLiteral("ctrl+q"));
    EXPECT_TRUE(velto.waitForExit());
}

TEST_F(DeskTools, NotepadPrintsToAPdfFileWithoutAPrinter)
{
    const ShippedSkin notepad = shippedSkin(QStringLiteral("notepad.skin"));
    VeltoProcess velto;
    const QPoint origin = start(velto, QStringLiteral("notepad.skin"));
    ASSERT_GE(origin.x(), 0);

    const QRect page = notepad.rect(QStringLiteral("X2")).translated(origin);
    click(page.center());
    const QImage blank = grabScreen().copy(page);
    xdotool({"type", "Shopping list"});
    key(QStringLiteral("Return"));
    xdotool({"type", "bread and milk"});
    ASSERT_TRUE(waitUntil([&] { return grabScreen().copy(page) != blank; }));

    click(notepad.rect(QStringLiteral("B79")).translated(origin).center());
    QString dialog;
    ASSERT_TRUE(waitUntil([&] {
        dialog = xdotool({"search", "--onlyvisible", "--name", "Print to PDF File"});
        return !dialog.isEmpty();
    })) << "no printer here: Velto asks for a PDF file";
    dialog = dialog.split('\n').last();
    const QString pdf = velto.home(QStringLiteral("shopping.pdf"));
    xdotool({"windowfocus", "--sync", dialog});
    const QRect box = windowGeometry(dialog);
    xdotool({"mousemove", QString::number(box.center().x()), QString::number(box.top() + 10)});
    xdotool({"type", pdf});
    key(QStringLiteral("Return"));
    ASSERT_TRUE(waitUntil([&] { return !pdfText(pdf).isEmpty(); }, 30000)) << "no PDF written";
    const QString text = pdfText(pdf);
    EXPECT_TRUE(text.contains(QLatin1String("Shopping list"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QLatin1String("bread and milk"))) << text.toStdString();

    key(QStringLiteral("ctrl+q"));
    EXPECT_TRUE(velto.waitForExit());
}

// What a sign on the serial port receives: the greeting, the title that
// plays, "Velto stopped" when it stops and again when Velto ends.
TEST_F(DeskTools, TheSignShowsTheGreetingTheTitleAndTheStop)
{
    PseudoTerminal sign;
    ASSERT_TRUE(sign.isOpen());
    TestMedia media;
    const QString tone = media.sineWav(QStringLiteral("tone.wav"), 30000);
    const ShippedSkin player = shippedSkin(QStringLiteral("default.skin"));
    const QString stop = player.key(QStringLiteral("B10"));
    ASSERT_FALSE(stop.isEmpty()) << "the player skin's stop button has a key";

    VeltoProcess velto;
    const QPoint origin =
        start(velto, QStringLiteral("default.skin"),
              {{QStringLiteral("exenable"), QStringLiteral("1")},
               {QStringLiteral("exparm"), sign.path() + QStringLiteral(",9600,N,8,1")},
               {QStringLiteral("autoplay"), QStringLiteral("1")}},
              {tone});
    ASSERT_GE(origin.x(), 0);

    const std::string greeting = frame("Welcome to Velto!");
    const std::string title = frame("Velto - tone.wav");
    EXPECT_EQ(received(sign, greeting.size() + title.size(), 20000), greeting + title);

    click(origin + player.rect(QStringLiteral("X1")).topLeft() + QPoint(20, 8));
    key(stop);
    const std::string stopped = frame("Velto stopped");
    EXPECT_EQ(received(sign, stopped.size()), stopped);
    key(QStringLiteral("ctrl+q"));
    EXPECT_TRUE(velto.waitForExit());
    EXPECT_EQ(received(sign, stopped.size()), stopped) << "the last word at the end";
}
