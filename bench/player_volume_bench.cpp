// Setting the volume or the balance while something plays: the time the UI
// thread spends on it (budget: 1 ms) and whether playback goes on without a
// stall. Real media engine with silent but timed output; the media are made
// here (a sine MP3 by ffmpeg, a MIDI tune by our writer).
#include "bench/benchsupport.h"
#include "bench/limit.h"
#include "platform/mediadevicefactory.h"
#include "platform/wavevolume.h"
#include "player/volumecontrol.h"
#include "tests/platform/midiwriter.h"
#include "tests/support/recordingsurface.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <benchmark/benchmark.h>

#include <memory>

namespace {

constexpr int LengthSeconds = 60;

void runEvents(int ms)
{
    QDeadlineTimer deadline(ms);
    while (!deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
        QThread::msleep(1);
    }
}

// One device playing one file for the whole run, its gains driven by a
// VolumeControl, its position changes timed.
struct Player
{
    QTemporaryDir media;
    MediaDeviceFactory factory;
    std::unique_ptr<MediaDevice> device;
    WaveVolume wave;
    RecordingSurface skin;
    VolumeControl volume{wave, skin};
    QElapsedTimer clock;
    qint64 lastChange = -1; // ms on the clock
    qint64 longestGap = 0;

    explicit Player(bool midi)
    {
        const QString file =
            media.filePath(midi ? QStringLiteral("tune.mid") : QStringLiteral("tone.mp3"));
        if (midi) {
            QFile out(file);
            if (out.open(QIODevice::WriteOnly))
                out.write(MidiWriter::tune(LengthSeconds * 1000));
        } else {
            QProcess::execute(QStringLiteral("ffmpeg"),
                              {QStringLiteral("-loglevel"), QStringLiteral("error"),
                               QStringLiteral("-y"), QStringLiteral("-f"), QStringLiteral("lavfi"),
                               QStringLiteral("-i"),
                               QStringLiteral("sine=frequency=440:duration=%1").arg(LengthSeconds),
                               QStringLiteral("-b:a"), QStringLiteral("128k"), file});
        }
        device = factory.create();
        MediaDevice::Events events;
        events.positionChanged = [this](qint64) {
            const qint64 now = clock.elapsed();
            if (lastChange >= 0)
                longestGap = qMax(longestGap, now - lastChange);
            lastChange = now;
        };
        device->setEvents(events);
        device->setDeviceType(QStringLiteral("MPEGVideo"));
        device->setFileName(file);
        wave.addDevice(device.get());
        device->open();
        device->play();
        clock.start();
        QDeadlineTimer deadline(10000);
        while (device->position() < 200 && !deadline.hasExpired())
            runEvents(10);
    }
    ~Player() { wave.removeDevice(device.get()); }

    bool playing() const { return device->mode() == MediaDevice::Mode::Playing; }

    // The device asks the engine for the time when it is read and answers
    // from its last sample until then, so after a while unread it is asked twice.
    qint64 freshPosition()
    {
        device->position();
        runEvents(50);
        return device->position();
    }

    // Back to the start well before the end, so every iteration finds it playing.
    void keepPlaying()
    {
        if (device->position() > (LengthSeconds - 5) * 1000) {
            device->seek(0);
            runEvents(100);
            lastChange = -1;
        }
    }
};

// Made on first use, gone before the application object.
std::unique_ptr<Player> players[2];

Player &player(bool midi)
{
    std::unique_ptr<Player> &p = players[midi ? 1 : 0];
    if (!p)
        p = std::make_unique<Player>(midi);
    return *p;
}

// Manual time: only the call itself and the event drain that follows it, both
// on the UI thread; between changes the event loop runs for 20 ms, as
// between two moves of a slider.
template<typename Change> void changeWhilePlaying(benchmark::State &state, Change change)
{
    Player &p = player(state.range(0) == 1);
    if (!p.playing()) {
        state.SkipWithError("the media engine does not play here");
        return;
    }
    p.longestGap = 0;
    p.lastChange = -1;
    const qint64 startPosition = p.freshPosition();
    QElapsedTimer wall;
    wall.start();
    qint64 rewound = 0;
    int i = 0;
    for (auto _ : state) {
        QElapsedTimer t;
        t.start();
        change(p.volume, i++);
        QCoreApplication::processEvents();
        state.SetIterationTime(double(t.nsecsElapsed()) / 1e9);
        const qint64 before = p.device->position();
        p.keepPlaying();
        rewound += qMax<qint64>(0, before - p.device->position());
        runEvents(20);
    }
    const qint64 endPosition = p.freshPosition();
    const double seconds = double(wall.elapsed() - 50) / 1000.0;
    const double played = double(endPosition - startPosition + rewound) / 1000.0;
    // 1.0: the position kept pace with the clock.
    state.counters["play_rate"] = seconds > 0 ? played / seconds : 0;
    state.counters["longest_gap_ms"] = double(p.longestGap);
    setLimit(state, 1000); // the 1 ms budget, in microseconds like the figure
    state.SetLabel(state.range(0) == 1 ? "MIDI" : "MP3");
}

void BM_SetBalanceWhilePlaying(benchmark::State &state)
{
    changeWhilePlaying(state, [](VolumeControl &volume, int i) {
        // Across the dead zone and out to both ends.
        volume.SetBalance(float(i % 21) / 20.0f);
    });
}
BENCHMARK(BM_SetBalanceWhilePlaying)
    ->Arg(0)
    ->Arg(1)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond)
    ->Iterations(150);

// The same loop changing nothing: the play rate the others compare with.
void BM_NoChangeWhilePlaying(benchmark::State &state)
{
    changeWhilePlaying(state, [](VolumeControl &, int) {});
}
BENCHMARK(BM_NoChangeWhilePlaying)
    ->Arg(0)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond)
    ->Iterations(150);

void BM_SetVolumeWhilePlaying(benchmark::State &state)
{
    changeWhilePlaying(
        state, [](VolumeControl &volume, int i) { volume.setVolumeLevel(float(i % 11) / 10.0f); });
}
BENCHMARK(BM_SetVolumeWhilePlaying)
    ->Arg(0)
    ->Arg(1)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond)
    ->Iterations(150);

} // namespace

int main(int argc, char **argv)
{
    // Silent but timed output, as the tests run.
    if (!qEnvironmentVariableIsSet("VELTO_AUDIO"))
        qputenv("VELTO_AUDIO", "null");
    return runBenchmarks<QCoreApplication>(argc, argv, [] {
        for (auto &p : players)
            p.reset();
    });
}
