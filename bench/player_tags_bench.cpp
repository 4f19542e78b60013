// What an item's start reads (frame information, lyrics, an embedded cover)
// and what each tick does with the lyrics. Limits: 10 ms for each read, so
// together they stay well inside the 60 ms from PlayIt to sound; 10 us a
// tick, a fifth of the tick's 50 us.
#include "bench/limit.h"
#include "player/embeddedcover.h"
#include "player/lyrics.h"
#include "player/mp3info.h"

#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace {

QByteArray lyricFile(int lines)
{
    QByteArray file = "VELTO LYRIC\n";
    for (int n = 1; n <= lines; ++n)
        file += ":" + QByteArray::number(n * 1000).rightJustified(9, '0') +
                ": a line of words to sing along with " + QByteArray::number(n) + "\n";
    return file;
}

void GetMP3InfoOn10MB(benchmark::State &state)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("big.mp3"));
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly))
        return state.SkipWithError("cannot write the test file");
    QByteArray audio(10 * 1024 * 1024, char(0x55));
    audio.replace(0, 4, "\xFF\xFB\x90\x44");
    audio.replace(audio.size() - 128, 3, "TAG");
    out.write(audio);
    out.close();
    for (auto _ : state)
        benchmark::DoNotOptimize(GetMP3Info(path));
    setLimit(state, 10000);
}
BENCHMARK(GetMP3InfoOn10MB)->Unit(benchmark::kMicrosecond);

void LoadLyricsOf500Lines(benchmark::State &state)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("song.lyr"));
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly))
        return state.SkipWithError("cannot write the test file");
    out.write(lyricFile(500));
    out.close();
    for (auto _ : state)
        benchmark::DoNotOptimize(LoadLyrics(path));
    setLimit(state, 10000);
}
BENCHMARK(LoadLyricsOf500Lines)->Unit(benchmark::kMicrosecond);

// One 100 ms tick; every 50th tick seeks back to the start, which forces the search.
void PlayLyricsPerTick(benchmark::State &state)
{
    const LyricsData lyrics = readLyr(lyricFile(500));
    qint64 position = 0;
    int line = 1;
    for (auto _ : state) {
        position = position > 500000 ? 0 : position + 100;
        line = PlayLyrics(lyrics, position, line).line;
        benchmark::DoNotOptimize(line);
    }
    setLimit(state, 10000);
}
BENCHMARK(PlayLyricsPerTick)->Unit(benchmark::kNanosecond);

// Worst case: past the last line every tick searches the whole table.
void PlayLyricsSearchEveryTick(benchmark::State &state)
{
    const LyricsData lyrics = readLyr(lyricFile(500));
    for (auto _ : state)
        benchmark::DoNotOptimize(PlayLyrics(lyrics, 900000, 500));
    setLimit(state, 10000);
}
BENCHMARK(PlayLyricsSearchEveryTick)->Unit(benchmark::kNanosecond);

QByteArray box(const char *type, const QByteArray &body)
{
    QByteArray size(4, '\0');
    for (int i = 0; i < 4; ++i)
        size[i] = char((body.size() + 8) >> (24 - 8 * i));
    return size + type + body;
}

// An M4A whose tags follow 10 MB of audio: only the box headers on the way are read.
void EmbeddedCoverBehind10MBOfAudio(benchmark::State &state)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("big.m4a"));
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly))
        return state.SkipWithError("cannot write the test file");
    const QByteArray picture(200 * 1024, char(0x77));
    const QByteArray meta =
        box("meta", QByteArray(4, '\0') +
                        box("ilst", box("covr", box("data", QByteArray(8, '\0') + picture))));
    out.write(box("ftyp", "M4A \0\0\0\0") + box("mdat", QByteArray(10 * 1024 * 1024, char(0x55))) +
              box("moov", box("udta", meta)));
    out.close();
    QFile in(path);
    if (!in.open(QIODevice::ReadOnly))
        return state.SkipWithError("cannot read the test file");
    for (auto _ : state)
        benchmark::DoNotOptimize(readEmbeddedPicture(in));
    setLimit(state, 10000);
}
BENCHMARK(EmbeddedCoverBehind10MBOfAudio)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
