#include "app/mprisbridge.h"
#include "app/nowplaying.h"
#include "player/id3tag.h"

#include "support/beats.h"
#include "support/shippedwindow.h"
#include "support/testmedia.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>
#include <gtest/gtest.h>

namespace {

const QString kService = QStringLiteral("org.mpris.MediaPlayer2.velto");
const QString kPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString kPlayer = QStringLiteral("org.mpris.MediaPlayer2.Player");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");

QVariant track(const char *id)
{
    return QVariant::fromValue(QDBusObjectPath(QLatin1String(id)));
}

// A client of our own on a connection of its own, as another program on the
// bus. Its calls are answered by the event loop this test turns meanwhile.
class BusClient : public QObject
{
    Q_OBJECT
public:
    BusClient()
        : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus,
                                              QStringLiteral("mpris-test-client")))
    {
        m_bus.connect(kService, kPath, kProperties, QStringLiteral("PropertiesChanged"), this,
                      SLOT(propertiesChanged(QString, QVariantMap, QStringList)));
        m_bus.connect(kService, kPath, kPlayer, QStringLiteral("Seeked"), this,
                      SLOT(seeked(qlonglong)));
    }
    ~BusClient() override
    {
        QDBusConnection::disconnectFromBus(QStringLiteral("mpris-test-client"));
    }

    QDBusMessage call(const QString &interface, const QString &method, const QVariantList &args)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(kService, kPath, interface, method);
        message.setArguments(args);
        QDBusPendingCallWatcher watcher(m_bus.asyncCall(message));
        if (!QTest::qWaitFor([&] { return watcher.isFinished(); }, 10000))
            ADD_FAILURE() << method.toStdString() << " had no answer";
        return watcher.reply();
    }
    QVariant get(const QString &property, const QString &interface = kPlayer)
    {
        const QDBusMessage reply = call(kProperties, QStringLiteral("Get"), {interface, property});
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

    QList<QVariantMap> changes;
    QList<qlonglong> seeks;

public slots:
    void propertiesChanged(const QString &interface, const QVariantMap &changed,
                           const QStringList &)
    {
        if (interface == kPlayer)
            changes << changed;
    }
    void seeked(qlonglong position) { seeks << position; }

private:
    QDBusConnection m_bus;
};

class Mpris : public ::testing::Test, protected ShippedWindow
{
protected:
    static void SetUpTestSuite() { qputenv("VELTO_AUDIO", "null"); }

    void SetUp() override
    {
        if (!MprisService::sessionBusConfigured())
            GTEST_SKIP() << "no session bus (ctest runs these under dbus-run-session)";
        start();
        bridge = std::make_unique<MprisBridge>(*velto);
        ASSERT_TRUE(bridge->start()) << bridge->service().problem().toStdString();
        client = std::make_unique<BusClient>();
    }

    // playerctl, the real client, run while this test's event loop answers it.
    QString playerctl(const QStringList &args)
    {
        QProcess p;
        p.start(QStringLiteral("playerctl"), QStringList{QStringLiteral("--player=velto")} + args);
        if (!p.waitForStarted(5000))
            return QStringLiteral("(no playerctl)");
        if (!QTest::qWaitFor([&] { return p.state() == QProcess::NotRunning; }, 10000))
            ADD_FAILURE() << "playerctl " << args.join(' ').toStdString() << " did not end";
        return QString::fromUtf8(p.readAllStandardOutput()).trimmed();
    }

    NowPlaying now() { return nowPlaying(velto->player(), velto->playlist()); }
    // Playing or paused counts once the entry is open and its length known.
    bool waitFor(NowPlaying::State state, int entry)
    {
        return QTest::qWaitFor(
            [&] {
                const NowPlaying n = now();
                return n.state == state && n.entry == entry &&
                       (state == NowPlaying::State::Stopped || n.lengthMs > 0);
            },
            10000);
    }
    void playList(const QStringList &files)
    {
        velto->playlist().PlNames.clear();
        velto->playlist().PlPath.clear();
        velto->playlist().CurTrack = 0;
        velto->player().openHanded(files, true);
        ASSERT_TRUE(waitFor(NowPlaying::State::Playing, 1));
    }

