#include "bench/limit.h"
#include "core/settings.h"
#include "platform/settingsstore.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>

// Start-up reads every option; shut-down writes them all and puts the file on
// disk. Limits: 5 ms to read, a twentieth of the 100 ms to the first frame;
// 50 ms to write, half of the 100 ms in which a closing window should be gone.
static void BM_SettingsReadAll(benchmark::State &state)
{
    QTemporaryDir dir;
    const QString ini = dir.filePath(QStringLiteral("velto.ini"));
    {
        IniSettingsStore store(ini);
        ConfigStore(store).WriteAll(Settings());
    }
    for (auto _ : state) {
        IniSettingsStore store(ini);
        Settings s;
        ConfigStore config(store);
        config.ReadAll(s);
        config.ReadPosition(s, 0, 0);
        benchmark::DoNotOptimize(s);
    }
    setLimit(state, 5000);
}
BENCHMARK(BM_SettingsReadAll)->Unit(benchmark::kMicrosecond);

static void BM_SettingsWriteAll(benchmark::State &state)
{
    QTemporaryDir dir;
    const QString ini = dir.filePath(QStringLiteral("velto.ini"));
    IniSettingsStore store(ini);
    Settings s;
    s.WinSavePos = 1;
    for (auto _ : state) {
        s.X = qint16(s.X + 1);
        ConfigStore(store).WriteAll(s);
    }
    setLimit(state, 50000);
}
BENCHMARK(BM_SettingsWriteAll)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
