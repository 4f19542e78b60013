#include "e2e.h"

#include <QElapsedTimer>
#include <QThread>

#include <csignal>

VeltoProcess::VeltoProcess()
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("HOME"), m_home.path());
    env.insert(QStringLiteral("XDG_CONFIG_HOME"), m_home.path() + QStringLiteral("/config"));
    env.insert(QStringLiteral("XDG_DATA_HOME"), m_home.path() + QStringLiteral("/data"));
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_home.path());
    env.remove(QStringLiteral("QT_QPA_PLATFORM"));
    env.remove(QStringLiteral("WAYLAND_DISPLAY"));
    m_process.setProcessEnvironment(env);
    m_process.setProcessChannelMode(QProcess::SeparateChannels);
}

VeltoProcess::~VeltoProcess()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(3000);
    }
}

bool VeltoProcess::start(const QStringList &args)
{
    m_process.start(QStringLiteral(VELTO_BINARY), args);
    return m_process.waitForStarted(5000);
}

QString VeltoProcess::waitForWindow(int timeoutMs)
{
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < timeoutMs && m_process.state() == QProcess::Running) {
        const QString ids = xdotool({QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                     QStringLiteral("--pid"), QString::number(pid())},
                                    2000);
        if (!ids.isEmpty())
            return ids.split('\n').last();
        QThread::msleep(50);
    }
    return {};
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