    TestMedia media;
    std::unique_ptr<MprisBridge> bridge;
    std::unique_ptr<BusClient> client;
};

TEST_F(Mpris, PlayerctlSeesWhatPlaysAndItsCoverAndControlsIt)
{
    if (QStandardPaths::findExecutable(QStringLiteral("playerctl")).isEmpty())
        GTEST_SKIP() << "playerctl is not installed";
    const QString tagged = media.encoded(QStringLiteral("tagged.mp3"), 3000);
    ASSERT_FALSE(tagged.isEmpty());
    TagFields tag;
    tag.title = QStringLiteral("Morning Tone");
    tag.artist = QStringLiteral("The Sines");
    tag.album = QStringLiteral("Test Signals");
    ASSERT_EQ(writeTag(tagged, tag), TagWrite::Added);
    // A picture beside an item without a tag is its cover.
    QDir().mkpath(media.file(QStringLiteral("album")));
    const QString wav = media.sineWav(QStringLiteral("album/plain.wav"), 8000);
    QImage(8, 8, QImage::Format_RGB32).save(media.file(QStringLiteral("album/cover.png")));

    playList({tagged, wav});
    const std::pair<const char *, QString> shown[] = {
        {"title", tag.title},
        {"artist", tag.artist},
        {"album", tag.album},
        {"xesam:url", QUrl::fromLocalFile(tagged).toString()},
    };
    for (const auto &[field, value] : shown)
        EXPECT_EQ(playerctl({"metadata", QLatin1String(field)}), value) << field;
    EXPECT_NEAR(playerctl({"metadata", "mpris:length"}).toLongLong(), 3000000, 100000);

    EXPECT_EQ(playerctl({"next"}), QString());
    ASSERT_TRUE(waitFor(NowPlaying::State::Playing, 2));
    EXPECT_EQ(playerctl({"metadata", "title"}), velto->playlist().PlNames.value(1));
    EXPECT_EQ(playerctl({"metadata", "mpris:artUrl"}),
              QUrl::fromLocalFile(media.file(QStringLiteral("album/cover.png"))).toString());

    playerctl({"play-pause"});
    EXPECT_TRUE(waitFor(NowPlaying::State::Paused, 2));
    playerctl({"play"});
    EXPECT_TRUE(waitFor(NowPlaying::State::Playing, 2));

    playerctl({"position", "5"});
    const double position = playerctl({"position"}).toDouble();
    EXPECT_GE(position, 5.0);
    EXPECT_LT(position, 6.0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !client->seeks.isEmpty(); }, 5000));
    EXPECT_EQ(client->seeks.last(), 5000000);

    playerctl({"volume", "0.3"});
    EXPECT_FLOAT_EQ(velto->player().volume().volumeLevel(), 0.3f);

    playerctl({"stop"});
    EXPECT_TRUE(waitFor(NowPlaying::State::Stopped, 2));
    EXPECT_EQ(playerctl({"status"}), QStringLiteral("Stopped"));
}

