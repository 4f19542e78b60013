// Playback on the real media engine, silent (ao=null) like the reference
// player it is compared with: how soon a PlayIt is heard, what a tick costs,
// the silence between two items, and CPU time and memory of the real program
// playing a 128 kbit/s MP3 next to `mpv --no-video --ao=null` on the same file.
#include "bench/againstmpv.h"
#include "bench/benchsupport.h"
#include "bench/eventloop.h"
#include "bench/limit.h"
#include "bench/mediaengine.h"
#include "bench/procstat.h"
#include "platform/mediadevice.h"
#include "player/playbackengine.h"
#include "tests/support/recordingsurface.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

// Sine tones made by ffmpeg, once per run.
struct Media
{
    QTemporaryDir dir;
    QString encode(const QString &name, double seconds, const QStringList &extra = {})
    {
        const QString out = dir.filePath(name);
        if (QFile::exists(out))
            return out;
        QProcess ffmpeg;
        ffmpeg.start(QStringLiteral("ffmpeg"),
                     QStringList{QStringLiteral("-loglevel"), QStringLiteral("error"),
                                 QStringLiteral("-y"), QStringLiteral("-f"),
                                 QStringLiteral("lavfi"), QStringLiteral("-i"),
                                 QStringLiteral("sine=frequency=440:duration=%1").arg(seconds)}
                         << extra << out);
        ffmpeg.waitForFinished(60000);
        return QFile::exists(out) ? out : QString();
    }
};

Media &media()
{
    static Media m;
    return m;
}

// Keeps what it is given and counts the writes that would repaint digits or
// text on a real window.
struct CountingSurface : RecordingSurface
{
    int writes = 0;
    void SetDD(int group, const QVariant &value) override
    {
        ++writes;
        RecordingSurface::SetDD(group, value);
    }
    void setLabel(int number, const QString &text) override
    {
        ++writes;
        RecordingSurface::setLabel(number, text);
    }
};

using Rig = EngineRig<CountingSurface>;

bool ready(benchmark::State &state, const QString &file)
{
    if (file.isEmpty()) {
        state.SkipWithError("ffmpeg could not make the media");
        return false;
    }
    if (!mediaDevices().hasEngine()) {
        state.SkipWithError("the media engine module did not load");
        return false;
    }
    return true;
}

} // namespace

// From PlayIt on a local MP3 until the device reports a position: the wait
// before the user hears the item. Limit 60 ms.
static void BM_PlayItToFirstPosition(benchmark::State &state)
{
    const QString file = media().encode(QStringLiteral("start.mp3"), 5, {"-b:a", "128k"});
    if (!ready(state, file))
        return;
    Rig rig({file});
    rig.engine.PlayIt(); // the devices exist before the first measurement
    waitFor([&] { return rig.engine.state().playing; }, 3000);
    for (auto _ : state) {
        rig.engine.StopIt();
        rig.playlist.CurTrack = 1;
        QElapsedTimer t;
        t.start();
        rig.engine.PlayIt();
        MediaDevice *device = rig.engine.device(rig.engine.state().CurMci);
        if (!waitFor([&] { return device && device->position() > 0; }, 3000)) {
            state.SkipWithError("no position within 3 s");
            return;
        }
        state.SetIterationTime(double(t.nsecsElapsed()) / 1e9);
    }
    rig.engine.StopIt();
    setLimit(state, 60);
}
BENCHMARK(BM_PlayItToFirstPosition)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

// CPU time of one Timer1 tick while an MP3 plays. Limit 50 us. The events
// run between ticks, untimed, so every tick finds a new position to show.
// writes_per_s: digit groups and labels written per second of playback; the
// time shown changes once a second, and a tick that rewrites what did not
// change repaints the window for nothing. Limit 2.
static void BM_PlaybackTick(benchmark::State &state)
{
    const QString file = media().encode(QStringLiteral("tick.mp3"), 30, {"-b:a", "128k"});
    if (!ready(state, file))
        return;
    Rig rig({file});
    rig.engine.PlayIt();
    if (!waitFor([&] { return rig.engine.state().TrackLength > 0; }, 3000)) {
        state.SkipWithError("the item did not open");
        return;
    }
    rig.skin.writes = 0;
    QElapsedTimer playing;
    playing.start();
    for (auto _ : state) {
        QElapsedTimer between;
        between.start();
        waitFor([&] { return between.elapsed() >= 20; }, 20);
        const double start = threadCpuMs() / 1e3;
        rig.engine.Timer1_Timer();
        const double seconds = threadCpuMs() / 1e3 - start;
        state.SetIterationTime(seconds);
    }
    benchmark::DoNotOptimize(rig.skin.groups);
    setLimit(state, 50);
    state.counters["writes_per_s"] = rig.skin.writes / (double(playing.elapsed()) / 1000.0);
    setLimit(state, 2, "writes_per_s");
    rig.engine.StopIt();
}
BENCHMARK(BM_PlaybackTick)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(200);

