#include "e2e.h"

#include <QSettings>

using Lifecycle = E2e;

TEST_F(Lifecycle, TerminationSignalsRunTheSameShutDown)
{
    for (int signo : {SIGTERM, SIGINT}) {
        VeltoProcess velto;
        ASSERT_FALSE(velto.startWindow().isEmpty());
        velto.signal(signo);
        ASSERT_TRUE(velto.waitForExit()) << "signal " << signo;
        // WriteAll's key list is ConfigStore's test; here the shut-down must have run whole.
        const QStringList keys =
            QSettings(velto.home(QStringLiteral("config/velto/velto.ini")), QSettings::IniFormat)
                .allKeys();
        for (const char *key : {"mcidevice", "lastcover", "lasttrack", "startfreq", "radiourl9"})
            EXPECT_TRUE(keys.contains(QStringLiteral("config/") + QLatin1String(key))) << key;
        EXPECT_GE(keys.size(), 82);
        EXPECT_TRUE(QFile::exists(velto.home(QStringLiteral("data/velto/playlist.m3u"))));
    }
}
