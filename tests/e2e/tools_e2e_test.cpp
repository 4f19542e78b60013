#include "e2e.h"

#include "support/pdftext.h"
#include "support/pseudoterminal.h"
#include "support/testmedia.h"

namespace {

// What the sign receives for a text, readable in a failure message.
std::string frame(const char *text)
{
    return std::string("<ID01><PA><CG>  ") + text + "   \r\n";
}

// What a screen reader reads at this rectangle of the screen: the name of the
// element that covers it exactly.
QString readAloud(const QRect &onScreen)
{
    return atspiClient({"at", QString::number(onScreen.x()), QString::number(onScreen.y()),
                        QString::number(onScreen.width()), QString::number(onScreen.height())})
        .value_or(QStringLiteral("(not found)"))
        .trimmed();
}

class DeskTools : public E2e
{
protected:
    // Starts Velto on a shipped skin; the window's origin on the screen.
    QPoint start(VeltoProcess &velto, const QString &skin,
                 QList<std::pair<QString, QString>> settings = {}, const QStringList &args = {})
    {
        settings << std::pair(QStringLiteral("skin"), skin)
                 << std::pair(QStringLiteral("skinpath"),
                              velto.home(QStringLiteral("data/velto/skins")));
        velto.writeSettings(settings);
        const QString window = velto.startWindow(args);
        const QSize size = shippedSkin(skin).size;
        if (window.isEmpty() || !waitUntil([&] { return windowGeometry(window).size() == size; }))
            return {-1, -1};
        return windowGeometry(window).topLeft();
    }
};

} // namespace

// 1 + 2 x 3 = 9, left to right, clicked on the skin's buttons and read back
// from the display as a screen reader reads it. Its keys are the main window's test.
TEST_F(DeskTools, CalculatorComputesWithItsButtons)
{
    if (const auto missing = atspiMissing())
        GTEST_SKIP() << *missing;
    const ShippedSkin calculator = shippedSkin(QStringLiteral("calculator.skin"));
    VeltoProcess velto;
    // No screen reader runs to switch Qt's bridge on.
    velto.setEnvironment(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
    const QPoint origin = start(velto, QStringLiteral("calculator.skin"));
    ASSERT_GE(origin.x(), 0);

    const QRect display = calculator.rect(QStringLiteral("L23")).translated(origin);
    QString read;
    const auto shows = [&](const char *text) {
        return waitUntil([&] { return (read = readAloud(display)) == QLatin1String(text); }, 40000);
    };
    EXPECT_TRUE(shows("0")) << "label 23 reads " << read.toStdString();

    for (const char *button : {"B41", "B51", "B42", "B53", "B43", "B55"})
        click(calculator.rect(QString::fromLatin1(button)).translated(origin).center());
    EXPECT_TRUE(shows("9")) << "1 + 2 x 3 = shows " << read.toStdString();

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

// What a sign on the serial port receives: the greeting and the title that
// plays. What it is sent at a stop is LedSign's test.
TEST_F(DeskTools, TheSignShowsTheGreetingAndTheTitle)
{
    PseudoTerminal sign;
    ASSERT_TRUE(sign.isOpen());
    TestMedia media;
    const QString tone = media.sineWav(QStringLiteral("tone.wav"), 30000);
    VeltoProcess velto;
    const QPoint origin = start(
        velto, QStringLiteral("default.skin"),
        {{"exenable", "1"}, {"exparm", sign.path() + ",9600,N,8,1"}, {"autoplay", "1"}}, {tone});
    ASSERT_GE(origin.x(), 0);

    const std::string greeting = frame("Welcome to Velto!");
    const std::string title = frame("Velto - tone.wav");
    EXPECT_EQ(sign.read(qsizetype(greeting.size() + title.size()), 20000).toStdString(),
              greeting + title);
    velto.signal(SIGTERM);
    EXPECT_TRUE(velto.waitForExit());
}
