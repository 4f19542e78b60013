// Start of the real program: from launching the process to its first painted
// frame, and its resident memory then and once it has settled with nothing to
// play. Needs an X server (scripts/bench provides one).
#include "bench/limit.h"
#include "bench/procstat.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <benchmark/benchmark.h>

#include <cmath>
#include <utility>

namespace {

// One home for every run: the first start seeds the program folder; the runs
// measured are the starts a user makes every day.
struct Home
{
    QTemporaryDir dir;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    Home()
    {
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), dir.path() + QStringLiteral("/config"));
        env.insert(QStringLiteral("XDG_DATA_HOME"), dir.path() + QStringLiteral("/data"));
        env.insert(QStringLiteral("VELTO_REPORT_FIRST_FRAME"), QStringLiteral("1"));
        env.remove(QStringLiteral("QT_QPA_PLATFORM"));
    }
};

// Seconds from launch to the first painted frame, and the resident MiB then;
// negative when velto did not report.
std::pair<double, double> startOnce(const Home &home)
{
    QProcess velto;
    velto.setProcessEnvironment(home.env);
    QElapsedTimer clock;
    clock.start();
    velto.start(QStringLiteral(VELTO_BINARY), {});
    QByteArray out;
    while (!out.contains('\n') && velto.waitForReadyRead(10000))
        out += velto.readAllStandardOutput();
    const double seconds = clock.nsecsElapsed() / 1e9;
    velto.waitForFinished(10000);
    if (!out.startsWith("velto-first-frame"))
        return {-1.0, -1.0};
    return {seconds, out.mid(out.indexOf("rss-kib=") + 8).trimmed().toDouble() / 1024.0};
}

// The first start seeds the program folder and is not measured.
const Home *seededHome()
{
    static Home home;
    static const bool seeded = startOnce(home).first >= 0;
    return seeded ? &home : nullptr;
}

// The seeded home, or null with the reason the benchmark cannot run.
const Home *readyHome(benchmark::State &state)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        state.SkipWithError("no X server");
        return nullptr;
    }
    const Home *home = seededHome();
    if (!home)
        state.SkipWithError("velto did not report its first frame");
    return home;
}

} // namespace

// Limit 100 ms: up to there a start feels immediate, and linking the media
// engine into the program again (about 150 ms) would cross it.
static void BM_StartToFirstFrame(benchmark::State &state)
{
    const Home *home = readyHome(state);
    if (!home)
        return;
    double rss = 0;
    for (auto _ : state) {
        const auto [seconds, mib] = startOnce(*home);
        if (seconds < 0) {
            state.SkipWithError("velto did not report its first frame");
            return;
        }
        state.SetIterationTime(seconds);
        rss = mib;
    }
    state.counters["rss_MiB"] = rss;
    setLimit(state, 100);
}
BENCHMARK(BM_StartToFirstFrame)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(7)
    ->ReportAggregatesOnly(true);

// Resident memory of a player started with nothing to play once it stops
// growing (no change over 2 s), as it then sits all day; the time is how long
// it took to settle. Limit 40 MiB: the window, its skin and settings, with
// the media engine (some 40 MiB more) left out until something plays.
static void BM_IdleMemory(benchmark::State &state)
{
    const Home *home = readyHome(state);
    if (!home)
        return;
    QProcessEnvironment env = home->env;
    env.remove(QStringLiteral("VELTO_REPORT_FIRST_FRAME"));
    double rss = -1;
    for (auto _ : state) {
        QProcess velto;
        velto.setProcessEnvironment(env);
        velto.setStandardOutputFile(QProcess::nullDevice());
        QElapsedTimer clock, steady;
        clock.start();
        velto.start(QStringLiteral(VELTO_BINARY), {});
        if (!velto.waitForStarted(10000)) {
            state.SkipWithError("velto did not start");
            return;
        }
        steady.start();
        while (steady.elapsed() < 2000 && clock.elapsed() < 20000 &&
               velto.state() == QProcess::Running) {
            QThread::msleep(100);
            const double now = residentMiB(velto.processId());
            if (std::abs(now - rss) > 0.25)
                steady.restart();
            rss = now;
        }
        state.SetIterationTime(double(clock.elapsed() - steady.elapsed()) / 1000.0);
        const bool ran = velto.state() == QProcess::Running;
        velto.terminate();
        if (!velto.waitForFinished(10000)) {
            velto.kill();
            velto.waitForFinished(5000);
        }
        if (!ran || rss <= 0) {
            state.SkipWithError("velto ended while idle");
            return;
        }
    }
    state.counters["idle_rss_MiB"] = rss;
    setLimit(state, 40, "idle_rss_MiB");
}
BENCHMARK(BM_IdleMemory)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);

// A 16-bit mono WAV of silence, written here so the benchmark needs no tools.
QString silentWav(const QString &path, int seconds)
{
    const int rate = 22050;
    const QByteArray pcm(rate * 2 * seconds, '\0');
    QByteArray out("RIFF");
    const auto le = [&out](quint32 value, int bytes) {
        for (int i = 0; i < bytes; ++i)
            out.append(char((value >> (8 * i)) & 0xff));
    };
    le(quint32(36 + pcm.size()), 4);
    out += "WAVEfmt ";
    le(16, 4), le(1, 2), le(1, 2), le(rate, 4), le(rate * 2, 4), le(2, 2), le(16, 2);
    out += "data";
    le(quint32(pcm.size()), 4);
    out += pcm;
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(out) == out.size() ? path : QString();
}

// Play pressed once the window is up, the media engine not loaded yet: how
// long until the position moves. Limit 250 ms: the engine loads only for a
// player that plays, and the first press must still feel like a press.
static void BM_FirstPlayCold(benchmark::State &state)
{
    const Home *home = readyHome(state);
    if (!home)
        return;
    const QString wav = silentWav(home->dir.filePath(QStringLiteral("silence.wav")), 5);
    QProcessEnvironment env = home->env;
    env.remove(QStringLiteral("VELTO_REPORT_FIRST_FRAME"));
    env.insert(QStringLiteral("VELTO_REPORT_FIRST_PLAY"), QStringLiteral("1"));
    env.insert(QStringLiteral("VELTO_AUDIO"), QStringLiteral("null"));
    for (auto _ : state) {
        QProcess velto;
        velto.setProcessEnvironment(env);
        velto.start(QStringLiteral(VELTO_BINARY), {wav});
        QByteArray out;
        while (!out.contains('\n') && velto.waitForReadyRead(20000))
            out += velto.readAllStandardOutput();
        velto.waitForFinished(10000);
        if (!out.startsWith("velto-first-play")) {
            state.SkipWithError("velto did not report its first play");
            return;
        }
        state.SetIterationTime(out.mid(out.indexOf("ms=") + 3).trimmed().toDouble() / 1000.0);
    }
    setLimit(state, 250);
}
BENCHMARK(BM_FirstPlayCold)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

BENCHMARK_MAIN();
