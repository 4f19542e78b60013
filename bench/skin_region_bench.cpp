#include "bench/benchsupport.h"
#include "bench/limit.h"
#include "skin/windowshape.h"

#include <QBitmap>
#include <QGuiApplication>
#include <QImage>
#include <QPolygon>
#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

namespace {

constexpr quint32 kCut = 0xFF00FF;

// The window's shape is built with the skin: a fifth of the 100 ms a skin
// switch may take.
constexpr double kLimitMs = 20;

// A large main picture with scattered transparent runs, as a skin with many cut-outs has;
// the second one carries an alpha channel, as a PNG skin may.
const QImage &mainPicture(bool alpha)
{
    static const QImage opaque = [] {
        QImage picture(1600, 1200, QImage::Format_RGB32);
        std::mt19937 random(1600);
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                picture.setPixel(x, y, qRgb(x & 0xFF, y & 0xFF, 0x40));
        for (int i = 0; i < 20000; ++i) {
            const int x = int(random() % 1600u);
            const int y = int(random() % 1200u);
            const int length = 1 + int(random() % 40u);
            for (int k = x; k < std::min(1600, x + length); ++k)
                picture.setPixel(k, y, qRgb(0xFF, 0x00, 0xFF));
        }
        return picture;
    }();
    static const QImage translucent = opaque.convertToFormat(QImage::Format_ARGB32);
    return alpha ? translucent : opaque;
}

QList<QPoint> circle(int radius, int points)
{
    QList<QPoint> outline;
    for (int i = 0; i < points; ++i) {
        const double a = 2 * M_PI * i / points;
        outline.append(QPoint(radius + int(std::lround(radius * std::cos(a))),
                              radius + int(std::lround(radius * std::sin(a)))));
    }
    return outline;
}

// A round window as tall as the large picture, and a wedge: Qt's polygon region grows
// quadratically with the rows of a wedge (0.8 s at 8000 rows, 14 s at 32767 in a fresh
// process). Registered first because a heap warmed by the bitmap runs hides most of that.
QList<QPoint> outline(int shape, int height)
{
    if (shape == 0)
        return circle(height / 2, 720);
    return {{0, 0}, {height, 0}, {0, height}};
}

void BM_PolygonRegion(benchmark::State &state)
{
    const QList<QPoint> points = outline(int(state.range(0)), int(state.range(1)));
    for (auto _ : state)
        benchmark::DoNotOptimize(polygonRegion(points));
    setLimit(state, kLimitMs);
}
BENCHMARK(BM_PolygonRegion)
    ->Unit(benchmark::kMillisecond)
    ->ArgNames({"wedge", "rows"})
    ->Args({0, 1200})
    ->Args({1, 1200})
    ->Args({1, 8000});

// The route not taken: Qt's own polygon region.
void BM_QtPolygonRegion(benchmark::State &state)
{
    const QPolygon points(outline(int(state.range(0)), int(state.range(1))));
    for (auto _ : state)
        benchmark::DoNotOptimize(QRegion(points, Qt::WindingFill));
    setLimit(state, kLimitMs);
    markComparison(state);
}
BENCHMARK(BM_QtPolygonRegion)
    ->Unit(benchmark::kMillisecond)
    ->ArgNames({"wedge", "rows"})
    ->Args({0, 1200})
    ->Args({1, 1200})
    ->Args({1, 8000})
    ->Iterations(3);

void BM_RegionFromBitmap(benchmark::State &state)
{
    const QImage &picture = mainPicture(state.range(0) != 0);
    int rects = 0;
    for (auto _ : state) {
        const QRegion region = RegionFromBitmap(picture, kCut);
        rects = region.rectCount();
        benchmark::DoNotOptimize(region);
    }
    state.counters["rects"] = rects;
    setLimit(state, kLimitMs);
}
BENCHMARK(BM_RegionFromBitmap)->Unit(benchmark::kMillisecond)->ArgName("alpha")->Arg(0)->Arg(1);

// The definition: one rectangle subtracted per run.
void BM_RegionFromBitmapByRuns(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(regionFromBitmapByRuns(mainPicture(false), kCut));
    setLimit(state, kLimitMs);
    markComparison(state);
}
BENCHMARK(BM_RegionFromBitmapByRuns)->Unit(benchmark::kMillisecond)->Iterations(3);

// The route not taken: a colour mask turned into a bitmap. QImage's mask marks the matching
// pixels and QRegion(QBitmap) keeps the unmarked ones. The mask compares alpha too, so a
// picture with an alpha channel must be made opaque first, which costs more than the scan.
QRegion regionFromColourMask(const QImage &picture)
{
    const QImage opaque =
        picture.hasAlphaChannel() ? picture.convertToFormat(QImage::Format_RGB32) : picture;
    return QRegion(
        QBitmap::fromImage(opaque.createMaskFromColor(qRgb(0xFF, 0x00, 0xFF), Qt::MaskInColor)));
}

void BM_RegionFromColourMask(benchmark::State &state)
{
    const QImage &picture = mainPicture(state.range(0) != 0);
    if (!regionFromColourMask(picture).xored(RegionFromBitmap(picture, kCut)).isEmpty()) {
        state.SkipWithError("mask route builds another region");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(regionFromColourMask(picture));
    setLimit(state, kLimitMs);
    markComparison(state);
}
BENCHMARK(BM_RegionFromColourMask)->Unit(benchmark::kMillisecond)->ArgName("alpha")->Arg(0)->Arg(1);

} // namespace

int main(int argc, char **argv)
{
    // QBitmap needs a GUI application; no screen is needed.
    return runBenchmarks<QGuiApplication>(argc, argv);
}
