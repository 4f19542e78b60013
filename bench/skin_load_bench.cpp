// A skin, read and then built on the window, as at start and at every skin
// switch: two figures, so a slow parser and a slow build are told apart.
// Limits: 5 ms to read, 50 ms to build; both happen before the first frame,
// which should come within 100 ms.
#include "bench/benchsupport.h"
#include "bench/limit.h"
#include "skin/skinloader.h"
#include "skin/skinreader.h"

#include <QBuffer>
#include <QByteArray>
#include <QWidget>
#include <benchmark/benchmark.h>

#include <memory>

static const QString kShippedSkin = QStringLiteral(VELTO_DATA_DIR "/skins/default.skin");

// A full player skin: 120 buttons, 14 digit groups, 30 labels, 22 lights, the
// lists, a slider and a polygon outline, read from memory: the parser alone.
static QByteArray bigSkin()
{
    QByteArray s = "\"Velto Skin/PLAYER\",\"Bench\"\r\n1,0\r\n\"Main\",\"main.png\"\r\n"
                   "\"Resource\",\"res.png\"\r\n\"*\",\"\"\r\n1,0,20,24,32,0,0,0\r\n"
                   "/ A generated skin for timing the reader, with commas, \"quotes\"\r\n";
    for (int i = 1; i <= 120; ++i)
        s += QStringLiteral("B%1,%2,%3,24,18,%4,%5,\"Button %1\",\"Does thing %1\"\r\n")
                 .arg(i)
                 .arg(10 + (i % 12) * 26)
                 .arg(40 + (i / 12) * 20)
                 .arg((i % 12) * 24)
                 .arg((i / 12) * 18)
                 .toLatin1();
    for (int i = 0; i < 14; ++i)
        s += QStringLiteral("D%1,%2,200,0,%3,9,13,4,%4,1,%5,~\r\n")
                 .arg(i)
                 .arg(10 + i * 40)
                 .arg(100 + i)
                 .arg(i % 4)
                 .arg(i % 2 ? -4 : 5)
                 .toLatin1();
    for (int i = 1; i <= 30; ++i)
        s += QStringLiteral("L%1,%2,230,60,12,255,255,255,-8,\"DejaVu Sans:b\",~\r\n")
                 .arg(i)
                 .arg(i * 10)
                 .toLatin1();
    for (int i = 1; i <= 22; ++i)
        s += QStringLiteral("I%1,%2,250,6,6,0,255,0,%3,\"Light %1\"\r\n")
                 .arg(i)
                 .arg(i * 8)
                 .arg(i % 5)
                 .toLatin1();
    s += "X1,10,270,300,120,255,255,255,0,0,0,9,\"DejaVu Sans\",~\r\n"
         "S2,10,400,100,8,0,200,0,12,Volume\r\nC1,320,10,80,80,~\r\n"
         "N6\r\nP0,0\r\nP399,0\r\nP399,259\r\nP200,280\r\nP0,259\r\nP0,0\r\nE\r\n";
    return s;
}

static void BM_ReadPlayerSkin(benchmark::State &state)
{
    QByteArray bytes = bigSkin();
    for (auto _ : state) {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        SkinDescription d = readSkin(buffer, QStringLiteral("/nonexistent-velto-bench"));
        benchmark::DoNotOptimize(d);
        if (d.buttons.size() != 120 || d.digitGroups.size() != 14 || d.errorFlag)
            state.SkipWithError("the generated skin did not read cleanly");
    }
    state.SetBytesProcessed(state.iterations() * bytes.size());
    setLimit(state, 5000); // 5 ms, in microseconds like the figure
}
BENCHMARK(BM_ReadPlayerSkin)->Unit(benchmark::kMicrosecond);

// The shipped player skin read from its file, its pictures looked up beside it.
static void BM_ReadSkinFile(benchmark::State &state)
{
    for (auto _ : state) {
        SkinDescription d = readSkinFile(kShippedSkin);
        benchmark::DoNotOptimize(d);
        if (!d.accepted || d.errorFlag) {
            state.SkipWithError("the shipped skin did not read cleanly");
            break;
        }
    }
    setLimit(state, 5000);
}
BENCHMARK(BM_ReadSkinFile)->Unit(benchmark::kMicrosecond);

// The same skin, already read, built on a new window as at start: its pictures
// decoded, the window's shape cut from the transparent colour, every element
// made and placed.
static void BM_BuildSkin(benchmark::State &state)
{
    const SkinDescription skin = readSkinFile(kShippedSkin);
    QuietDialogs dialogs;
    SystemClock clock;
    for (auto _ : state) {
        state.PauseTiming();
        auto window = std::make_unique<QWidget>();
        auto loader = std::make_unique<SkinLoader>(*window, dialogs, clock);
        state.ResumeTiming();
        const bool built = loader->LoadSkin(skin, kShippedSkin);
        state.PauseTiming();
        if (!built || loader->pictures().shape.isEmpty()) {
            state.SkipWithError("the shipped skin was not built");
            break;
        }
        loader.reset();
        window.reset();
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
    setLimit(state, 50);
}
BENCHMARK(BM_BuildSkin)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    return runBenchmarks(argc, argv);
}
