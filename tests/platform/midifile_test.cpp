#include "midiwriter.h"
#include "platform/midifile.h"

#include <gtest/gtest.h>

#include <iterator>

namespace {

using Track = MidiWriter::Track;

TEST(MidiSong, LengthFollowsTicksAndEveryTempoChange)
{
    const struct
    {
        const char *name;
        QByteArray file;
        double ms;
    } cases[] = {
        {"120 beats a minute until a tempo says otherwise",
         MidiWriter::smf(0, 480, {Track().note(0, 0, 60, 1920).end()}), 2000},
        {"a tempo change halfway",
         MidiWriter::smf(0, 480,
                         {Track()
                              .tempo(0, 500000)
                              .note(0, 0, 60, 960)
                              .tempo(0, 250000)
                              .note(0, 0, 62, 960)
                              .end()}),
         1500},
        {"the tempo track of format 1 times the other tracks",
         MidiWriter::smf(1, 96,
                         {Track().tempo(0, 1000000).tempo(96, 2000000).end(),
                          Track().note(0, 1, 40, 192).end(48)}),
         1000 + 3000},
        {"the longest track decides, its end-of-track delta included",
         MidiWriter::smf(
             1, 480, {Track().note(0, 0, 60, 480).end(), Track().note(0, 1, 60, 480).end(4800)}),
         5500},
        {"SMPTE timing: 25 frames of 40 ticks a second, tempo ignored",
         MidiWriter::smf(0, 0xe728, {Track().tempo(0, 250000).note(0, 0, 60, 1500).end()}), 1500},
        {"no events: zero length", MidiWriter::smf(0, 480, {Track().end()}), 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const MidiSong song = MidiSong::read(c.file);
        EXPECT_TRUE(song.valid);
        EXPECT_NEAR(song.lengthMs, c.ms, 0.001);
        // The same song wrapped as .rmi reads the same.
        EXPECT_NEAR(MidiSong::read(MidiWriter::rmid(c.file)).lengthMs, c.ms, 0.001);
    }
}

TEST(MidiSong, MergesTracksInTimeOrderWithTheirTimes)
{
    // Running status in track 1: the second and third notes omit the status byte.
    const QByteArray file =
        MidiWriter::smf(1, 100,
                        {Track().tempo(0, 1000000).event(50, {0xb0, 7, 90}).end(),
                         Track()
                             .event(0, {0xc1, 5})
                             .event(0, {0x91, 60, 100})
                             .event(100, {62, 100})
                             .event(0, {60, 0})
                             .event(10, {0xf0, 3, 0x7e, 0x7f, 0xf7})
                             .event(0, {0xe1, 0x00, 0x40})
                             .end()});
    const MidiSong song = MidiSong::read(file);
    ASSERT_TRUE(song.valid);
    EXPECT_EQ(song.format, 1);
    EXPECT_EQ(song.tracks, 2);
    const struct
    {
        qint64 tick;
        double ms;
        int status, data1, data2;
    } expected[] = {
        {0, 0, 0xc1, 5, 0},
        {0, 0, 0x91, 60, 100},
        {50, 500, 0xb0, 7, 90},
        {100, 1000, 0x91, 62, 100},
        {100, 1000, 0x91, 60, 0},
        {110, 1100, 0xf0, 0, 0},
        {110, 1100, 0xe1, 0x00, 0x40},
    };
    ASSERT_EQ(song.events.size(), std::size(expected));
    for (size_t i = 0; i < song.events.size(); ++i) {
        SCOPED_TRACE(i);
        const MidiEvent &e = song.events[i];
        EXPECT_EQ(e.tick, expected[i].tick);
        EXPECT_NEAR(e.ms, expected[i].ms, 0.001);
        EXPECT_EQ(e.status, expected[i].status);
        if (e.status != 0xf0) {
            EXPECT_EQ(e.data1, expected[i].data1);
            EXPECT_EQ(e.data2, expected[i].data2);
        }
    }
    // System exclusive: the bytes between F0 and F7.
    const MidiEvent &sysex = song.events[5];
    EXPECT_EQ(song.smf.mid(sysex.dataOffset, sysex.dataLength), QByteArray("\x7e\x7f"));
}

TEST(MidiSong, BadHeadersAreNoSongAndTruncatedFilesKeepWhatCameBefore)
{
    const QByteArray smf = MidiWriter::tune(500);
    EXPECT_TRUE(MidiSong::looksLikeMidi(smf.left(12)));
    EXPECT_TRUE(MidiSong::looksLikeMidi(MidiWriter::rmid(smf).left(12)));
    EXPECT_FALSE(MidiSong::looksLikeMidi(QByteArray("RIFF\x10\0\0\0WAVEfmt ", 16)));

    QByteArray zeroDivision = smf, shortHeader = smf;
    zeroDivision[12] = zeroDivision[13] = 0;
    shortHeader[7] = 5;
    for (const QByteArray &bytes : {zeroDivision, shortHeader}) {
        SCOPED_TRACE(bytes.left(16).toHex().toStdString());
        const MidiSong song = MidiSong::read(bytes);
        EXPECT_FALSE(song.valid);
        EXPECT_EQ(song.lengthMs, 0);
        EXPECT_TRUE(song.events.empty());
    }

    // A file cut in its last track, whose length claims more than is left,
    // keeps what came before the break.
    const QByteArray whole = MidiWriter::smf(
        1, 480,
        {Track().tempo(0, 400000).end(),
         Track().note(0, 0, 60, 480).note(0, 0, 62, 480).note(0, 0, 64, 480).end()});
    const MidiSong full = MidiSong::read(whole);
    ASSERT_NEAR(full.lengthMs, 1200, 0.001);
    const MidiSong part = MidiSong::read(whole.left(whole.size() - 6));
    EXPECT_TRUE(part.valid);
    EXPECT_GT(part.events.size(), 2u);
    for (const MidiEvent &e : part.events)
        EXPECT_LE(qint64(e.dataOffset) + e.dataLength, part.smf.size());
}

} // namespace
