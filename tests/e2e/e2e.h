#pragma once

#include <QColor>
#include <QImage>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QTemporaryDir>

#include <functional>

// The real velto binary in a temporary home on the X server named by DISPLAY.
class VeltoProcess
{
public:
    VeltoProcess();
    ~VeltoProcess();

    bool start(const QStringList &args = {});
    // Adds to the environment of the next start; the user's screen scaling
    // never reaches velto, so sizes are those of the skin unless a test says.
    void setEnvironment(const QString &name, const QString &value);
    // The X window id once the window is mapped, or empty after the timeout. The
    // margins are wide: a sanitizer build on a busy machine starts slowly.
    QString waitForWindow(int timeoutMs = 20000);
    bool waitForExit(int timeoutMs = 20000);
    // Sends the signal while velto runs. Never kill() the pid blindly: once the
    // process has gone its pid reads 0, and kill(0, ...) hits our whole group.
    void signal(int signo);
    qint64 pid() const { return m_process.processId(); }
    QString home(const QString &relative) const { return m_home.path() + '/' + relative; }
    QByteArray output() { return m_process.readAllStandardOutput(); }
    QProcess &process() { return m_process; }

private:
    QTemporaryDir m_home;
    QProcess m_process;
    QStringList m_args;
};

// A plain window of one colour covering the screen, beneath everything started
// after it; it counts the clicks that reach it.
class Backdrop
{
public:
    explicit Backdrop(QColor colour);
    ~Backdrop();
    int clicks() const;
    QRect geometry() const;

private:
    class Window;
    Window *m_window;
};

// The X server's picture of the screen (the test connects to it lazily).
QImage grabScreen();
// Lets the test's own windows handle their events until done() holds or the
// time is up; returns done(). The margin is for a busy machine only.
bool waitUntil(const std::function<bool()> &done, int timeoutMs = 20000);
// The window's geometry on the screen as xdotool reports it.
QRect windowGeometry(const QString &windowId);

// Runs xdotool with the arguments; returns its standard output, trimmed.
QString xdotool(const QStringList &args, int timeoutMs = 10000);
bool haveDisplay();
