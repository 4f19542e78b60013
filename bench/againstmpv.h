#pragma once

#include "bench/limit.h"
#include "bench/procstat.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QThread>
#include <benchmark/benchmark.h>

#include <algorithm>

// The built program beside the benchmarks, else the one on the PATH.
inline QString veltoBinary()
{
    const QString built =
        QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../app/velto"));
    if (QFileInfo(built).isExecutable())
        return QFileInfo(built).canonicalFilePath();
    return QStandardPaths::findExecutable(QStringLiteral("velto"));
}

// Velto's settings and program folder under home, silent but timed.
inline QProcessEnvironment veltoEnvironment(const QString &home)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/config"));
    env.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/data"));
    env.insert(QStringLiteral("VELTO_AUDIO"), QStringLiteral("null"));
    // A real window where there is a display; the benchmark itself runs offscreen.
    if (!qEnvironmentVariableIsEmpty("DISPLAY"))
        env.remove(QStringLiteral("QT_QPA_PLATFORM"));
    return env;
}

struct RunFigures
{
    double cpuSeconds = -1; // -1 when the program ended early
    double rssMiB = -1;
};

// Starts a program and reads its CPU time over `seconds` of playback, leaving
// the first `settle` seconds out (start-up, loading, connecting).
inline RunFigures measurePlaying(const QString &program, const QStringList &args,
                                 const QProcessEnvironment &env, double settle, double seconds)
{
    QProcess process;
    process.setProcessEnvironment(env);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(program, args);
    RunFigures figures;
    if (!process.waitForStarted(10000))
        return figures;
    const qint64 pid = process.processId();
    QThread::msleep(qulonglong(settle * 1000));
    const double before = processCpuSeconds(pid);
    QThread::msleep(qulonglong(seconds * 1000));
    const double after = processCpuSeconds(pid);
    figures.rssMiB = residentMiB(pid);
    if (before >= 0 && after >= 0 && process.state() == QProcess::Running)
        figures.cpuSeconds = after - before;
    process.terminate();
    if (!process.waitForFinished(5000)) {
        process.kill();
        process.waitForFinished(5000);
    }
    return figures;
}

// Velto (in env) and `mpv --no-video --ao=null` playing the same address over
// the same 20 s, one after the other. Sets velto_cpu_s, mpv_cpu_s and
// cpu_vs_mpv_x (limit: cpuLimit times mpv's) and returns Velto's figures;
// cpuSeconds is -1 when the run was skipped.
inline RunFigures cpuAgainstMpv(benchmark::State &state, const QString &address,
                                const QProcessEnvironment &env, double cpuLimit)
{
    const double settle = 3, seconds = 20;
    const QString velto = veltoBinary();
    const QString mpv = QStandardPaths::findExecutable(QStringLiteral("mpv"));
    if (velto.isEmpty() || mpv.isEmpty()) {
        state.SkipWithError("needs mpv and the velto program");
        return {};
    }
    RunFigures ours, theirs;
    for (auto _ : state) {
        ours = measurePlaying(velto, {address}, env, settle, seconds);
        theirs =
            measurePlaying(mpv,
                           {QStringLiteral("--no-config"), QStringLiteral("--no-video"),
                            QStringLiteral("--ao=null"), QStringLiteral("--really-quiet"), address},
                           QProcessEnvironment::systemEnvironment(), settle, seconds);
        state.SetIterationTime(std::max(ours.cpuSeconds, 0.0));
    }
    if (ours.cpuSeconds < 0 || theirs.cpuSeconds <= 0) {
        state.SkipWithError("a player ended early or could not be measured");
        return {};
    }
    state.counters["velto_cpu_s"] = ours.cpuSeconds;
    state.counters["mpv_cpu_s"] = theirs.cpuSeconds;
    state.counters["cpu_vs_mpv_x"] = ours.cpuSeconds / theirs.cpuSeconds;
    setLimit(state, cpuLimit, "cpu_vs_mpv_x");
    return ours;
}
