#include "player/folderscan.h"
#include "player/playlist.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

// One folder of media shared by the list benchmarks: 32766 existing files.
struct ListFixture
{
    QTemporaryDir dir;
    QString list;

    ListFixture()
    {
        QByteArray bytes;
        for (int i = 0; i < Playlist::kMaxEntries; ++i) {
            const QString name = QStringLiteral("sub%1/%2_Track_Name.mp3").arg(i % 50).arg(i);
            if (i < 50)
                QDir(dir.path()).mkpath(QStringLiteral("sub%1").arg(i));
            QFile(dir.filePath(name)).open(QIODevice::WriteOnly);
            bytes += name.toUtf8() + "\r\n";
        }
        list = dir.filePath(QStringLiteral("big.m3u"));
        QFile out(list);
        out.open(QIODevice::WriteOnly);
        out.write(bytes);
    }
};

ListFixture &listFixture()
{
    static ListFixture fixture;
    return fixture;
}

void ReadFullM3u(benchmark::State &state)
{
    ListFixture &f = listFixture();
    for (auto _ : state) {
        PlaylistState list;
        Playlist(list).PlRead(f.list);
        benchmark::DoNotOptimize(list.PlPath.size());
    }
}
BENCHMARK(ReadFullM3u)->Unit(benchmark::kMillisecond);

void WriteFullM3u(benchmark::State &state)
{
    ListFixture &f = listFixture();
    PlaylistState list;
    Playlist(list).PlRead(f.list);
    const QString out = f.dir.filePath(QStringLiteral("out.m3u"));
    for (auto _ : state)
        benchmark::DoNotOptimize(Playlist(list).WritePL(out));
}
BENCHMARK(WriteFullM3u)->Unit(benchmark::kMillisecond);

void ScanTwentyThousandFiles(benchmark::State &state)
{
    QTemporaryDir dir;
    // 2000 folders, ten files each, three levels deep.
    for (int a = 0; a < 20; ++a)
        for (int b = 0; b < 100; ++b) {
            const QString folder = QStringLiteral("%1/%2/%3").arg(dir.path()).arg(a).arg(b);
            QDir().mkpath(folder);
            for (int i = 0; i < 10; ++i)
                QFile(QStringLiteral("%1/%2.mp3").arg(folder).arg(i)).open(QIODevice::WriteOnly);
        }
    for (auto _ : state) {
        PlaylistState list;
        FolderScan::scanAll(list, dir.path(), QStringLiteral("mp3"));
        benchmark::DoNotOptimize(list.PlPath.size());
    }
}
BENCHMARK(ScanTwentyThousandFiles)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