TEST_F(Mpris, ChangesAreAnnouncedAndTheLastEntryHasNoNext)
{
    // Without the 128-byte tag, the file's own tags name what plays.
    const QString tagged =
        media.encoded(QStringLiteral("two.flac"), 8000,
                      {QStringLiteral("-metadata"), QStringLiteral("TITLE=Evening"),
                       QStringLiteral("-metadata"), QStringLiteral("ARTIST=Sines")});
    ASSERT_FALSE(tagged.isEmpty());
    playList({media.sineWav(QStringLiteral("one.wav"), 8000), tagged});
    EXPECT_EQ(client->get(QStringLiteral("CanGoNext")), QVariant(true));
    // The desktop hears every type the menu entry opens, and only those.
    QFile entry(QStringLiteral(VELTO_DATA_DIR "/../dist/org.velto.Velto.desktop"));
    ASSERT_TRUE(entry.open(QIODevice::ReadOnly));
    const QString opened = QString::fromUtf8(entry.readAll())
                               .section(QStringLiteral("MimeType="), 1)
                               .section('\n', 0, 0);
    const QStringList offered =
        client->get(QStringLiteral("SupportedMimeTypes"), QStringLiteral("org.mpris.MediaPlayer2"))
            .toStringList();
    EXPECT_EQ(offered.join(';') + ';', opened);
    client->changes.clear();

    client->call(kPlayer, QStringLiteral("Next"), {});
    ASSERT_TRUE(waitFor(NowPlaying::State::Playing, 2));
    auto announced = [&](const QString &name, const QVariant &value) {
        return QTest::qWaitFor(
            [&] {
                for (const QVariantMap &change : client->changes)
                    if (change.contains(name) && (!value.isValid() || change.value(name) == value))
                        return true;
                return false;
            },
            5000);
    };
    EXPECT_TRUE(announced(QStringLiteral("CanGoNext"), false));
    EXPECT_TRUE(announced(QStringLiteral("Metadata"), {}));
    EXPECT_EQ(now().title, QStringLiteral("Evening"));
    EXPECT_EQ(now().artist, QStringLiteral("Sines"));
    EXPECT_EQ(client->get(QStringLiteral("CanGoNext")), QVariant(false));
    // At the last entry Next does nothing, rather than stop the list.
    client->call(kPlayer, QStringLiteral("Next"), {});
    EXPECT_TRUE(waitBeats(100));
    EXPECT_EQ(now().state, NowPlaying::State::Playing);
    EXPECT_EQ(now().entry, 2);

    client->changes.clear();
    client->call(kPlayer, QStringLiteral("Pause"), {});
    EXPECT_TRUE(announced(QStringLiteral("PlaybackStatus"), QStringLiteral("Paused")));
    // The mute command silences: the desktop's slider shows it.
    velto->DoIt(9);
    EXPECT_TRUE(announced(QStringLiteral("Volume"), 0.0));
}

TEST_F(Mpris, OutOfRangeAndForeignRequestsChangeNothing)
{
    playList({media.sineWav(QStringLiteral("one.wav"), 8000),
              media.sineWav(QStringLiteral("two.wav"), 8000)});
    client->call(kPlayer, QStringLiteral("SetPosition"),
                 {track("/org/velto/track/1"), qlonglong(4000000)});
    ASSERT_GE(client->get(QStringLiteral("Position")).toLongLong(), 4000000);
    client->seeks.clear();

    struct Case
    {
        const char *what;
        QString method;
        QVariantList args;
    };
    const QList<Case> cases = {
        {"unknown track", "SetPosition", {track("/org/velto/track/2"), qlonglong(1000000)}},
        {"past the end", "SetPosition", {track("/org/velto/track/1"), qlonglong(9000001)}},
        {"an address that is no file", "OpenUri", {QStringLiteral("http://example.com/a.mp3")}},
    };
    for (const Case &c : cases) {
        client->call(kPlayer, c.method, c.args);
        EXPECT_EQ(now().entry, 1) << c.what;
        EXPECT_GE(client->get(QStringLiteral("Position")).toLongLong(), 4000000) << c.what;
    }
    EXPECT_TRUE(client->seeks.isEmpty());
    client->call(kProperties, QStringLiteral("Set"),
                 {kPlayer, QStringLiteral("Volume"), QVariant::fromValue(QDBusVariant(7.5))});
    EXPECT_EQ(client->get(QStringLiteral("Volume")), QVariant(1.0)) << "held to its range";
    // Seeking far back lands on the start; far on, on the next entry.
    client->call(kPlayer, QStringLiteral("Seek"), {qlonglong(-1000000000000)});
    EXPECT_LT(client->get(QStringLiteral("Position")).toLongLong(), 1000000);
    client->call(kPlayer, QStringLiteral("Seek"), {qlonglong(INT64_MAX)});
    EXPECT_TRUE(waitFor(NowPlaying::State::Playing, 2));
}

} // namespace

#include "mpris_test.moc"
