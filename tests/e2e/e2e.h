#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

// The real velto binary in a temporary home on the X server named by DISPLAY.
class VeltoProcess
{
public:
    VeltoProcess();
    ~VeltoProcess();

    bool start(const QStringList &args = {});
    // The X window id once the window is mapped, or empty after the timeout.
    QString waitForWindow(int timeoutMs = 10000);
    bool waitForExit(int timeoutMs = 10000);
    qint64 pid() const { return m_process.processId(); }
    QString home(const QString &relative) const { return m_home.path() + '/' + relative; }
    QByteArray output() { return m_process.readAllStandardOutput(); }

private:
    QTemporaryDir m_home;
    QProcess m_process;
};

// Runs xdotool with the arguments; returns its standard output, trimmed.
QString xdotool(const QStringList &args, int timeoutMs = 10000);
bool haveDisplay();
