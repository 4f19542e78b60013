#include "platform/mediatest.h"
#include "player/playbackengine.h"
#include "support/fakes.h"
#include "support/recordingsurface.h"
#include "support/testbytes.h"

#include <QLocalServer>
#include <QMap>
#include <gtest/gtest.h>

#include <memory>

namespace {

// Real devices from the media engine module, silent (VELTO_AUDIO=null), on
// media made for the suite.
class PlaybackEngineTest : public EngineSuite
{
protected:
    static void SetUpTestSuite()
    {
        EngineSuite::SetUpTestSuite();
        media->sineWav(QStringLiteral("a.wav"), 700, 440);
        media->sineWav(QStringLiteral("one.wav"), 1000, 550);
        media->silentWav(QStringLiteral("three.wav"), 3000);
        media->silentWav(QStringLiteral("twelve.wav"), 12000);
        media->encoded(QStringLiteral("tone.mp3"), 900);
        media->module(QStringLiteral("tune.mod"));
        media->garbage(QStringLiteral("garbage.mp3"));
        media->write(QStringLiteral("notes.txt"), "not media");
        media->write(QStringLiteral("readme.txt"), "not media");
        media->write(QStringLiteral("cover.bmp"), "BM");
        media->write(QStringLiteral("Track05.cda"), "RIFF");
        media->write(QStringLiteral("tagged.mp3"),
                     readAll(media->file(QStringLiteral("tone.mp3"))) + "TAG" +
                         QByteArray("Blue Tone").leftJustified(30) +
                         QByteArray("Sine Quartet").leftJustified(30) + QByteArray(30, ' ') +
                         "2026" + QByteArray(30, ' ') + char(0));
    }
    void SetUp() override
    {
        EngineSuite::SetUp();
        engine = std::make_unique<PlaybackEngine>(
            playlist, flags,
            PlaybackEngine::Options{mciDevice, pbOverlap, useTagCover, friendlyNames}, skin,
            dialogs, random, [] { return factory->create(); });
        PlaybackEngine *e = engine.get();
        QObject::connect(e, &PlaybackEngine::titlesChanged, e,
                         [this](const QString &, const QString &tip) { trayTip = tip; });
        QObject::connect(e, &PlaybackEngine::trackStarted, e,
                         [this](const QString &f) { started << f; });
        QObject::connect(e, &PlaybackEngine::coverWanted, e,
                         [this](const QString &f) { covers << f; });
        QObject::connect(e, &PlaybackEngine::ExDevOut, e,
                         [this](const QString &text) { signTexts << text; });
    }

    void setList(std::initializer_list<const char *> names)
    {
        playlist.PlNames.clear();
        playlist.PlPath.clear();
        for (const char *name : names) {
            playlist.PlNames << QString::fromLatin1(name);
            playlist.PlPath << (QByteArray(name).contains(':') ? QString::fromLatin1(name)
                                                               : file(name));
        }
        playlist.CurTrack = 1;
    }

    bool playingTrack(int track)
    {
        return waitFor([&] {
            return playlist.CurTrack == track && engine->state().playing &&
                   engine->state().PlayPos > 0;
        });
    }
    bool stopped()
    {
        return waitFor([&] { return !engine->state().playing; });
    }

    PlaylistState playlist;
    PlayerFlags flags;
    FakeDialogs dialogs;
    FakeRandom random;
    QString mciDevice = QStringLiteral("0");
    qint16 pbOverlap = 0, useTagCover = 0, friendlyNames = 1;
    RecordingSurface skin;
    QMap<int, QString> &labels = skin.labels;
    std::unique_ptr<PlaybackEngine> engine;

