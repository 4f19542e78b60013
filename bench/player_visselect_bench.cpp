// The visual playlist selector. Limits: a tree of 2,000 playlists is listed
// within 1 s; a page of sixteen 3000 x 3000 pictures shows within 100 ms,
// decoded and scaled on worker threads, and at once from the cache when the
// page comes back; while a scan runs, the window waits at most 100 ms for its
// turn, so Stop and paging answer at once.
#include "bench/benchsupport.h"
#include "bench/eventloop.h"
#include "bench/limit.h"
#include "player/vispictures.h"
#include "player/visscan.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

QTemporaryDir &workDir()
{
    static QTemporaryDir dir;
    return dir;
}

// folders x perFolder playlists, one folder level deep.
QString tree(int folders, int perFolder)
{
    const QString root =
        workDir().filePath(QStringLiteral("tree%1x%2").arg(folders).arg(perFolder));
    if (QFileInfo(root).isDir())
        return root;
    for (int f = 0; f < folders; ++f) {
        const QString folder = QStringLiteral("%1/folder%2").arg(root).arg(f);
        QDir().mkpath(folder);
        for (int i = 0; i < perFolder; ++i) {
            QFile list(QStringLiteral("%1/list%2.m3u").arg(folder).arg(i));
            list.open(QIODevice::WriteOnly);
            list.write("song.mp3\n");
        }
        QFile notes(folder + QStringLiteral("/notes.txt"));
        notes.open(QIODevice::WriteOnly);
    }
    return root;
}

// Sixteen playlists, each with a 3000 x 3000 photograph-like JPEG cover.
QStringList pageOfCovers()
{
    static const QStringList entries = [] {
        const QString folder = workDir().filePath(QStringLiteral("covers"));
        QDir().mkpath(folder);
        QImage picture(3000, 3000, QImage::Format_RGB32);
        QStringList lists;
        for (int i = 0; i < 16; ++i) {
            QPainter painter(&picture);
            QLinearGradient gradient(0, 0, 3000, 3000);
            gradient.setColorAt(0, QColor::fromHsv(i * 20, 200, 220));
            gradient.setColorAt(1, QColor::fromHsv((i * 20 + 90) % 360, 120, 60));
            painter.fillRect(picture.rect(), gradient);
            painter.end();
            const QString base = QStringLiteral("%1/album%2").arg(folder).arg(i);
            picture.save(base + QStringLiteral(".jpg"), "JPG", 85);
            lists << base + QStringLiteral(".m3u");
        }
        return lists;
    }();
    return entries;
}

void runUntil(const std::function<bool()> &done)
{
    while (!done())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
}

void ScanTwoThousandPlaylists(benchmark::State &state)
{
    const QString root = tree(40, 50);
    VisScan scan;
    for (auto _ : state) {
        scan.scan(root);
        runUntil([&] { return !scan.isRunning(); });
        if (scan.count() != 2000)
            state.SkipWithError("not every playlist was found");
    }
    setLimit(state, 1000);
}
BENCHMARK(ScanTwoThousandPlaylists)->Unit(benchmark::kMillisecond);

// The longest the event loop waits while 20,000 playlists are listed.
void WaitForTheWindowDuringAScan(benchmark::State &state)
{
    const QString root = tree(100, 200);
    double longest = 0;
    for (auto _ : state) {
        VisScan scan;
        scan.scan(root);
        const LoopGaps gaps;
        runUntil([&] { return !scan.isRunning(); });
        longest = std::max(longest, gaps.longestMs());
    }
    state.counters["longest_wait_ms"] = longest;
    setLimit(state, 100, "longest_wait_ms");
}
BENCHMARK(WaitForTheWindowDuringAScan)->Unit(benchmark::kMillisecond)->Iterations(1);

void ShowPageOfLargePictures(benchmark::State &state)
{
    const QStringList entries = pageOfCovers();
    for (auto _ : state) {
        VisPictures pictures(QString(), QSize(96, 96)); // nothing cached yet
        int shown = 0;
        QObject::connect(&pictures, &VisPictures::pictureReady,
                         [&](int, int, const QImage &) { ++shown; });
        pictures.request(1, entries);
        runUntil([&] { return shown == 16; });
    }
    setLimit(state, 100);
}
BENCHMARK(ShowPageOfLargePictures)->Unit(benchmark::kMillisecond)->UseRealTime();

void ShowPageAgainFromTheCache(benchmark::State &state)
{
    const QStringList entries = pageOfCovers();
    VisPictures pictures(QString(), QSize(96, 96));
    int shown = 0;
    QObject::connect(&pictures, &VisPictures::pictureReady,
                     [&](int, int, const QImage &) { ++shown; });
    pictures.request(1, entries);
    runUntil([&] { return shown == 16; });
    for (auto _ : state) {
        shown = 0;
        pictures.request(2, entries);
        if (shown != 16)
            state.SkipWithError("the page was not kept");
    }
    setLimit(state, 100);
}
BENCHMARK(ShowPageAgainFromTheCache)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return runBenchmarks<QCoreApplication>(argc, argv);
}
