#include "e2e.h"

#include "support/testmedia.h"

#include <QRegularExpression>

namespace {

// The real program with Qt's AT-SPI bridge on, read by a client on the
// accessibility bus as a screen reader reads it.
class AtSpi : public E2e
{
protected:
    void SetUp() override
    {
        E2e::SetUp();
        if (IsSkipped())
            return;
        if (const auto missing = atspiMissing())
            GTEST_SKIP() << *missing;
        velto.setEnvironment(QStringLiteral("VELTO_AUDIO"), QStringLiteral("null"));
        // No screen reader runs to switch the bridge on.
        velto.setEnvironment(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"),
                             QStringLiteral("1"));
    }

    // The text of each named element.
    QMap<QString, QString> elements()
    {
        QMap<QString, QString> named;
        for (const QString &line :
             atspiClient({QStringLiteral("dump")}).value_or(QString()).split('\n')) {
            const QStringList f = line.split('\t');
            if (f.size() == 3 && !f[1].isEmpty())
                named.insert(f[1], f[2]);
        }
        return named;
    }
    // The first line of what --status prints.
    QString status()
    {
        return runVelto(velto.environment(), {QStringLiteral("--status")}).out.section('\n', 0, 0);
    }

    TestMedia media;
    VeltoProcess velto;
};

TEST_F(AtSpi, ScreenReaderReadsTitleAndTimeHearsTheClockAndPressesButtons)
{
    const QString song = media.sineWav(QStringLiteral("morning.wav"), 60000);
    ASSERT_TRUE(velto.start({QStringLiteral("--play"), song}));

    const QRegularExpression time(QStringLiteral("^0:00:\\d\\d$"));
    QMap<QString, QString> seen;
    ASSERT_TRUE(waitUntil(
        [&] {
            seen = elements();
            return seen.value(QStringLiteral("Title")) == QLatin1String("morning.wav") &&
                   time.match(seen.value(QStringLiteral("Playing time"))).hasMatch();
        },
        30000))
        << "the title and the time never reached the bus";
    // The time display says when it changes, as a screen reader following it hears.
    const std::optional<QString> next =
        atspiClient({QStringLiteral("watch"), QStringLiteral("Playing time")});
    ASSERT_TRUE(next);
    EXPECT_TRUE(time.match(next->trimmed()).hasMatch()) << next->toStdString();

    // Each element's role and name are SkinAccessible's; a press over the bus is not.
    ASSERT_TRUE(atspiClient({QStringLiteral("press"), QStringLiteral("Pause")}));
    EXPECT_TRUE(waitUntil([&] { return status() == QLatin1String("Paused"); }, 30000));
}

} // namespace
