#include "e2e.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

#include <array>
#include <cstdio>

namespace {

// The files the save loop writes, below the temporary home.
const std::array<const char *, 4> kFiles = {"config/velto/velto.ini", "data/velto/playlist.m3u",
                                            "data/velto/autolist.txt", "track.mp3"};
constexpr const char *kTagBackup = "data/velto/tagwrite.bak";

// Reads standard output until a line starting with the prefix; false when
// velto ends first.
bool waitForLine(QProcess &p, const QByteArray &prefix, QByteArray &seen)
{
    for (;;) {
        while (p.canReadLine()) {
            const QByteArray line = p.readLine();
            seen += line;
            if (line.startsWith(prefix))
                return true;
        }
        if (p.state() != QProcess::Running || !p.waitForReadyRead(20000))
            return p.canReadLine() && waitForLine(p, prefix, seen);
    }
}

class CrashSafeSaves : public E2e
{
protected:
    void SetUp() override
    {
        E2e::SetUp();
        if (IsSkipped())
            return;
        QFile mp3(velto.home(QStringLiteral("track.mp3")));
        ASSERT_TRUE(mp3.open(QIODevice::WriteOnly));
        QByteArray audio(6000, '\x55');
        audio.replace(0, 4, QByteArray("\xff\xfb\x90\x64", 4));
        mp3.write(audio);
        velto.setEnvironment(QStringLiteral("VELTO_SAVE_LOOP"), velto.home("track.mp3"));
    }

    // Runs the given number of save rounds to the end; returns every file.
    std::array<QByteArray, kFiles.size()> saveRounds(int rounds)
    {
        velto.setEnvironment(QStringLiteral("VELTO_SAVE_ROUNDS"), QString::number(rounds));
        EXPECT_TRUE(velto.start());
        EXPECT_TRUE(velto.waitForExit());
        return snapshot();
    }

    std::array<QByteArray, kFiles.size()> snapshot()
    {
        std::array<QByteArray, kFiles.size()> all;
        for (size_t i = 0; i < kFiles.size(); ++i) {
            QFile in(velto.home(QLatin1String(kFiles[i])));
            all[i] = in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("(missing)");
        }
        return all;
    }

    VeltoProcess velto;
};

} // namespace

// SIGKILL at random moments while velto saves settings, the playlist, the
// schedule and a tag over and over: every file is the old or the new version,
// whole; a cut tag write is undone at the next start. VELTO_KILLS sets how
// many kills (docs/reliability.md shows a longer run).
TEST_F(CrashSafeSaves, EveryFileIsTheOldOrTheNewVersionAfterAKill)
{
    const auto older = saveRounds(1);
    const auto newer = saveRounds(2);
    for (size_t i = 0; i < kFiles.size(); ++i)
        ASSERT_NE(older[i], newer[i]) << kFiles[i];

    int kills = qEnvironmentVariableIntValue("VELTO_KILLS");
    if (kills <= 0)
        kills = 200;
    velto.setEnvironment(QStringLiteral("VELTO_SAVE_ROUNDS"), QString());
    QRandomGenerator random(QRandomGenerator::global()->generate());
    qint64 roundNs = 0; // one save round, measured from the first runs
    int cutTags = 0, rounds = 0, killsMidRound = 0;
    for (int k = 0; k <= kills; ++k) {
        QProcess &p = velto.process();
        QByteArray seen;
        ASSERT_TRUE(velto.start());
        ASSERT_TRUE(waitForLine(p, "ready", seen)) << seen.toStdString();
        // After start-up, before anything is saved again: all whole.
        const auto now = snapshot();
        for (size_t i = 0; i < kFiles.size(); ++i)
            ASSERT_TRUE(now[i] == older[i] || now[i] == newer[i])
                << kFiles[i] << " after kill " << k << ", " << now[i].size() << " bytes";
        ASSERT_FALSE(QFile::exists(velto.home(QLatin1String(kTagBackup))));
        if (k == kills)
            break;

        p.write("go\n");
        ASSERT_TRUE(p.waitForBytesWritten(10000));
        QElapsedTimer clock;
        clock.start();
        if (roundNs == 0) {
            ASSERT_TRUE(waitForLine(p, "saved 1", seen));
            const qint64 first = clock.nsecsElapsed();
            ASSERT_TRUE(waitForLine(p, "saved 3", seen));
            roundNs = (clock.nsecsElapsed() - first) / 2;
        }
        // From the end of a round, when velto saves at full pace.
        ASSERT_TRUE(waitForLine(p, "saved", seen)) << "kill " << k << ": " << seen.toStdString();
        clock.restart();
        // The kill falls anywhere within the next round and a half: spinning on
        // the clock, not sleeping, since the moment is what is being chosen.
        const qint64 at = clock.nsecsElapsed() + qint64(random.bounded(1.5 * double(roundNs)));
        while (clock.nsecsElapsed() < at) {
        }
        velto.signal(SIGKILL);
        ASSERT_TRUE(p.waitForFinished(10000));
        ASSERT_EQ(p.exitStatus(), QProcess::CrashExit) << "velto ended before the kill";
        seen += p.readAllStandardOutput();
        rounds += int(seen.count("saved"));
        const auto after = snapshot();
        for (size_t i = 0; i + 1 < kFiles.size(); ++i)
            ASSERT_TRUE(after[i] == older[i] || after[i] == newer[i]) << kFiles[i] << " kill " << k;
        const bool tagWhole = after.back() == older.back() || after.back() == newer.back();
        if (!tagWhole)
            ++cutTags;
        if (QFile::exists(velto.home(QLatin1String(kTagBackup))))
            ++killsMidRound;
        else
            ASSERT_TRUE(tagWhole) << "a tag write was cut with no backup, kill " << k;
    }
    std::printf("kills %d, save rounds %d (%.2f ms each), killed with a tag backup %d, "
                "cut tags put back %d\n",
                kills, rounds, double(roundNs) / 1e6, killsMidRound, cutTags);
}
