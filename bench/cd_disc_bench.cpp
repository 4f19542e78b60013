// The audio CD on disc images the run makes: reading a 99-track disc's table
// of contents and identities, the wait from Play to the first sound of a
// track, and how long a CDDB lookup (on a server of our own, on this
// machine) keeps the event loop from the user.
#include "bench/benchsupport.h"
#include "bench/eventloop.h"
#include "bench/limit.h"
#include "bench/mediaengine.h"
#include "bench/procstat.h"
#include "cd/cddbclient.h"
#include "cd/cdtable.h"
#include "platform/httpfetch.h"
#include "platform/linuxcddrive.h"
#include "platform/mediadevice.h"
#include "tests/support/discimage.h"
#include "tests/support/loopbackserver.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <vector>

namespace {

// One image per shape, written once per run.
struct Images
{
    QTemporaryDir dir;
    QString write(const QString &name, const QList<qint32> &sectors)
    {
        DiscImage image;
        image.sectors = sectors;
        return image.write(dir.path(), name);
    }
};

Images &images()
{
    static Images i;
    return i;
}

// 99 tracks of a second each: the most a disc holds.
QString fullDisc()
{
    static const QString cue = images().write(QStringLiteral("full"), QList<qint32>(99, 75));
    return cue;
}

} // namespace

// The table of contents of a 99-track image and both identities, from the
// cue sheet's name, as a disc put in is read. Limit 20 ms.
static void BM_TableOfContents99Tracks(benchmark::State &state)
{
    const QString cue = fullDisc();
    LinuxCdDrive drive;
    for (auto _ : state) {
        const CdTable table = readCdTable(drive.read(cue));
        if (table.CDTracks != 99) {
            state.SkipWithError("the image was not read");
            return;
        }
        benchmark::DoNotOptimize(table.CDDBId);
    }
    setLimit(state, 20);
}
BENCHMARK(BM_TableOfContents99Tracks)->Unit(benchmark::kMillisecond);

// From PlayIt on a track of an image until the media engine reports a
// position: the wait before the user hears it. Limit 100 ms.
static void BM_PlayToFirstSoundOfATrack(benchmark::State &state)
{
    const QString cue = images().write(QStringLiteral("play"), {750, 750, 750});
    if (!mediaDevices().hasEngine()) {
        state.SkipWithError("the media engine module did not load");
        return;
    }
    LinuxCdDrive drive;
    const CdDisc disc = drive.read(cue);
    QStringList tracks;
    for (int t = 1; t <= 3; ++t)
        tracks << QString::fromUtf8(cdTrackUrl(disc.playSource, t));
    EngineRig<> rig(tracks);
    PlaybackEngine &engine = rig.engine;
    PlaylistState &playlist = rig.playlist;
    engine.setCDMode(true);
    playlist.CurTrack = 2;
    engine.PlayIt(); // the device exists before the first measurement
    waitFor([&] { return engine.state().playing; }, 3000);
    for (auto _ : state) {
        engine.StopIt();
        playlist.CurTrack = 2;
        QElapsedTimer t;
        t.start();
        engine.PlayIt();
        MediaDevice *device = engine.device(engine.state().CurMci);
        if (!waitFor([&] { return device && device->position() > 0; }, 3000)) {
            state.SkipWithError("no position within 3 s");
            return;
        }
        state.SetIterationTime(double(t.nsecsElapsed()) / 1e9);
    }
    engine.StopIt();
    setLimit(state, 100);
}
BENCHMARK(BM_PlayToFirstSoundOfATrack)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20);

// A CDDB lookup of a 99-track disc, query and read, against a server on
// 127.0.0.1 that sends long titles; a timer of every event loop pass runs beside it and the
// longest gap between its ticks is how long the user would wait for the
// window. Limit 16 ms.
static void BM_CddbLookupLongestGap(benchmark::State &state)
{
    const CdTable table = readCdTable(LinuxCdDrive().read(fullDisc()));
    if (table.CDTracks != 99) {
        state.SkipWithError("the image was not read");
        return;
    }
    std::string entry = "210 misc " + table.CDDBId.toStdString() + " follows\r\n";
    entry += "DTITLE=Ninety-Nine / Tracks\r\n";
    for (int i = 0; i < 99; ++i)
        entry += "TTITLE" + std::to_string(i) + "=" + std::string(200, char('a' + i % 26)) + "\r\n";
    entry += ".\r\n";
    const std::string found = "200 misc " + table.CDDBId.toStdString() + " Ninety-Nine\r\n";
    LoopbackServer server([&](const std::string &target) {
        return LoopbackServer::Response{200, target.find("cddb+read") != std::string::npos ? entry
                                                                                           : found};
    });
    const QString cmd = server.url("/~cddb/cddb.cgi/?cmd=");
    const QString email = QStringLiteral("bench@example.org");
    QtHttpFetch http;
    CddbClient client(http, {cmd, email});
    CddbClient::Disc disc;
    disc.id = table.CDDBId;
    for (int t = 1; t <= table.CDTracks; ++t)
        disc.frames << table.tracks[size_t(t)].Frames;
    disc.seconds = table.CDSeconds;

    // A busy machine can take the processor away for longer than any handler
    // runs: the figure is the median lookup's longest gap, the worst beside it.
    std::vector<double> longest;
    double cpuLongest = 0;
    for (auto _ : state) {
        bool read = false;
        const QMetaObject::Connection done =
            QObject::connect(&client, &CddbClient::entryRead, [&] { read = true; });
        QElapsedTimer t;
        t.start();
        const LoopGaps gaps;
        client.CDDBQuery(disc);
        if (!waitFor([&] { return read; }, 5000)) {
            state.SkipWithError("the entry was not read within 5 s");
            return;
        }
        QObject::disconnect(done);
        longest.push_back(gaps.longestMs());
        cpuLongest = std::max(cpuLongest, gaps.longestCpuMs());
        state.SetIterationTime(double(t.nsecsElapsed()) / 1e9);
    }
    std::sort(longest.begin(), longest.end());
    state.counters["longest_gap_ms"] = longest[longest.size() / 2];
    state.counters["worst_gap_ms"] = longest.back();
    // The processor time the loop spent between two ticks: what the program
    // itself kept the window waiting, however busy the machine.
    state.counters["worst_cpu_gap_ms"] = cpuLongest;
    setLimit(state, 16, "longest_gap_ms");
}
BENCHMARK(BM_CddbLookupLongestGap)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

int main(int argc, char **argv)
{
    // Silent like the tests: a machine without a sound card would otherwise
    // time the audio system's search for one.
    if (!qEnvironmentVariableIsSet("VELTO_AUDIO"))
        qputenv("VELTO_AUDIO", "null");
    return runBenchmarks(argc, argv);
}
