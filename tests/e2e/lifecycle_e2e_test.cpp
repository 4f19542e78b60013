#include "e2e.h"

#include <QFile>
#include <QSet>
#include <QSettings>
#include <gtest/gtest.h>

#include <csignal>

namespace {

// Every option the program writes when it ends normally.
const char *const kWrittenAtExit[] = {
    "MCIDevice",   "ContPB",      "Skin",          "SkinPath",       "SkinImport", "WinOnTop",
    "WinSnap",     "WinSavePos",  "Auto",          "Snooze",         "SnoozeMode", "SnoozeTime",
    "SnoozeHide",  "ExitMode",    "StartMd",       "StartMin",       "StartMute",  "StartFile",
    "TimeFmt",     "VisPLPath",   "ClearPlFirst",  "AutoPlay",       "ValidExt",   "PBOverlap",
    "ScrollName",  "UseTagCover", "FriendlyNames", "UseSkinBrowser", "NoRMB",      "AutoCloseQF",
    "AutoCover",   "UseCDP",      "UseCDDB",       "CDDBcmd",        "EmailID",    "StartPMd",
    "LastPMd",     "ExEnable",    "ExDev",         "ExPort",         "ExParm",     "CvtFile",
    "Freq",        "FMVolume",    "FMEnable",      "CardType",       "CardPort",   "FMTuneMd",
    "StartPreset", "StartFreq",   "LastTrack",     "LastCover"};

void expectEverythingSaved(const VeltoProcess &velto)
{
    const QString ini = velto.home(QStringLiteral("config/velto/velto.ini"));
    ASSERT_TRUE(QFile::exists(ini));
    QSettings settings(ini, QSettings::IniFormat);
    QSet<QString> keys;
    for (const QString &k : settings.allKeys())
        keys.insert(k);
    for (const char *key : kWrittenAtExit)
        EXPECT_TRUE(keys.contains("config/" + QString::fromLatin1(key).toLower())) << key;
    for (const char *stem : {"favskin", "url", "radiourl"})
        for (int slot = 0; slot < 10; ++slot)
            EXPECT_TRUE(keys.contains(QStringLiteral("config/%1%2").arg(stem).arg(slot)));
    EXPECT_TRUE(QFile::exists(velto.home(QStringLiteral("data/velto/playlist.m3u"))));
}

class Lifecycle : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (!haveDisplay())
            GTEST_SKIP() << "no X server (scripts/test starts Xvfb)";
    }
};

} // namespace

TEST_F(Lifecycle, ClosingTheWindowSavesEverySetting)
{
    VeltoProcess velto;
    ASSERT_TRUE(velto.start());
    const QString window = velto.waitForWindow();
    ASSERT_FALSE(window.isEmpty());
    xdotool({"windowfocus", window});
    xdotool({"key", "--window", window, "ctrl+q"});
    ASSERT_TRUE(velto.waitForExit());
    expectEverythingSaved(velto);
}

TEST_F(Lifecycle, TerminationSignalsRunTheSameShutDown)
{
    for (int signo : {SIGTERM, SIGINT}) {
        VeltoProcess velto;
        ASSERT_TRUE(velto.start());
        ASSERT_FALSE(velto.waitForWindow().isEmpty());
        velto.signal(signo);
        ASSERT_TRUE(velto.waitForExit()) << "signal " << signo;
        expectEverythingSaved(velto);
    }
}

TEST_F(Lifecycle, UnknownFileOnTheCommandLineStillStarts)
{
    VeltoProcess velto;
    ASSERT_TRUE(velto.start({QStringLiteral("/no/such/file.mp3")}));
    // The message box is the first window; the program keeps running behind it.
    ASSERT_FALSE(velto.waitForWindow().isEmpty());
    velto.signal(SIGTERM);
    EXPECT_TRUE(velto.waitForExit());
}
