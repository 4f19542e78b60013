#pragma once

#include <QColor>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <functional>
#include <optional>
#include <string>

#include <gtest/gtest.h>

// The real velto binary in a temporary home on the X server named by DISPLAY.
class VeltoProcess
{
public:
    VeltoProcess();
    ~VeltoProcess();

    bool start(const QStringList &args = {});
    // start() and waitForWindow(): the window's id, or empty.
    QString startWindow(const QStringList &args = {}, int timeoutMs = 20000);
    // Adds to the environment of the next start; the user's screen scaling
    // never reaches velto, so sizes are those of the skin unless a test says.
    void setEnvironment(const QString &name, const QString &value);
    // Settings ("config/" keys) written before start(), as the preferences would.
    void writeSettings(const QList<std::pair<QString, QString>> &values) const;
    QProcessEnvironment environment() const { return m_process.processEnvironment(); }
    // The X window id once the window is mapped, or empty after the timeout. The
    // margins are wide: a sanitizer build on a busy machine starts slowly.
    QString waitForWindow(int timeoutMs = 20000);
    bool waitForExit(int timeoutMs = 20000);
    // The ids of velto's visible windows.
    QStringList windows(int timeoutMs = 10000) const;
    bool finished() const { return m_process.state() == QProcess::NotRunning; }
    // Sends the signal while velto runs. Never kill() the pid blindly: once the
    // process has gone its pid reads 0, and kill(0, ...) hits our whole group.
    void signal(int signo);
    qint64 pid() const { return m_process.processId(); }
    QString home(const QString &relative) const { return m_home.path() + '/' + relative; }
    QProcess &process() { return m_process; }

private:
    QTemporaryDir m_home;
    QProcess m_process;
    QStringList m_args;
};

// A short-lived start of velto beside the one running, as a shell or the
// file manager makes it.
struct VeltoRun
{
    int exitCode = -1; // also after a crash or a start that never ended
    QString out, err;
};
VeltoRun runVelto(const QProcessEnvironment &env, const QStringList &args,
                  const QString &folder = {});

// A program run beside velto for a test (a window manager, a panel), ended with the test.
class Companion : public QProcess
{
public:
    ~Companion() override;
};

// The test's own connection to the X server, made at the first call.
class QGuiApplication;
QGuiApplication &guiApp();
// The X server's picture of the screen (the test connects to it lazily).
QImage grabScreen();
// What the screen shows of the window's own rectangle.
QImage grabScreen(const QString &windowId, const QRect &inWindow);
QColor screenPixel(QPoint at);
// Lets the test's own windows handle their events until done() holds or the
// time is up; returns done(). The margin is for a busy machine only.
bool waitUntil(const std::function<bool()> &done, int timeoutMs = 20000);
// The window's geometry on the screen as xdotool reports it.
QRect windowGeometry(const QString &windowId);

// Runs xdotool with the arguments; returns its standard output, trimmed.
QString xdotool(const QStringList &args, int timeoutMs = 10000);
// Real pointer and key events, through xdotool.
void click(QPoint at, const char *button = "1");
void doubleClick(QPoint at);
void key(const QString &name);
// A click on the default skin's playlist, which gives the window the keys.
void focusPlaylist(const QString &windowId);
// Runs atspi-client.py, a screen reader's view of velto over the accessibility
// bus, with these arguments; its standard output, or nothing on failure.
std::optional<QString> atspiClient(const QStringList &args);
// Why the client cannot run here (no session bus, no pyatspi), or nothing.
std::optional<std::string> atspiMissing();

// Every end-to-end test needs the X server scripts/test starts.
class E2e : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (qEnvironmentVariableIsEmpty("DISPLAY"))
            GTEST_SKIP() << "no X server (scripts/test starts Xvfb)";
    }
};

// A shipped skin's records by code, split into fields (quotes removed).
struct ShippedSkin
{
    QHash<QString, QStringList> records;
    QSize size;

    QRect rect(const QString &code) const;
    // A digit group's cells: its place, and the glyph's size times the cells.
    QRect digits(const QString &code, int cells) const;
};
// The skin of that file name in the source tree's data/skins.
ShippedSkin shippedSkin(const QString &name);
