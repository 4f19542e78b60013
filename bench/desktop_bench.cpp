// The desktop's side of a running Velto as a user meets it: a second start
// asking what plays, playerctl over the session bus, a file handed over until
// it is heard, and what the accessibility layer costs while playing. Needs an
// X server and a private session bus (scripts/bench gives both).
#include "bench/limit.h"
#include "bench/procstat.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDataStream>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>

namespace {

const QString kService = QStringLiteral("org.mpris.MediaPlayer2.velto");

// 30 s of a quiet tone, 8 kHz mono: long enough to play through a benchmark.
bool writeTone(const QString &path)
{
    const qint32 rate = 8000, samples = rate * 30;
    QByteArray pcm(samples * 2, Qt::Uninitialized);
    for (qint32 i = 0; i < samples; ++i) {
        const auto v = qint16(3000 * std::sin(i * 2 * M_PI * 440 / rate));
        pcm[2 * i] = char(v & 0xff);
        pcm[2 * i + 1] = char((v >> 8) & 0xff);
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    QDataStream out(&file);
    out.setByteOrder(QDataStream::LittleEndian);
    out.writeRawData("RIFF", 4);
    out << quint32(36 + pcm.size());
    out.writeRawData("WAVEfmt ", 8);
    out << quint32(16) << quint16(1) << quint16(1) << quint32(rate) << quint32(rate * 2)
        << quint16(2) << quint16(16);
    out.writeRawData("data", 4);
    out << quint32(pcm.size());
    out.writeRawData(pcm.constData(), int(pcm.size()));
    return out.status() == QDataStream::Ok;
}

QVariant mprisProperty(const QString &name)
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        kService, QStringLiteral("/org/mpris/MediaPlayer2"),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call.setArguments({QStringLiteral("org.mpris.MediaPlayer2.Player"), name});
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, 2000);
    return reply.arguments().value(0).value<QDBusVariant>().variant();
}

QVariantMap metadata()
{
    const QVariant value = mprisProperty(QStringLiteral("Metadata"));
    return value.canConvert<QDBusArgument>() ? qdbus_cast<QVariantMap>(value) : value.toMap();
}

// A Velto of its own, playing a tone, with its home, settings and runtime
// folder in a temporary folder.
class Running
{
public:
    explicit Running(bool accessibilityOn = false)
    {
        const QString home = m_dir.path();
        QFile::setPermissions(home, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        m_env.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/config"));
        m_env.insert(QStringLiteral("XDG_DATA_HOME"), home + QStringLiteral("/data"));
        m_env.insert(QStringLiteral("XDG_RUNTIME_DIR"), home);
        m_env.insert(QStringLiteral("VELTO_AUDIO"), QStringLiteral("null"));
        m_env.remove(QStringLiteral("QT_QPA_PLATFORM"));
        if (accessibilityOn)
            m_env.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
        if (!writeTone(tone(0)) || !writeTone(tone(1)))
            return;
        m_velto.setProcessEnvironment(m_env);
        m_velto.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_velto.setStandardOutputFile(QProcess::nullDevice());
        m_velto.start(QStringLiteral(VELTO_BINARY), {QStringLiteral("--play"), tone(0)});
        if (!m_velto.waitForStarted(10000))
            return;
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 20000 && m_velto.state() == QProcess::Running) {
            if (mprisProperty(QStringLiteral("PlaybackStatus")).toString() ==
                QLatin1String("Playing")) {
                m_playing = true;
                return;
            }
            QThread::msleep(20);
        }
    }
    ~Running()
    {
        m_velto.terminate();
        if (!m_velto.waitForFinished(10000)) {
            m_velto.kill();
            m_velto.waitForFinished(5000);
        }
    }

    bool playing() const { return m_playing; }
    QProcessEnvironment environment() const { return m_env; }
    qint64 pid() const { return m_velto.processId(); }
    QString tone(int i) const { return m_dir.filePath(QStringLiteral("tone%1.wav").arg(i)); }

    // Seconds from launch to exit of a program run beside this Velto.
    double run(const QString &program, const QStringList &args) const
    {
        QProcess p;
        p.setProcessEnvironment(m_env);
        p.setStandardOutputFile(QProcess::nullDevice());
        QElapsedTimer clock;
        clock.start();
        p.start(program, args);
        if (!p.waitForFinished(10000) || p.exitCode() != 0)
            return -1;
        return clock.nsecsElapsed() / 1e9;
    }

private:
    QTemporaryDir m_dir;
    QProcessEnvironment m_env = QProcessEnvironment::systemEnvironment();
    QProcess m_velto;
    bool m_playing = false;
};

bool ready(benchmark::State &state)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        state.SkipWithError("no X server");
        return false;
    }
    if (!QDBusConnection::sessionBus().isConnected()) {
        state.SkipWithError("no session bus");
        return false;
    }
    return true;
}

// A Velto playing for the benchmark, or null with the reason given to it.
std::unique_ptr<Running> startPlaying(benchmark::State &state)
{
    if (!ready(state))
        return nullptr;
    auto velto = std::make_unique<Running>();
    if (!velto->playing()) {
        state.SkipWithError("velto did not play");
        return nullptr;
    }
    return velto;
}

