// Web radio on the real media engine, silent (ao=null), against a station on
// 127.0.0.1 that streams a 128 kbit/s MP3 at the pace a real one does: the
// CPU time of the real program playing it next to `mpv --no-video --ao=null`
// on the same address, and the longest the user interface stalls while a
// station connects, buffers through a stall and plays on.
#include "bench/benchsupport.h"
#include "bench/eventloop.h"
#include "bench/limit.h"
#include "bench/procstat.h"
#include "platform/httpfetch.h"
#include "platform/mediadevicefactory.h"
#include "platform/wavevolume.h"
#include "radio/webradio.h"
#include "tests/support/loopbackserver.h"
#include "tests/support/recordingsurface.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>
#include <QTimer>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <unistd.h>

namespace {

QByteArray &tone()
{
    static QByteArray mp3 = LoopbackServer::toneMp3(10);
    return mp3;
}

MediaDeviceFactory &factory()
{
    static MediaDeviceFactory f;
    return f;
}

// CPU time of a program over `seconds` of playing, after `settle` seconds of
// start-up and connecting; -1 when it ended early.
double cpuWhilePlaying(const QString &program, const QStringList &args,
                       const QProcessEnvironment &env, double settle, double seconds)
{
    QProcess process;
    process.setProcessEnvironment(env);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(program, args);
    if (!process.waitForStarted(10000))
        return -1;
    const qint64 pid = process.processId();
    QThread::msleep(qulonglong(settle * 1000));
    const double before = processCpuSeconds(pid);
    QThread::msleep(qulonglong(seconds * 1000));
    const double after = processCpuSeconds(pid);
    const bool running = process.state() == QProcess::Running;
    process.terminate();
    if (!process.waitForFinished(5000)) {
        process.kill();
        process.waitForFinished(5000);
    }
    return before >= 0 && after >= 0 && running ? after - before : -1;
}

QString veltoBinary()
{
    const QString built =
        QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../app/velto"));
    if (QFileInfo(built).isExecutable())
        return QFileInfo(built).canonicalFilePath();
    return QStandardPaths::findExecutable(QStringLiteral("velto"));
}

} // namespace

// Velto with its window shown, given the station's address on the command
// line, against mpv on the same address over the same 20 s. Limit: 1.1 times
// mpv's CPU time.
static void BM_StreamCpuAgainstMpv(benchmark::State &state)
{
    const double settle = 3, seconds = 20;
    const QString velto = veltoBinary();
    const QString mpv = QStandardPaths::findExecutable(QStringLiteral("mpv"));
    if (tone().isEmpty() || velto.isEmpty() || mpv.isEmpty()) {
        state.SkipWithError("needs ffmpeg, mpv and the velto program");
        return;
    }
    LoopbackServer::Stream options;
    options.mp3 = tone();
    options.titles = {"Bench Song 1", "Bench Song 2"};
    options.titleSeconds = 5;
    LoopbackServer station(options);
    if (!station.listening()) {
        state.SkipWithError("no loopback port");
        return;
    }
    QTemporaryDir home;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), home.filePath(QStringLiteral("config")));
    env.insert(QStringLiteral("XDG_DATA_HOME"), home.filePath(QStringLiteral("data")));
    env.insert(QStringLiteral("VELTO_AUDIO"), QStringLiteral("null"));
    if (!qEnvironmentVariableIsEmpty("DISPLAY"))
        env.remove(QStringLiteral("QT_QPA_PLATFORM"));

    double ours = -1, theirs = -1;
    for (auto _ : state) {
        ours = cpuWhilePlaying(velto, {station.url()}, env, settle, seconds);
        theirs = cpuWhilePlaying(mpv,
                                 {QStringLiteral("--no-config"), QStringLiteral("--no-video"),
                                  QStringLiteral("--ao=null"), QStringLiteral("--really-quiet"),
                                  station.url()},
                                 QProcessEnvironment::systemEnvironment(), settle, seconds);
        state.SetIterationTime(std::max(ours, 0.0));
    }
    if (ours < 0 || theirs <= 0) {
        state.SkipWithError("a player ended early or could not be measured");
        return;
    }
    state.counters["velto_cpu_s"] = ours;
    state.counters["mpv_cpu_s"] = theirs;
    state.counters["cpu_vs_mpv_x"] = ours / theirs;
    setLimit(state, 1.1, "cpu_vs_mpv_x");
    state.counters["connections"] = station.streamConnections();
}
BENCHMARK(BM_StreamCpuAgainstMpv)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(1);