// Silence between two items with no overlap ("PBOverlap" 0), from the
// positions the devices report: when the second item's first reported
// position says it began, against when the first stopped sounding (its
// natural end, or the moment the engine moved on if that came earlier).
// Limit 100 ms; a negative figure is how much of the first item's end was cut.
static void BM_SilenceBetweenItems(benchmark::State &state)
{
    const QString first = media().encode(QStringLiteral("first.mp3"), 1, {"-b:a", "128k"});
    const QString second = media().encode(QStringLiteral("second.mp3"), 1, {"-b:a", "128k"});
    if (!ready(state, first) || !ready(state, second))
        return;
    double worst = -1e9, total = 0;
    for (auto _ : state) {
        Rig rig({first, second});
        QElapsedTimer clock;
        clock.start();
        double lastTickAt = 0, firstEndsAt = -1, secondBeganAt = -1;
        QObject::connect(&rig.engine, &PlaybackEngine::ticked, &rig.engine,
                         [&] { lastTickAt = double(clock.nsecsElapsed()) / 1e6; });
        double firstPosAt = 0, firstPos = 0, firstLength = 0;
        rig.engine.PlayIt();
        waitFor(
            [&] {
                const PlaybackState &s = rig.engine.state();
                MediaDevice *device = rig.engine.device(s.CurMci);
                if (!device)
                    return false;
                const double now = double(clock.nsecsElapsed()) / 1e6;
                if (rig.playlist.CurTrack == 1 && device->position() > 0 &&
                    device->position() != firstPos) {
                    firstPos = double(device->position());
                    firstPosAt = now;
                    firstLength = double(device->length());
                } else if (rig.playlist.CurTrack == 2 && firstEndsAt < 0) {
                    // The engine moved on at its last tick; the first item sounded until
                    // then or until its end, whichever came first.
                    firstEndsAt = std::min(lastTickAt, firstPosAt + (firstLength - firstPos));
                } else if (rig.playlist.CurTrack == 2 && device->position() > 0) {
                    secondBeganAt = now - double(device->position());
                    return true;
                }
                return false;
            },
            5000);
        if (secondBeganAt < 0 || firstEndsAt < 0) {
            state.SkipWithError("the second item did not start");
            return;
        }
        const double silence = secondBeganAt - firstEndsAt;
        state.SetIterationTime(std::max(silence, 0.0) / 1000.0);
        worst = std::max(worst, silence);
        total += silence;
        rig.engine.StopIt();
    }
    state.counters["mean_ms"] = total / double(state.iterations());
    state.counters["worst_ms"] = worst;
    setLimit(state, 100, "worst_ms");
}
BENCHMARK(BM_SilenceBetweenItems)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

// Velto with its window shown, playing 20 s of a 128 kbit/s MP3 opened from
// the command line with AutoPlay on, against `mpv --no-video --ao=null` on
// the same file over the same 20 s. Limits: 1.3 times mpv's CPU time, and
// under 90 MiB resident while playing.
static void BM_PlayingMp3CpuAgainstMpv(benchmark::State &state)
{
    const QString file = media().encode(QStringLiteral("song.mp3"), 27, {"-b:a", "128k"});
    if (file.isEmpty()) {
        state.SkipWithError("ffmpeg could not make the media");
        return;
    }
    QTemporaryDir home;
    QDir(home.path()).mkpath(QStringLiteral("config/velto"));
    QFile ini(home.filePath(QStringLiteral("config/velto/velto.ini")));
    if (ini.open(QIODevice::WriteOnly))
        ini.write("[config]\nautoplay=1\n");
    ini.close();
    const RunFigures ours = cpuAgainstMpv(state, file, veltoEnvironment(home.path()), 1.3);
    if (ours.cpuSeconds < 0)
        return;
    state.counters["velto_rss_MiB"] = ours.rssMiB;
    setLimit(state, 90, "velto_rss_MiB");
}
BENCHMARK(BM_PlayingMp3CpuAgainstMpv)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

int main(int argc, char **argv)
{
    // Silent but timed, as the reference player is run.
    if (!qEnvironmentVariableIsSet("VELTO_AUDIO"))
        qputenv("VELTO_AUDIO", "null");
    return runBenchmarks(argc, argv);
}
