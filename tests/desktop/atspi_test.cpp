#include "support/testmedia.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const QString kClient = QStringLiteral(VELTO_TESTS_DIR "/desktop/atspi-client.py");

struct Element
{
    QString role, text;
};

// The real program under X with Qt's AT-SPI bridge on, read by a client on
// the accessibility bus as a screen reader reads it.
class AtSpi : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("DISPLAY"))
            GTEST_SKIP() << "no X server (scripts/test starts Xvfb)";
        if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
            GTEST_SKIP() << "no session bus (ctest runs these under dbus-run-session)";
        if (QProcess::execute(QStringLiteral("/usr/bin/python3"),
                              {QStringLiteral("-c"), QStringLiteral("import pyatspi")}) != 0)
            GTEST_SKIP() << "python3-pyatspi is not installed";
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("HOME"), home.path());
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), home.filePath(QStringLiteral("config")));
        env.insert(QStringLiteral("XDG_DATA_HOME"), home.filePath(QStringLiteral("data")));
        env.insert(QStringLiteral("XDG_RUNTIME_DIR"), home.path());
        env.insert(QStringLiteral("VELTO_AUDIO"), QStringLiteral("null"));
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        // No screen reader runs to switch the bridge on.
        env.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
        velto.setProcessEnvironment(env);
    }
    void TearDown() override
    {
        if (velto.state() == QProcess::NotRunning)
            return;
        velto.terminate();
        if (!velto.waitForFinished(10000))
            velto.kill();
        velto.waitForFinished();
    }

    // Runs the client to its end; its standard output, or nothing on failure.
    std::optional<QString> client(const QStringList &args)
    {
        QProcess p;
        p.start(QStringLiteral("/usr/bin/python3"),
                QStringList{kClient, QStringLiteral("velto")} + args);
        if (!p.waitForFinished(40000) || p.exitStatus() != QProcess::NormalExit ||
            p.exitCode() != 0)
            return std::nullopt;
        return QString::fromUtf8(p.readAllStandardOutput());
    }
    QMap<QString, Element> elements()
    {
        QMap<QString, Element> named;
        for (const QString &line :
             client({QStringLiteral("dump")}).value_or(QString()).split('\n')) {
            const QStringList f = line.split('\t');
            if (f.size() == 3 && !f[1].isEmpty())
                named.insert(f[1], {f[0], f[2]});
        }
        return named;
    }
    QString status()
    {
        QProcess p;
        p.setProcessEnvironment(velto.processEnvironment());
        p.start(QStringLiteral(VELTO_BINARY), {QStringLiteral("--status")});
        p.waitForFinished(10000);
        return QString::fromLocal8Bit(p.readAllStandardOutput()).section('\n', 0, 0);
    }
    // Asks again until the answer fits; each asking takes its own time.
    template<typename F> bool eventually(F done)
    {
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 30000)
            if (done())
                return true;
        return false;
    }

    QTemporaryDir home;
    TestMedia media;
    QProcess velto;
};

TEST_F(AtSpi, ScreenReaderReadsTitleAndTimeHearsTheClockAndPressesButtons)
{
    const QString song = media.sineWav(QStringLiteral("morning.wav"), 60000);
    velto.start(QStringLiteral(VELTO_BINARY), {QStringLiteral("--play"), song});
    ASSERT_TRUE(velto.waitForStarted(10000));

    const QRegularExpression time(QStringLiteral("^0:00:\\d\\d$"));
    QMap<QString, Element> seen;
    ASSERT_TRUE(eventually([&] {
        seen = elements();
        return seen.value(QStringLiteral("Title")).text == QLatin1String("morning.wav") &&
               time.match(seen.value(QStringLiteral("Playing time")).text).hasMatch();
    })) << "the title and the time never reached the bus";
    const struct
    {
        const char *name, *role;
    } expected[] = {
        {"Title", "label"},      {"Playing time", "label"}, {"Now playing", "label"},
        {"Play", "push button"}, {"Pause", "push button"},  {"Position", "slider"},
        {"Volume", "slider"},    {"Playlist", "list"},      {"PLAY", "check box"},
    };
    for (const auto &e : expected)
        EXPECT_EQ(seen.value(QLatin1String(e.name)).role, QLatin1String(e.role)) << e.name;
    EXPECT_EQ(seen.value(QStringLiteral("Now playing")).text, QStringLiteral("morning.wav"));

    // The time display says when it changes, as a screen reader following it hears.
    const std::optional<QString> next =
        client({QStringLiteral("watch"), QStringLiteral("Playing time")});
    ASSERT_TRUE(next);
    EXPECT_TRUE(time.match(next->trimmed()).hasMatch()) << next->toStdString();

    ASSERT_TRUE(client({QStringLiteral("press"), QStringLiteral("Pause")}));
    EXPECT_TRUE(eventually([&] { return status() == QLatin1String("Paused"); }));
}

} // namespace