// Launch to exit of a program run beside a playing Velto, once an iteration.
void timeLaunchToExit(benchmark::State &state, const QString &program, const QStringList &args,
                      double limitMs)
{
    const std::unique_ptr<Running> velto = startPlaying(state);
    if (!velto)
        return;
    for (auto _ : state) {
        const double seconds = velto->run(program, args);
        if (seconds < 0) {
            state.SkipWithError(qPrintable(program + QStringLiteral(" failed")));
            return;
        }
        state.SetIterationTime(seconds);
    }
    setLimit(state, limitMs);
}

// Launch to exit of `velto --status` while one plays. Limit 50 ms, given.
void BM_StatusFromASecondStart(benchmark::State &state)
{
    timeLaunchToExit(state, QStringLiteral(VELTO_BINARY), {QStringLiteral("--status")}, 50);
}
BENCHMARK(BM_StatusFromASecondStart)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20);

// Launch to exit of `playerctl -p velto status` while Velto plays: the round
// trip a desktop widget or a media key makes. Limit 20 ms, given.
void BM_PlayerctlStatus(benchmark::State &state)
{
    timeLaunchToExit(state, QStringLiteral("playerctl"),
                     {QStringLiteral("-p"), QStringLiteral("velto"), QStringLiteral("status")}, 20);
}
BENCHMARK(BM_PlayerctlStatus)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(20);

// One property read over the bus, the part of playerctl's figure that is
// Velto's. Limit 20 ms, the same as the whole round trip.
void BM_MprisPropertyRoundTrip(benchmark::State &state)
{
    const std::unique_ptr<Running> velto = startPlaying(state);
    if (!velto)
        return;
    for (auto _ : state)
        benchmark::DoNotOptimize(mprisProperty(QStringLiteral("Position")));
    setLimit(state, 20);
}
BENCHMARK(BM_MprisPropertyRoundTrip)->Unit(benchmark::kMillisecond)->Iterations(200);

// From launching `velto --play OTHER` beside a playing Velto until the bus
// reports the other file playing with its position moving. Limit 150 ms, given.
void BM_HandOverUntilHeard(benchmark::State &state)
{
    const std::unique_ptr<Running> playing = startPlaying(state);
    if (!playing)
        return;
    const Running &velto = *playing;
    int next = 1;
    for (auto _ : state) {
        const QString file = velto.tone(next);
        QProcess start;
        start.setProcessEnvironment(velto.environment());
        QElapsedTimer clock;
        clock.start();
        start.start(QStringLiteral(VELTO_BINARY), {QStringLiteral("--play"), file});
        bool heard = false;
        while (!heard && clock.elapsed() < 10000) {
            const QVariantMap now = metadata();
            heard = now.value(QStringLiteral("xesam:url"))
                        .toString()
                        .endsWith(QFileInfo(file).fileName()) &&
                    mprisProperty(QStringLiteral("Position")).toLongLong() > 0;
        }
        state.SetIterationTime(clock.nsecsElapsed() / 1e9);
        start.waitForFinished(10000);
        if (!heard) {
            state.SkipWithError("the handed file was not heard");
            return;
        }
        next = 1 - next;
    }
    setLimit(state, 150);
}
BENCHMARK(BM_HandOverUntilHeard)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(6);

// Per cent of one core Velto spends over 5 s of playing.
double playingCpuPercent(bool accessibilityOn)
{
    Running velto(accessibilityOn);
    if (!velto.playing())
        return -1;
    const double before = processCpuSeconds(velto.pid());
    QElapsedTimer clock;
    clock.start();
    QThread::msleep(5000);
    const double used = processCpuSeconds(velto.pid()) - before;
    return before < 0 ? -1 : 100.0 * used / (clock.nsecsElapsed() / 1e9);
}

// CPU while playing with Qt's accessibility bridge forced on (the names and
// values of the skin announced on the accessibility bus, as when a screen
// reader runs) against off, the user's case without one. The difference
// bounds what the layer adds; it is zero by construction when no reader
// listens. Limit 1 per cent of a core, given.
void BM_AccessibilityCpuWhilePlaying(benchmark::State &state)
{
    if (!ready(state))
        return;
    double off = -1, on = -1;
    for (auto _ : state) {
        off = playingCpuPercent(false);
        on = playingCpuPercent(true);
        if (off < 0 || on < 0) {
            state.SkipWithError("velto did not play");
            return;
        }
    }
    // To a hundredth: below that it is the rounding of the two rates.
    state.counters["cpu_pct"] = std::round(off * 100) / 100;
    state.counters["a11y_extra_pct"] = std::round((on - off) * 100) / 100 + 0.0;
    setLimit(state, 1, "a11y_extra_pct");
}
BENCHMARK(BM_AccessibilityCpuWhilePlaying)->Unit(benchmark::kSecond)->Iterations(1);

} // namespace

int main(int argc, char **argv)
{
    // The bus connection needs an application object; nothing is shown.
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
