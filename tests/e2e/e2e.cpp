#include "e2e.h"

#include <QDebug>
#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QSettings>
#include <QtCore/qtestsupport_core.h>

namespace {

const char *const kScalingVariables[] = {"QT_SCALE_FACTOR",
                                         "QT_SCREEN_SCALE_FACTORS",
                                         "QT_ENABLE_HIGHDPI_SCALING",
                                         "QT_SCALE_FACTOR_ROUNDING_POLICY",
                                         "QT_FONT_DPI",
                                         "VELTO_SCALE"};

QStringList splitFields(const QString &line)
{
    QStringList fields;
    QString field;
    bool quoted = false;
    for (const QChar c : line) {
        if (c == QLatin1Char('"'))
            quoted = !quoted;
        else if (c == QLatin1Char(',') && !quoted)
            fields << field.trimmed(), field.clear();
        else
            field += c;
    }
    fields << field.trimmed();
    return fields;
}

// Runs the program to its end, or kills it once the time is up.
VeltoRun finish(QProcess &p, const QString &program, const QStringList &args, int timeoutMs)
{
    p.start(program, args);
    VeltoRun run;
    if (!p.waitForFinished(timeoutMs)) {
        p.kill();
        p.waitForFinished();
        return run;
    }
    run.exitCode = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    run.out = QString::fromLocal8Bit(p.readAllStandardOutput());
    run.err = QString::fromLocal8Bit(p.readAllStandardError());
    return run;
}

} // namespace

QGuiApplication &guiApp()
{
    static int argc = 1;
    static char name[] = "e2e_tests";
    static char *argv[] = {name, nullptr};
    static QGuiApplication *app = [] {
        qputenv("QT_QPA_PLATFORM", "xcb");
        // Screen pixels, one for one, whatever the user's scaling.
        for (const char *name : kScalingVariables)
            qunsetenv(name);
        return new QGuiApplication(argc, argv);
    }();
    return *app;
}

VeltoProcess::VeltoProcess()
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("HOME"), m_home.path());
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.path() + QStringLiteral("/config"));
    env.insert(QStringLiteral("XDG_DATA_HOME"), m_home.path() + QStringLiteral("/data"));
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_home.path());
    env.remove(QStringLiteral("QT_QPA_PLATFORM"));
    env.remove(QStringLiteral("WAYLAND_DISPLAY"));
    for (const char *name : kScalingVariables)
        env.remove(QString::fromLatin1(name));
#ifdef VELTO_NETGUARD
    // Whatever the program tries to reach beyond this machine is refused and noted.
    env.insert(QStringLiteral("LD_PRELOAD"), QStringLiteral(VELTO_NETGUARD));
    env.insert(QStringLiteral("VELTO_NETGUARD_LOG"),
               m_home.path() + QStringLiteral("/netguard.log"));
#endif
    // In the sanitizer build a report from velto goes to a file the test
    // reads at the end: its exit code and output are the test's own to check.
    for (const char *name : {"ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS"}) {
        const QString options = env.value(QLatin1String(name));
        env.insert(QLatin1String(name), options + (options.isEmpty() ? "" : ":") +
                                            "log_path=" + m_home.path() + "/sanitizer");
    }
    m_process.setProcessEnvironment(env);
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
}

VeltoProcess::~VeltoProcess()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(3000);
    } else if (m_process.exitStatus() == QProcess::CrashExit) {
        ADD_FAILURE() << "velto crashed: " << m_process.readAllStandardError().toStdString();
    }
    QFile refused(m_home.path() + QStringLiteral("/netguard.log"));
    if (refused.open(QIODevice::ReadOnly))
        ADD_FAILURE() << "velto tried to leave the machine: " << refused.readAll().toStdString();
    const QDir home(m_home.path());
    for (const QString &name : home.entryList({QStringLiteral("sanitizer.*")}, QDir::Files)) {
        QFile report(home.filePath(name));
        report.open(QIODevice::ReadOnly);
        ADD_FAILURE() << "velto's sanitizer report:\n" << report.readAll().toStdString();
    }
}

void VeltoProcess::setEnvironment(const QString &name, const QString &value)
{
    QProcessEnvironment env = m_process.processEnvironment();
    env.insert(name, value);
    m_process.setProcessEnvironment(env);
}

void VeltoProcess::writeSettings(const QList<std::pair<QString, QString>> &values) const
{
    QSettings ini(home(QStringLiteral("config/velto/velto.ini")), QSettings::IniFormat);
    for (const auto &[name, value] : values)
        ini.setValue(QStringLiteral("config/") + name, value);
}

bool VeltoProcess::start(const QStringList &args)
{
    m_args = args;
    // A process started before the application object is never seen to end:
    // its notifiers need the event dispatcher the application brings.
    guiApp();
    m_process.start(QStringLiteral(VELTO_BINARY), args);
    return m_process.waitForStarted(5000);
}

QString VeltoProcess::startWindow(const QStringList &args, int timeoutMs)
{
    return start(args) ? waitForWindow(timeoutMs) : QString();
}

QStringList VeltoProcess::windows(int timeoutMs) const
{
    return xdotool({"search", "--onlyvisible", "--pid", QString::number(pid())}, timeoutMs)
        .split('\n', Qt::SkipEmptyParts);
}

