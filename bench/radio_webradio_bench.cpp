// Web radio on the real media engine, silent (ao=null), against a station on
// 127.0.0.1 that streams a 128 kbit/s MP3 at the pace a real one does: the
// CPU time of the real program playing it next to `mpv --no-video --ao=null`
// on the same address, and the longest the user interface stalls while a
// station connects, buffers through a stall and plays on.
#include "bench/againstmpv.h"
#include "bench/benchsupport.h"
#include "bench/eventloop.h"
#include "bench/limit.h"
#include "bench/mediaengine.h"
#include "bench/procstat.h"
#include "platform/httpfetch.h"
#include "platform/wavevolume.h"
#include "radio/webradio.h"
#include "tests/support/loopbackserver.h"
#include "tests/support/recordingsurface.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTimer>
#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

QByteArray &tone()
{
    static QByteArray mp3 = LoopbackServer::toneMp3(10);
    return mp3;
}

} // namespace

// Velto with its window shown, given the station's address on the command
// line, against mpv on the same address over the same 20 s. Limit: 1.1 times
// mpv's CPU time.
static void BM_StreamCpuAgainstMpv(benchmark::State &state)
{
    if (tone().isEmpty()) {
        state.SkipWithError("ffmpeg could not make the tone");
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
    if (cpuAgainstMpv(state, station.url(), veltoEnvironment(home.path()), 1.1).cpuSeconds >= 0)
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
    if (tone().isEmpty() || !mediaDevices().hasEngine()) {
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
    WebRadio radio({recent}, {skin, dialogs, mediaDevices(), wave, http,
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
        clock.start();
        LoopGaps gaps(1);
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
        worst = std::max(worst, gaps.longestMs());
        worstBusy = std::max(worstBusy, gaps.longestCpuMs());
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