    QString trayTip; // the window title with the program's name before it
    QStringList started, covers;
    QStringList signTexts; // what the external display was sent
};

TEST_F(PlaybackEngineTest, PlaysToTheEndAndOnToTheNextEntryThenStopsAtTheStart)
{
    setList({"a.wav", "tagged.mp3", "tune.mod"});
    engine->PlayIt();
    ASSERT_TRUE(playingTrack(1));
    ASSERT_TRUE(playingTrack(2));
    EXPECT_EQ(labels[PlaybackEngine::kTypeLabel], QStringLiteral("MP3"));
    EXPECT_EQ(labels[PlaybackEngine::kNumberLabel], QStringLiteral("2"));
    EXPECT_EQ(trayTip, QStringLiteral("Velto - [Sine Quartet] - Blue Tone"));
    ASSERT_TRUE(playingTrack(3));
    EXPECT_EQ(engine->state().CurDevice, QStringLiteral("M4W_MCI")) << "a module has its own";
    EXPECT_GT(engine->state().TrackLength, 500);
    ASSERT_TRUE(stopped());
    EXPECT_EQ(playlist.CurTrack, 1);
    EXPECT_FALSE(engine->tickRunning());
    EXPECT_EQ(started, QStringList({file("a.wav"), file("tagged.mp3"), file("tune.mod")}));
    EXPECT_TRUE(dialogs.messages.isEmpty()) << dialogs.messages.join('|').toStdString();
}

TEST_F(PlaybackEngineTest, OverlapStartsTheNextItemOnTheOtherDeviceAndLetsTheLastOneEnd)
{
    // A wide overlap, so a slow (sanitizer) build still sees both play at once.
    pbOverlap = 800;
    setList({"one.wav", "three.wav"});
    engine->PlayIt();
    ASSERT_TRUE(playingTrack(1));
    EXPECT_NE(engine->device(1), nullptr) << "the next item's device is made ahead";
    ASSERT_TRUE(waitFor([&] { return playlist.CurTrack == 2; }));
    EXPECT_EQ(engine->state().CurMci, 1);
    MediaDevice *first = engine->device(0);
    MediaDevice *second = engine->device(1);
    ASSERT_TRUE(first && second);
    // The first item is still in its last moments when the second begins.
    EXPECT_EQ(first->mode(), MediaDevice::Mode::Playing);
    EXPECT_LT(first->position(), first->length());

    qint64 secondAtFirstEnd = -1;
    qint64 lastOfFirst = 0;
    const qint64 firstLength = first->length();
    ASSERT_TRUE(waitFor([&] {
        if (first->mode() == MediaDevice::Mode::Playing)
            lastOfFirst = first->position();
        else if (secondAtFirstEnd < 0)
            secondAtFirstEnd = second->position();
        return secondAtFirstEnd >= 0;
    }));
    EXPECT_GE(lastOfFirst, firstLength - 300) << "the first item was cut short";
    EXPECT_GT(secondAtFirstEnd, 0) << "silence between the items";
    // Ended, it holds neither its file nor a sound output.
    EXPECT_EQ(first->mode(), MediaDevice::Mode::NotReady);
    EXPECT_EQ(second->mode(), MediaDevice::Mode::Playing);
    ASSERT_TRUE(stopped());
}

// Items that move on by the clock: intro scan leaves a file at ten seconds, a
// picture shows for five, stop-after-item opens the next but does not play it.
// The item left never plays on under the next, even with an overlap.
TEST_F(PlaybackEngineTest, TimedItemsMoveOnAtTheirMoment)
{
    const struct
    {
        const char *first, *second, *device;
        bool intro, stopAfter;
        qint16 overlap;
        qint32 from, moveBy;
        const char *nextName;
        bool nextPlays;
    } cases[] = {
        {"twelve.wav", "one.wav", "MPEGVideo", true, false, 300, 9600, 10001, "one.wav", true},
        {"cover.bmp", "notes.txt", "Delay", false, false, 0, 3600, 5000, "", false},
        {"one.wav", "tone.mp3", "MPEGVideo", false, true, 0, 0, 1000, "tone.mp3", false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.first);
        flags.IntroScan = c.intro;
        flags.StopAfterItem = c.stopAfter;
        pbOverlap = c.overlap;
        covers.clear();
        setList({c.first, c.second});
        engine->PlayIt();
        ASSERT_TRUE(playingTrack(1));
        EXPECT_EQ(engine->state().CurDevice, QString::fromLatin1(c.device));
        const bool picture = engine->state().CurDevice == QStringLiteral("Delay");
        EXPECT_EQ(covers, picture ? QStringList{file(c.first)} : QStringList());
        if (c.from)
            engine->PlayFrom(c.from);
        qint32 lastOfFirst = 0;
        ASSERT_TRUE(waitFor([&] {
            if (playlist.CurTrack == 1)
                lastOfFirst = engine->state().PlayPos;
            return playlist.CurTrack == 2;
        }));
        EXPECT_GE(lastOfFirst, c.from);
        EXPECT_LT(lastOfFirst, c.moveBy);
        ASSERT_TRUE(waitFor(
            [&] { return labels[PlaybackEngine::kNameLabel] == QLatin1String(c.nextName); }));
        // Beats of the tick's own interval: an item that should not play would by then.
        ASSERT_TRUE(waitBeats(100, 2));
        EXPECT_EQ(engine->tickRunning(), c.nextPlays);
        for (int i : {0, 1}) {
            const MediaDevice *device = engine->device(i);
            EXPECT_EQ(device && device->mode() == MediaDevice::Mode::Playing,
                      c.nextPlays && i == engine->state().CurMci)
                << i;
        }
        engine->StopIt();
    }
}

TEST_F(PlaybackEngineTest, LoopRepeatsSeeksAreClampedAndPauseHoldsThePosition)
{
    setList({"three.wav"});
    engine->PlayIt();
    ASSERT_TRUE(waitFor([&] { return engine->state().PlayPos >= 400; }));
    engine->LoopPoint();
    const qint32 start = engine->state().LoopStart;
    EXPECT_GE(start, 400);
    EXPECT_EQ(engine->state().LoopEnd, 0);
    ASSERT_TRUE(waitFor([&] { return engine->state().PlayPos >= start + 600; }));
    engine->LoopPoint();
    const qint32 end = engine->state().LoopEnd;
    EXPECT_GE(end, start + 600);

    // Twice round the loop, never far past its end.
    int returns = 0;
    qint32 highest = 0, previous = end;
    ASSERT_TRUE(waitFor(
        [&] {
            const qint32 pos = engine->state().PlayPos;
            highest = qMax(highest, pos);
            if (pos < previous - 300)
                ++returns;
            previous = pos;
            return returns >= 2;
        },
        15000));
    // Without the loop the item would run on to 3000.
    EXPECT_LE(highest, end + 600);
    EXPECT_GE(previous, start);
    EXPECT_EQ(playlist.CurTrack, 1);

    engine->LoopPoint();
    EXPECT_EQ(engine->state().LoopStart, 0);
    EXPECT_EQ(engine->state().LoopEnd, 0);

    // Seeks are clamped to the item and pause holds the position.
    MediaDevice *device = engine->device(engine->state().CurMci);
    ASSERT_TRUE(device);
    const std::pair<qint32, qint64> cases[] = {{-5000, 0}, {1500, 1500}, {3001, 2000}};
    for (const auto &[asked, expected] : cases) {
        engine->PlayFrom(asked);
        EXPECT_EQ(device->position(), expected) << asked;
    }
    engine->PlayFrom(0);
    ASSERT_TRUE(waitFor([&] { return engine->state().PlayPos >= 300; }));
    int ticks = 0;
    QObject::connect(engine.get(), &PlaybackEngine::ticked, engine.get(), [&] { ++ticks; });
    engine->PlayPause();
    EXPECT_EQ(signTexts.last(), QStringLiteral("paused..."));
    const qint64 held = device->position();
    // Beats of the tick's own interval: a tick that still ran would have shown.
    ASSERT_TRUE(waitBeats(100, 2));
    EXPECT_EQ(device->position(), held);
    EXPECT_EQ(ticks, 0);
    engine->PlayPause();
    EXPECT_TRUE(waitFor([&] { return device->position() > held + 100; }));
    engine->StopIt();
    EXPECT_EQ(signTexts.last(), QStringLiteral("Velto stopped"));
}

TEST_F(PlaybackEngineTest, RandomPicksRoundHalvesToEvenAndEntryNumbersWrap)
{
    // From an entry, with a random number, a step lands on an entry: a random
    // pick is r x 4 + 1 halved to the even neighbour, numbers out of range wrap.
    setList({"notes.txt", "readme.txt", "notes.txt", "notes.txt"});
    using P = PlaybackEngine;
    const std::tuple<int, double, void (P::*)(), int> cases[] = {
        {1, 0.0, &P::RndTrack, 1},  {1, 0.375, &P::RndTrack, 2}, {1, 0.625, &P::RndTrack, 4},
        {1, 0.9, &P::RndTrack, 5},  {0, 0.0, &P::PlayIt, 4},     {5, 0.0, &P::PlayIt, 1},
        {1, 0.0, &P::PrevTrack, 4},
    };
    for (const auto &[from, r, step, to] : cases) {
        playlist.CurTrack = from;
        random.values = {r};
        (engine.get()->*step)();
        EXPECT_EQ(playlist.CurTrack, to) << from << " " << r;
    }
    EXPECT_EQ(engine->device(0), nullptr) << "documents open no device";

    // count + 1 ends playback and goes back to the first entry.
    flags.Shuffle = true;
    random.values = {0.99};
    engine->NextTrack();
    EXPECT_EQ(playlist.CurTrack, 1);
    EXPECT_FALSE(engine->state().playing);

    // A file from outside the list joins it at the end and is the entry.
    engine->PlayFile(file("readme.txt"));
    EXPECT_EQ(playlist.CurTrack, 5);
    EXPECT_EQ(playlist.PlPath.value(4), file("readme.txt"));
    EXPECT_EQ(playlist.PlNames.value(4), QStringLiteral("readme.txt"));
}

// Entries no device plays: a missing file is marked once, a CD track or disc
// image goes to the CD part, an internet address is refused and a file no
// device reads shows its device's box.
TEST_F(PlaybackEngineTest, EntriesThatOpenNoDeviceAreMarkedHandedOnOrRefused)
{
    setList({"gone.mp3"});
    for (int attempt = 0; attempt < 3; ++attempt) {
        engine->PlayIt();
        playlist.CurTrack = 1;
    }
    EXPECT_EQ(playlist.PlNames[0], QStringLiteral("gone.mp3 [FILE NOT FOUND]"));
    EXPECT_EQ(playlist.PlPath[0], QString());

    media->write(QStringLiteral("album.cue"), "FILE album.bin BINARY\n");
    QList<int> tracks;
    QStringList images;
    QObject::connect(engine.get(), &PlaybackEngine::cdTrackWanted,
                     [&](int track) { tracks << track; });
    QObject::connect(engine.get(), &PlaybackEngine::discImageWanted,
                     [&](const QString &cue) { images << cue; });
    setList({"Track05.cda", "album.cue"});
    engine->PlayIt();
    engine->NextTrack();
    EXPECT_EQ(tracks, QList<int>{5});
    EXPECT_EQ(images, QStringList{file("album.cue")});
    EXPECT_TRUE(dialogs.messages.isEmpty());

    // A listening socket exists as a file, but nothing can read it.
    QLocalServer socket;
    ASSERT_TRUE(socket.listen(media->file(QStringLiteral("socket.mp3"))));
    // The box's head, or all of it, and the device's advice that ends it.
    const std::tuple<const char *, const char *, const char *> cases[] = {
        {"http://radio.example/stream.mp3", "Internet file!", nullptr},
        {"garbage.mp3", "MCI Device: MPEGVideo",
         "The File could not be opened.\rIt may be an unknown format, corrupt, or an "
         "un-supported variation of a known format."},
        {"socket.mp3", "MCI Device: MPEGVideo",
         "Make sure you are using the Microsoft MPEGVideo driver!\rMPEG Video may have been "
         "re-assigned to a DVD drive or card.\rYou may need to use the ActiveMovie driver (see "
         "docs)!"},
    };
    for (const auto &[name, head, explanation] : cases) {
        SCOPED_TRACE(name);
        dialogs.messages.clear();
        setList({name});
        engine->PlayIt();
        ASSERT_TRUE(waitFor([&] { return !dialogs.messages.isEmpty(); }));
        const QString box = dialogs.messages.value(0);
        if (explanation) {
            EXPECT_TRUE(box.startsWith(QString::fromLatin1(head) + QStringLiteral("\rFilename: ") +
                                       file(name) + QStringLiteral("\r\rError: ")))
                << box.toStdString();
            EXPECT_TRUE(box.endsWith(QStringLiteral("\r\r") + QString::fromLatin1(explanation)))
                << box.toStdString();
        } else {
            EXPECT_EQ(box, QString::fromLatin1(head));
            EXPECT_EQ(engine->device(0), nullptr);
        }
        EXPECT_FALSE(engine->state().playing);
        EXPECT_FALSE(engine->tickRunning());
        EXPECT_EQ(dialogs.messages.size(), 1);
    }
}

TEST_F(PlaybackEngineTest, JumpToTakesATimeOrAnEntry)
{
    setList({"notes.txt", "three.wav"});
    playlist.CurTrack = 2;
    engine->PlayIt();
    ASSERT_TRUE(playingTrack(2));

    dialogs.textAnswers = {QStringLiteral("0:02"), QStringLiteral("9"), QString(),
                           QStringLiteral("1")};
    engine->JumpTo(0);
    EXPECT_TRUE(dialogs.prompts.last().contains(QStringLiteral("1 to 2")));
    EXPECT_EQ(dialogs.offered.last(), QString()) << "no mark, nothing offered";
    EXPECT_EQ(engine->device(0)->position(), 2000);
    engine->JumpTo(65400); // no entry 9: nothing happens
    EXPECT_EQ(dialogs.offered.last(), QStringLiteral("1:05")) << "the marked position is offered";
    engine->JumpTo(0); // cancelled
    EXPECT_EQ(playlist.CurTrack, 2);
    EXPECT_TRUE(engine->state().playing);
    engine->JumpTo(0);
    EXPECT_EQ(playlist.CurTrack, 1);
    engine->StopIt();
}

TEST(PlaybackEngineJump, ReadsEntryNumbersAndTimes)
{
    using K = PlaybackEngine::JumpTarget::Kind;
    const std::tuple<const char *, K, qint64> cases[] = {
        {" 12 ", K::Entry, 12},    {"90:00", K::Time, 5400000}, {"1:02:03", K::Time, 3723000},
        {"0:01.5", K::Time, 1500}, {"1:60", K::None, 0},        {"123456", K::None, 0}};
    for (const auto &[text, kind, value] : cases) {
        const auto target = PlaybackEngine::parseJump(QString::fromLatin1(text));
        EXPECT_EQ(target.kind, kind) << text;
        EXPECT_EQ(target.value, value) << text;
    }
}

} // namespace