QString VeltoProcess::waitForWindow(int timeoutMs)
{
    QStringList ids;
    // Also notices an early exit, which waiting for the window alone would hide.
    const auto shownOrGone = [&] { return finished() || !(ids = windows(5000)).isEmpty(); };
    for (int retries = 3; QTest::qWaitFor(shownOrGone, timeoutMs) && ids.isEmpty(); --retries) {
        // Xvfb resets when its last client leaves and refuses clients
        // meanwhile: a start in that instant is the server's fault, not velto's.
        const QByteArray error = m_process.readAllStandardError();
        if (retries == 0 || !error.contains("could not connect to display") || !start(m_args)) {
            qWarning() << "velto ended without a window; exit code" << m_process.exitCode()
                       << error;
            return {};
        }
    }
    if (ids.isEmpty())
        qWarning() << "velto shows no window" << m_process.readAllStandardError();
    return ids.isEmpty() ? QString() : ids.last();
}

void VeltoProcess::signal(int signo)
{
    const qint64 pid = m_process.processId();
    if (pid > 0 && m_process.state() == QProcess::Running)
        ::kill(pid_t(pid), signo);
}

bool VeltoProcess::waitForExit(int timeoutMs)
{
    return m_process.waitForFinished(timeoutMs) && m_process.exitStatus() == QProcess::NormalExit;
}

Companion::~Companion()
{
    if (state() == NotRunning)
        return;
    terminate();
    if (!waitForFinished(3000)) {
        kill();
        waitForFinished(3000);
    }
}

VeltoRun runVelto(const QProcessEnvironment &env, const QStringList &args, const QString &folder)
{
    QProcess p;
    p.setProcessEnvironment(env);
    p.setWorkingDirectory(folder);
    return finish(p, QStringLiteral(VELTO_BINARY), args, 20000);
}

QString xdotool(const QStringList &args, int timeoutMs)
{
    QProcess p;
    return finish(p, QStringLiteral("xdotool"), args, timeoutMs).out.trimmed();
}

void click(QPoint at, const char *button)
{
    xdotool({"mousemove", QString::number(at.x()), QString::number(at.y()), "click", button});
}

void doubleClick(QPoint at)
{
    xdotool({"mousemove", QString::number(at.x()), QString::number(at.y()), "click", "--repeat",
             "2", "--delay", "80", "1"});
}

void key(const QString &name)
{
    xdotool({"key", name});
}

void focusPlaylist(const QString &windowId)
{
    const QRect list = shippedSkin(QStringLiteral("default.skin")).rect(QStringLiteral("X1"));
    click(windowGeometry(windowId).topLeft() + list.topLeft() + QPoint(20, 8));
}

std::optional<QString> atspiClient(const QStringList &args)
{
    QProcess client;
    client.start(QStringLiteral("/usr/bin/python3"),
                 QStringList{QStringLiteral(VELTO_ATSPI_CLIENT), QStringLiteral("velto")} + args);
    if (!client.waitForFinished(40000) || client.exitStatus() != QProcess::NormalExit ||
        client.exitCode() != 0)
        return std::nullopt;
    return QString::fromUtf8(client.readAllStandardOutput());
}

std::optional<std::string> atspiMissing()
{
    if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return "no session bus (ctest runs these under dbus-run-session)";
    if (QProcess::execute(QStringLiteral("/usr/bin/python3"),
                          {QStringLiteral("-c"), QStringLiteral("import pyatspi")}) != 0)
        return "python3-pyatspi is not installed";
    return std::nullopt;
}

QImage grabScreen()
{
    guiApp();
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage();
}

QImage grabScreen(const QString &windowId, const QRect &inWindow)
{
    return grabScreen().copy(inWindow.translated(windowGeometry(windowId).topLeft()));
}

QColor screenPixel(QPoint at)
{
    return QColor(grabScreen().pixel(at));
}

bool waitUntil(const std::function<bool()> &done, int timeoutMs)
{
    guiApp();
    return QTest::qWaitFor(done, timeoutMs);
}

QRect windowGeometry(const QString &windowId)
{
    QHash<QString, int> v;
    for (const QString &line : xdotool({"getwindowgeometry", "--shell", windowId}).split('\n'))
        v.insert(line.section('=', 0, 0), line.section('=', 1).toInt());
    return v.contains("HEIGHT") ? QRect(v["X"], v["Y"], v["WIDTH"], v["HEIGHT"]) : QRect();
}

QRect ShippedSkin::rect(const QString &code) const
{
    const QStringList f = records.value(code);
    if (f.size() < 5)
        return {};
    return QRect(f[1].toInt(), f[2].toInt(), f[3].toInt(), f[4].toInt());
}

QRect ShippedSkin::digits(const QString &code, int cells) const
{
    const QStringList f = records.value(code);
    if (f.size() < 7)
        return {};
    return QRect(f[1].toInt(), f[2].toInt(), f[5].toInt() * cells, f[6].toInt());
}

ShippedSkin shippedSkin(const QString &name)
{
    ShippedSkin skin;
    QFile file(QStringLiteral(VELTO_DATA_DIR "/skins/") + name);
    if (!file.open(QIODevice::ReadOnly))
        return skin;
    for (const QString &line : QString::fromUtf8(file.readAll()).split('\n')) {
        const QStringList f = splitFields(line);
        if (f.size() >= 3 && f[0] == QLatin1String("W"))
            skin.size = QSize(f[1].toInt(), f[2].toInt());
        else if (!f[0].isEmpty() && !skin.records.contains(f[0]))
            skin.records.insert(f[0], f);
    }
    return skin;
}
