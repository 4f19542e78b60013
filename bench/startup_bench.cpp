// Cold start of the real program: from launching the process to its first
// painted frame, and its resident memory at that moment. Needs an X server
// (scripts/bench provides one).
#include "bench/limit.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

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

} // namespace

// Limit 100 ms: up to there a start feels immediate, and linking the media
// engine into the program again (about 150 ms) would cross it.
static void BM_StartToFirstFrame(benchmark::State &state)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        state.SkipWithError("no X server");
        return;
    }
    static Home home;
    static bool seeded = startOnce(home).first >= 0;
    if (!seeded) {
        state.SkipWithError("velto did not report its first frame");
        return;
    }
    double rss = 0;
    for (auto _ : state) {
        const auto [seconds, mib] = startOnce(home);
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

BENCHMARK_MAIN();
