#include "core/lifecycle.h"
#include "core/programfolder.h"
#include "core/settings.h"
#include "player/playlist.h"
#include "player/startfiles.h"
#include "skin/skinpart.h"

#include "support/fakes.h"
#include "support/temphome.h"

#include <gtest/gtest.h>

namespace {

// Logs each call start-up and shut-down make on the window, the player and
// the other parts.
class RecordingHost : public StartWindow, public StartFiles, public SkinPart
{
public:
    QStringList calls;
    QPoint pos{100, 100};
    QString cover;
    quint32 level = 0xffffffffu;
    PlaylistState *playlist = nullptr;

    QPoint windowPos() const override { return pos; }
    QSize windowSize() const override { return {400, 160}; }
    void moveWindow(QPoint p) override
    {
        pos = p;
        calls << QStringLiteral("move %1,%2").arg(p.x()).arg(p.y());
    }
    void minimiseWindow() override { calls << "minimise"; }
    void LoadSkin(const QString &f) override { calls << "LoadSkin " + f.section('/', -1); }
    void addOpened(const QString &p) override
    {
        calls << "AddOpened " + p.section('/', -1);
        Playlist(*playlist).AddToPlaylist(p, p);
    }
    void playWhenScanned() override { calls << "PlayIt"; }
    QString currentCover() const override { return cover; }
    void setStartCover(const QString &f) override { cover = f; }
    quint32 outputLevel() const override { return level; }
    void restoreOutputLevel(quint32 word) override { level = word; }
    void started() override { calls << "started"; }
    void ending(bool interactive) override
    {
        calls << QStringLiteral("ending %1").arg(interactive ? "asking" : "quietly");
    }
};

class LifecycleTest : public ::testing::Test
{
protected:
    LifecycleTest() : folder(home.file(QStringLiteral("data/velto")))
    {
        folder.prepare(QString());
        host.playlist = &playlist;
    }

    Lifecycle lifecycle()
    {
        return Lifecycle({config, dialogs, random, clock, screens, folder}, settings, playlist,
                         host, host, parts);
    }
    void store(const char *key, const QString &value)
    {
        memory.values[QStringLiteral("config/") + QString::fromLatin1(key).toLower()] = value;
    }
    QString media(const QString &name) { return home.write("music/" + name, "x"); }

    TempHome home;
    ProgramFolder folder;
    MemoryStore memory;
    ConfigStore config{memory};
    FakeDialogs dialogs;
    FakeRandom random;
    FakeClock clock;
    FakeScreens screens;
    Settings settings;
    PlaylistState playlist;
    RecordingHost host;
    std::vector<SkinPart *> parts{&host, &host};
};

} // namespace

TEST_F(LifecycleTest, StartUpRunsItsStepsInOrder)
{
    store("AutoPlay", "1");
    store("StartMin", "1");
    store("X", "3000"); // saved on a monitor that is gone
    store("Y", "200");
    store("OutputLevel", "1234");
    lifecycle().Load({}, home.path());
    // clang-format off
    const QStringList expected = {
        "move 1520,200", "LoadSkin default.skin", "started", "started", "minimise", "PlayIt"};
    // clang-format on
    EXPECT_EQ(host.calls, expected);
    EXPECT_EQ(random.seeded, quint32(QTime(7, 29, 58).msecsSinceStartOfDay()));
    EXPECT_EQ(host.level, 1234u) << "the output level the last run ended with";
    EXPECT_TRUE(dialogs.messages.isEmpty()) << "a first start has no skin to miss";
}

TEST_F(LifecycleTest, MissingSkinFallsBackToTheDefaultWithItsMessage)
{
    settings.Skin = QStringLiteral("gone.skin");
    settings.SkinPath = home.path();
    Lifecycle life = lifecycle();
    EXPECT_EQ(life.startSkin(), folder.file(QStringLiteral("skins/default.skin")));
    EXPECT_EQ(dialogs.messages,
              QStringList("Previously selected skin not found (gone.skin)! Using default"));

    dialogs.messages.clear();
    const QString mine = home.write(QStringLiteral("skins/mine.skin"), "Velto Skin");
    settings.Skin = QStringLiteral("mine.skin");
    settings.SkinPath = home.file(QStringLiteral("skins"));
    EXPECT_EQ(life.startSkin(), mine);
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

TEST_F(LifecycleTest, WhatStartUpOpens)
{
    const QString song = media(QStringLiteral("01 - First.mp3"));
    const QString other = media(QStringLiteral("second.mp3"));
    playlist.PlPath = {song};
    Playlist(playlist).WritePL(folder.file(QStringLiteral("playlist.m3u")));
    playlist = {};
    store("LastTrack", "1");
    store("StartFile", other);

    const std::tuple<const char *, QStringList, QStringList, QString> cases[] = {
        {"1", {}, {song}, {}},
        {"1", {"second.mp3"}, {other}, {}}, // the command line wins over StartMd
        {"2", {}, {other}, {}},
        {"1", {"no", "such.mp3"}, {}, "File not found:\r" + home.file("music/no such.mp3")},
        {"0", {"second.mp3", "01 - First.mp3"}, {other, song}, {}}, // a file manager's selection
    };
    for (const auto &[startMd, names, expectedPaths, message] : cases) {
        playlist = {};
        dialogs.messages.clear();
        store("StartMd", QString::fromLatin1(startMd));
        lifecycle().Load(names, home.file(QStringLiteral("music")));
        EXPECT_EQ(playlist.PlPath, expectedPaths) << "StartMd " << startMd;
        EXPECT_EQ(dialogs.messages.join('|'), message);
        EXPECT_FALSE(host.calls.contains(QStringLiteral("PlayIt"))) << "AutoPlay is off";
    }

    // --play plays what the command line names, whatever AutoPlay says; not the last state.
    store("StartMd", QStringLiteral("1"));
    lifecycle().Load({}, home.file(QStringLiteral("music")), true);
    EXPECT_FALSE(host.calls.contains(QStringLiteral("PlayIt")));
    lifecycle().Load({QStringLiteral("second.mp3")}, home.file(QStringLiteral("music")), true);
    EXPECT_TRUE(host.calls.contains(QStringLiteral("PlayIt")));
}

TEST_F(LifecycleTest, ShutDownSavesEverythingOnceAndRestores)
{
    const QString a = media(QStringLiteral("a.mp3"));
    const QString b = media(QStringLiteral("b.mp3"));
    playlist.PlPath = {a, b};
    playlist.PlNames = {"a.mp3", "b.mp3"};
    playlist.CurTrack = 2;
    host.cover = home.file(QStringLiteral("music/a.jpg"));
    settings.WinSavePos = 1;
    host.pos = {40, 50};
    {
        Lifecycle life = lifecycle();
        life.Unload(true);
        life.Unload(true);
    }
    EXPECT_EQ(host.calls, QStringList({"ending asking", "ending asking"}))
        << "each part ends once, however often the end is asked for";
    EXPECT_EQ(memory.flushes, 1);
    EXPECT_EQ(memory.values.value("config/x"), "40");
    EXPECT_EQ(memory.values.value("config/lasttrack"), "2");
    EXPECT_EQ(memory.values.value("config/outputlevel"), "4294967295");

    PlaylistState restored;
    Lifecycle({config, dialogs, random, clock, screens, folder}, settings, restored, host, host,
              parts)
        .RestoreLastState();
    EXPECT_EQ(restored.PlPath, playlist.PlPath);
    EXPECT_EQ(restored.CurTrack, 2);
    EXPECT_EQ(host.cover, home.file(QStringLiteral("music/a.jpg")));
}
