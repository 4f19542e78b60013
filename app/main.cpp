#include "mprisbridge.h"
#include "remotecontrol.h"
#include "screenscale.h"
#include "signalbridge.h"
#include "velto.h"
#include "windowflags.h"

#include "core/commands.h"
#include "core/menumodel.h"
#include "core/programfolder.h"
#include "core/saveloop.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/leakcheck.h"
#include "platform/random.h"
#include "platform/screens.h"
#include "platform/settingsstore.h"
#include "platform/singleinstance.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSessionManager>
#include <QTimer>

#include <clocale>
#include <cstdio>

namespace {

const QCommandLineOption kPlay(QStringLiteral("play"),
                               QStringLiteral("Play what FILE names at once, whatever the "
                                              "\"Start playing\" preference says."));

void describe(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Velto, a skinnable media player. Opens FILE (a media file, a playlist "
                       "or a folder) in place of the start settings."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOption(kPlay);
    addRemoteOptions(parser);
    parser.addPositionalArgument(QStringLiteral("FILE"),
                                 QStringLiteral("Media files, a playlist or a folder to open."),
                                 QStringLiteral("[FILE...]"));
}

// --help and --version must work without a display.
bool wantsTextOnly(int argc, char **argv)
{
    for (int i = 1; i < argc; ++i) {
        const QByteArray arg(argv[i]);
        if (arg == "--help" || arg == "-h" || arg == "--version" || arg == "-v" ||
            arg == "--help-all")
            return true;
    }
    return false;
}

qint64 residentKiB()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').first().toLongLong();
    }
    return -1;
}

} // namespace

int main(int argc, char **argv)
{
    settleThreadsBeforeLeakCheck();
    if (wantsTextOnly(argc, argv)) {
        QCoreApplication app(argc, argv);
        QCoreApplication::setApplicationName(QStringLiteral("velto"));
        QCoreApplication::setApplicationVersion(QStringLiteral(VELTO_VERSION));
        QCommandLineParser parser;
        describe(parser);
        parser.process(app);
        return 0;
    }

    // One Velto per user: a start while one runs hands its command line over
    // and ends, before it costs a window.
    SingleInstance instance(SingleInstance::defaultPath());
    {
        QStringList arguments;
        for (int i = 0; i < argc; ++i)
            arguments << QString::fromLocal8Bit(argv[i]);
        QCommandLineParser early;
        describe(early);
        if (early.parse(arguments)) {
            if (const std::optional<int> done =
                    handOver(instance, requestFrom(early, QDir::currentPath())))
                return *done;
        }
    }

    // A shaped frameless window cannot place itself on Wayland; XWayland can.
    if (qEnvironmentVariableIsSet("WAYLAND_DISPLAY") &&
        !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb");

    // Skins are bitmaps: Qt scales every window by a whole factor only, so
    // pixels stay sharp and the window's shape exact (see screenscale.h).
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::Floor);
    ScreenScale screenScale;
    QApplication app(argc, argv);
    screenScale.restore();
    QApplication::setApplicationName(QStringLiteral("velto"));
    QApplication::setApplicationDisplayName(QStringLiteral("Velto"));
    QApplication::setApplicationVersion(QStringLiteral(VELTO_VERSION));
    // The media engine refuses to start unless numbers are read the C way.
    std::setlocale(LC_NUMERIC, "C");

    QCommandLineParser parser;
    describe(parser);
    parser.process(app);

    IniSettingsStore store(IniSettingsStore::defaultPath());
    QtDialogs dialogs;
    SystemClock clock;
    SystemRandom random;
    QtScreens screens;
    ProgramFolder folder(ProgramFolder::defaultPath());
    const QString folderProblem = folder.prepare(ProgramFolder::shippedDataPath());
    guardTagWrites(folder);
    if (qEnvironmentVariableIsSet("VELTO_SAVE_LOOP")) {
        const QString rounds = qEnvironmentVariable("VELTO_SAVE_ROUNDS");
        return runSaveLoop(store, folder, qEnvironmentVariable("VELTO_SAVE_LOOP"),
                           rounds.isEmpty() ? -1 : rounds.toInt());
    }

    Velto velto({store, dialogs, clock, random, screens}, folder);
    frmNeOrb &window = velto.window();
    dialogs.setParent(&window);
    RemoteControl remote(velto, dialogs);
    // Before any message box: a start waiting for the lock must not wait on the user.
    instance.listen([&remote](const QByteArray &request) { return remote.answer(request); });
    if (!folderProblem.isEmpty())
        dialogs.message(folderProblem);

    // A signal may come while a message box of start-up waits: leave every event
    // loop, not just the window.
    bool terminated = false;
    SignalBridge signalBridge;
    QObject::connect(&signalBridge, &SignalBridge::terminationRequested, &window,
                     [&velto, &terminated] {
                         terminated = true;
                         velto.Unload(false);
                         QCoreApplication::exit(0);
                     });
    QObject::connect(&app, &QGuiApplication::commitDataRequest, &window,
                     [&velto](QSessionManager &) { velto.Unload(false); });
    QObject::connect(&app, &QCoreApplication::aboutToQuit, &window,
                     [&velto] { velto.Unload(false); });

    if (qEnvironmentVariableIsSet("VELTO_REPORT_FIRST_FRAME")) {
        // Used by the start-up benchmark: report, then leave through the normal shut-down.
        QObject::connect(&window, &frmNeOrb::firstFramePainted, &window, [&window] {
            std::printf("velto-first-frame rss-kib=%lld\n", residentKiB());
            std::fflush(stdout);
            window.close();
        });
    }

    QElapsedTimer playAsked;
    if (qEnvironmentVariableIsSet("VELTO_REPORT_FIRST_PLAY")) {
        // Used by the start-up benchmark: Play once the window is up, with the
        // media engine not loaded yet; report when the position first moves.
        QObject::connect(&window, &frmNeOrb::firstFramePainted, &window, [&velto, &playAsked] {
            playAsked.start();
            velto.DoIt(Command::Play);
        });
        QObject::connect(&velto.player().engine(), &PlaybackEngine::ticked, &window,
                         [&window, &playAsked](qint64 position) {
                             if (position <= 0 || !playAsked.isValid())
                                 return;
                             std::printf("velto-first-play ms=%lld\n", playAsked.elapsed());
                             std::fflush(stdout);
                             playAsked.invalidate();
                             window.close();
                         });
    }

    // The desktop's media controls: the bus is no business of the first frame.
    MprisBridge mpris(velto);
    QObject::connect(
        &window, &frmNeOrb::firstFramePainted, &window, [&mpris] { mpris.start(); },
        Qt::SingleShotConnection);

    velto.Load(parser.positionalArguments(), QDir::currentPath(), parser.isSet(kPlay));
    if (terminated)
        return 0;
    window.show();
    SetOnTop(window, isOnTop(velto.settings().WinOnTop));
    // Shown even without a notification area: the icon appears if one starts later.
    velto.tray().show();
    return app.exec();
}