// The longest the UI thread is busy between two turns of the event loop,
// from choosing a station (its playlist is fetched and read first) through
// connecting, buffering, playing, a two-second stall and playing again; and
// the longest wall-clock gap, which on a loaded machine includes the time
// other programs ran. The media device exists already: loading the engine
// the first time is the player's figure. Limit 16 ms, one frame, on the busy
// time.
static void BM_UiStallWhileAStationConnectsAndBuffers(benchmark::State &state)
{
    if (tone().isEmpty() || !factory().hasEngine()) {
        state.SkipWithError("needs ffmpeg and the media engine module");
        return;
    }
    LoopbackServer::Stream options;
    options.mp3 = tone();
    options.burstBytes = 8000;
    options.stallAfterSeconds = 2;
    options.stallSeconds = 2;
    LoopbackServer station(options);
    station.page("/listen.pls", "[playlist]\nFile1=" + station.url().toUtf8() + "\n",
                 "audio/x-scpls");
    QTemporaryDir home;
    RecordingSurface skin;
    QuietDialogs dialogs;
    WaveVolume wave;
    QtHttpFetch http;
    std::array<QString, 10> recent;
    WebRadio radio({recent}, {skin, dialogs, factory(), wave, http,
                              home.filePath(QStringLiteral("webradio.txt"))});
    radio.started();
    radio.entered();
    QTimer beat;
    QObject::connect(&beat, &QTimer::timeout, [&radio] { radio.WRUpdate(); });
    beat.start(250);

    // The engine's device made and warmed up outside the measurement.
    radio.playAddress(station.url());
    waitFor([&] { return radio.playState() == WebRadio::Playing; }, 10000);
    radio.WRStop();

    double worst = 0, worstBusy = 0;
    for (auto _ : state) {
        QElapsedTimer clock;
        qint64 last = 0;
        double lastCpu = threadCpuMs();
        QTimer probe;
        probe.setInterval(1);
        QObject::connect(&probe, &QTimer::timeout, [&] {
            const qint64 now = clock.nsecsElapsed();
            const double cpu = threadCpuMs();
            worst = std::max(worst, double(now - last) / 1e6);
            worstBusy = std::max(worstBusy, cpu - lastCpu);
            last = now;
            lastCpu = cpu;
        });
        clock.start();
        probe.start();
        radio.playAddress(station.url(QStringLiteral("/listen.pls")));
        bool played = false, stalled = false;
        const bool done = waitFor(
            [&] {
                const bool playing = radio.playState() == WebRadio::Playing &&
                                     radio.status() == QLatin1String("Playing...");
                stalled = stalled || (played && radio.status() == QLatin1String("Buffering..."));
                played = played || playing;
                return stalled && playing;
            },
            20000);
        probe.stop();
        state.SetIterationTime(double(clock.nsecsElapsed()) / 1e9);
        radio.WRStop();
        if (!done) {
            state.SkipWithError("the station did not stall and play again within 20 s");
            return;
        }
    }
    // The wall-clock gap also counts the time other programs had the CPU;
    // the busy time is what the UI thread itself spent between two turns.
    state.counters["worst_gap_ms"] = worst;
    state.counters["worst_busy_ms"] = worstBusy;
    setLimit(state, 16, "worst_busy_ms");
}
BENCHMARK(BM_UiStallWhileAStationConnectsAndBuffers)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

int main(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("VELTO_AUDIO"))
        qputenv("VELTO_AUDIO", "null");
    return runBenchmarks(argc, argv);
}
