#include "skin/skinloader.h"

#include "bench/benchsupport.h"
#include "bench/limit.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <QWidget>
#include <benchmark/benchmark.h>

#include <memory>

namespace {

// A large skin with a digit group, a few buttons and labels, as a big window
// would be drawn: the picture changes everywhere so no fill can stand in for it.
struct LargeSkin
{
    QTemporaryDir dir;
    QuietDialogs dialogs;
    SystemClock clock;
    QWidget window;
    std::unique_ptr<SkinLoader> loader;

    explicit LargeSkin(int scale)
    {
        QImage main(1600, 1200, QImage::Format_RGB32);
        for (int y = 0; y < main.height(); ++y)
            for (int x = 0; x < main.width(); ++x)
                main.setPixel(x, y, qRgb(x & 0xFF, y & 0xFF, (x ^ y) & 0xFF));
        QImage resource(400, 100, QImage::Format_RGB32);
        resource.fill(qRgb(20, 200, 90));
        main.save(dir.filePath(QStringLiteral("main.png")));
        resource.save(dir.filePath(QStringLiteral("res.png")));
        QFile skin(dir.filePath(QStringLiteral("large.skin")));
        if (skin.open(QIODevice::WriteOnly))
            skin.write("\"Velto Skin\",\"Large\"\n1,0\n\"Main\",\"main.png\"\n"
                       "\"Resource\",\"res.png\"\n\"*\",\"\"\n0,0,0,0,0,0,0,0\n"
                       "D0,100,100,0,0,16,28,7,0,0,5,\"~\"\n"
                       "B12,10,10,40,40,0,0,\"a\",\"Play\"\nB10,60,10,40,40,40,0,\"b\",\"Stop\"\n"
                       "L1,200,100,300,20,255,255,255,10,\"DejaVu Sans\",\"~\"\n"
                       "I2,10,60,8,8,0,255,0,1,\"~\"\nE\n");
        skin.close();
        loader = std::make_unique<SkinLoader>(window, dialogs, clock);
        loader->setScale(scale);
        loader->LoadSkin(skin.fileName());
    }
};

// The whole window repainted, as when it is uncovered. Limit 16.7 ms, one
// frame at 60 Hz, so dragging another window across it leaves no trail.
void BM_FullRepaint(benchmark::State &state)
{
    const int scale = int(state.range(0));
    LargeSkin skin(scale);
    QImage target(skin.window.size(), QImage::Format_RGB32);
    for (auto _ : state) {
        QPainter p(&target);
        skin.loader->paint(p, target.rect());
        p.end();
        benchmark::DoNotOptimize(target.constBits());
    }
    // A repaint that skipped work would be fast and wrong.
    const QImage &canvas = skin.loader->canvas();
    if (target.pixel(target.width() - 1, target.height() - 1) !=
        canvas.pixel(canvas.width() - 1, canvas.height() - 1))
        state.SkipWithError("the repaint does not show the picture");
    state.SetLabel(std::to_string(target.width()) + "x" + std::to_string(target.height()));
    setLimit(state, 16.7);
}
BENCHMARK(BM_FullRepaint)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

// What one clock tick costs: the time drawn, then only its cell repainted.
// Limit 50 us, the budget of a whole tick.
void BM_SetDDAndRepaintItsCell(benchmark::State &state)
{
    LargeSkin skin(1);
    QImage target(skin.window.size(), QImage::Format_RGB32);
    const QRect cell(100, 100, 5 * 16, 28);
    int seconds = 0;
    for (auto _ : state) {
        skin.loader->SetDD(0, ++seconds);
        QPainter p(&target);
        skin.loader->paint(p, cell);
        p.end();
        benchmark::DoNotOptimize(target.constBits());
    }
    setLimit(state, 50);
}
BENCHMARK(BM_SetDDAndRepaintItsCell)->Unit(benchmark::kMicrosecond);

// Switching to the large skin, read and built. Limit 100 ms: a click that
// changes the skin should feel immediate.
void BM_LoadSkin(benchmark::State &state)
{
    LargeSkin skin(1);
    const QString file = skin.loader->file();
    for (auto _ : state)
        benchmark::DoNotOptimize(skin.loader->LoadSkin(file));
    setLimit(state, 100);
}
BENCHMARK(BM_LoadSkin)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return runBenchmarks(argc, argv);
}
