#include "e2e.h"

#include <QDebug>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QRasterWindow>
#include <QRegularExpression>
#include <QScreen>
#include <QThread>

#include <csignal>

#include <gtest/gtest.h>

namespace {

const char *const kScalingVariables[] = {"QT_SCALE_FACTOR",
                                         "QT_SCREEN_SCALE_FACTORS",
                                         "QT_ENABLE_HIGHDPI_SCALING",
                                         "QT_SCALE_FACTOR_ROUNDING_POLICY",
                                         "QT_FONT_DPI",
                                         "VELTO_SCALE"};

} // namespace

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

bool VeltoProcess::start(const QStringList &args)
{
    m_args = args;
    m_process.start(QStringLiteral(VELTO_BINARY), args);
    return m_process.waitForStarted(5000);
}

QString VeltoProcess::waitForWindow(int timeoutMs)
{
    QElapsedTimer clock;
    clock.start();
    int retries = 3;
    while (clock.elapsed() < timeoutMs) {
        if (m_process.state() != QProcess::Running) {
            // Xvfb resets when its last client leaves and refuses clients
            // meanwhile: a start in that instant is the server's fault, not velto's.
            const QByteArray error = m_process.readAllStandardError();
            if (retries-- > 0 && error.contains("could not connect to display") && start(m_args))
                continue;
            qWarning() << "velto ended without a window; exit code" << m_process.exitCode()
                       << error;
            return {};
        }
        const QString ids = xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                     QStringLiteral("--pid"), QString::number(pid())},
                                    5000);
        if (!ids.isEmpty())
            return ids.split('\n').last();
        // Also notices an early exit, which a plain sleep would hide.
        m_process.waitForFinished(50);
    }
    qWarning() << "velto shows no window" << m_process.readAllStandardError();
    return {};
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

QString xdotool(const QStringList &args, int timeoutMs)
{
    QProcess p;
    p.start(QStringLiteral("xdotool"), args);
    if (!p.waitForFinished(timeoutMs)) {
        p.kill();
        p.waitForFinished();
        return {};
    }
    return QString::fromLocal8Bit(p.readAllStandardOutput()).trimmed();
}

bool haveDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY");
}

namespace {

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

} // namespace

class Backdrop::Window : public QRasterWindow
{
public:
    explicit Window(QColor colour) : m_colour(colour) { setFlags(Qt::FramelessWindowHint); }
    int clicks = 0;

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter(this).fillRect(QRect(QPoint(), size()), m_colour);
    }
    void mousePressEvent(QMouseEvent *) override { ++clicks; }

private:
    QColor m_colour;
};

Backdrop::Backdrop(QColor colour)
{
    guiApp();
    m_window = new Window(colour);
    m_window->setGeometry(QGuiApplication::primaryScreen()->geometry());
    m_window->show();
    const QPoint centre = m_window->geometry().center();
    if (!waitUntil(
            [&] { return m_window->isExposed() && QColor(grabScreen().pixel(centre)) == colour; }))
        ADD_FAILURE() << "the backdrop never showed";
}

Backdrop::~Backdrop()
{
    delete m_window;
}

int Backdrop::clicks() const
{
    return m_window->clicks;
}

QRect Backdrop::geometry() const
{
    return m_window->geometry();
}

QImage grabScreen()
{
    guiApp();
    return QGuiApplication::primaryScreen()->grabWindow(0).toImage();
}

bool waitUntil(const std::function<bool()> &done, int timeoutMs)
{
    guiApp();
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.elapsed() >= timeoutMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(10);
    }
    return true;
}

QRect windowGeometry(const QString &windowId)
{
    const QString text = xdotool({QStringLiteral("getwindowgeometry"), windowId});
    const auto pos = QRegularExpression(QStringLiteral("Position: (-?\\d+),(-?\\d+)")).match(text);
    const auto size = QRegularExpression(QStringLiteral("Geometry: (\\d+)x(\\d+)")).match(text);
    if (!pos.hasMatch() || !size.hasMatch())
        return {};
    return QRect(pos.captured(1).toInt(), pos.captured(2).toInt(), size.captured(1).toInt(),
                 size.captured(2).toInt());
}
