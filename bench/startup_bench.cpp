// Cold start of the real program: from launching the process to its first
// painted frame, and its resident memory at that moment. Needs an X server
// (scripts/bench provides one).
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

static void BM_StartToFirstFrame(benchmark::State &state)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        state.SkipWithError("no X server");
        return;
    }
    std::vector<double> rss;
    for (auto _ : state) {
        QTemporaryDir home;
        QProcess velto;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), home.path() + QStringLiteral("/config"));
        env.insert(QStringLiteral("XDG_DATA_HOME"), home.path() + QStringLiteral("/data"));
        env.insert(QStringLiteral("VELTO_REPORT_FIRST_FRAME"), QStringLiteral("1"));
        env.remove(QStringLiteral("QT_QPA_PLATFORM"));
        velto.setProcessEnvironment(env);

        QElapsedTimer clock;
        clock.start();
        velto.start(QStringLiteral(VELTO_BINARY), {});
        QByteArray out;
        while (!out.contains('\n') && velto.waitForReadyRead(10000))
            out += velto.readAllStandardOutput();
        const double seconds = clock.nsecsElapsed() / 1e9;
        velto.waitForFinished(10000);
        if (!out.startsWith("velto-first-frame")) {
            state.SkipWithError("velto did not report its first frame");
            return;
        }
        state.SetIterationTime(seconds);
        rss.push_back(out.mid(out.indexOf("rss-kib=") + 8).trimmed().toDouble() / 1024.0);
    }
    std::sort(rss.begin(), rss.end());
    state.counters["rss_MiB"] = rss.empty() ? 0.0 : rss[rss.size() / 2];
}
// The first run pays for a cold disk cache and the program folder's seeding.
BENCHMARK(BM_StartToFirstFrame)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(7)
    ->Repetitions(1)
    ->ComputeStatistics("median", [](const std::vector<double> &v) {
        std::vector<double> s(v);
        std::sort(s.begin(), s.end());
        return s[s.size() / 2];
    });

BENCHMARK_MAIN();
