#include "radio/fmtuner.h"
#include "radio/stationfile.h"

#include "skin/skinlistarea.h"
#include "skin/skintextfield.h"

#include "support/fakes.h"
#include "support/faketuner.h"
#include "support/printers.h"
#include "support/recordingsurface.h"
#include "support/temphome.h"
#include "support/testbytes.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

namespace {

class FmTunerTest : public ::testing::Test
{
protected:
    TempHome home;
    RecordingSurface skin;
    FakeDialogs dialogs;
    FakeBand band;
    qint16 enable = 1, cardType = 2, cardPort = 1, startPreset = 0, volume = 0;
    QString device = QStringLiteral("/dev/radio0"), startFreq = QStringLiteral("87.0");
    qint32 freq = 870;
    std::unique_ptr<FmTuner> fm;

    QString stationsFile() const { return home.file(QStringLiteral("stations.txt")); }
    void writeStations(const QByteArray &bytes)
    {
        home.write(QStringLiteral("stations.txt"), bytes);
    }
    QByteArray stationsBytes() const { return readAll(stationsFile()); }

    void start(bool inMode = true)
    {
        fm = std::make_unique<FmTuner>(
            FmTuner::Options{enable, device, cardType, cardPort, startPreset, startFreq, freq,
                             volume},
            FmTuner::Services{skin, dialogs, band.factory(), stationsFile()});
        fm->started();
        if (inMode)
            fm->entered();
    }
    QString label(int n) const { return skin.labels.value(n); }
    QString status() const { return label(FmTuner::kStatusLabel); }
    SkinListArea *list() { return skin.list(FmTuner::kPresetList); }
    SkinTextField *field() { return skin.textField(FmTuner::kNameField); }
    void scanToTheEnd()
    {
        for (int i = 0; i < 400 && fm->scanDir() != 0; ++i)
            fm->ScanTick();
    }
};

} // namespace

// Command 0 here tunes the frequency as set; 80 and 81 scan to the end.
TEST_F(FmTunerTest, FrequencyStepsAndScansStayInsideTheBand)
{
    band.volume = 20000;
    start();
    const struct
    {
        qint32 from;
        qint16 cmd;
        int scan;
        qint32 to;
    } cases[] = {
        {869, 0, 0, 870},    {1081, 0, 0, 1080}, {1000, 83, 0, 1010}, {1000, 82, 0, 990},
        {1000, 88, 0, 1001}, {1000, 89, 0, 999}, {1080, 81, 1, 1080}, {872, 80, -1, 870},
    };
    for (const auto &c : cases) {
        freq = c.from;
        fm->FMSetFreq();
        if (c.cmd)
            fm->DoIt(c.cmd);
        EXPECT_EQ(fm->scanDir(), c.scan) << c.from << " " << c.cmd;
        EXPECT_EQ(status(), c.scan ? QStringLiteral("Scanning...") : QString());
        scanToTheEnd();
        EXPECT_EQ(band.tuned.last(), c.to * 100000) << c.from << " " << c.cmd;
        EXPECT_DOUBLE_EQ(skin.groups.value(FmTuner::kFrequencyGroup).toDouble(), c.to / 10.0);
        EXPECT_EQ(label(FmTuner::kFrequencyLabel),
                  QStringLiteral("%1 FM").arg(c.to / 10.0, 0, 'f', 1));
        EXPECT_EQ(status(), QString()) << "the scan's word goes with it";
    }
    EXPECT_TRUE(band.on);
    EXPECT_EQ(band.opened, QStringList({QStringLiteral("/dev/radio0")}));
    EXPECT_EQ(volume, 20000) << "the card's volume, for FMVolume";

    fm->FMSetScan(+1);
    fm->DoIt(86);
    EXPECT_EQ(fm->scanDir(), 0) << "86 stops a scan";
    fm->DoIt(87);
    EXPECT_TRUE(fm->muted());
    EXPECT_FALSE(band.on);
    EXPECT_EQ(status(), QStringLiteral("Mute"));
    fm->DoIt(87);
    EXPECT_TRUE(band.on);
    EXPECT_EQ(status(), QString());
}

TEST_F(FmTunerTest, ScanStopsAtAStationAndShowsItsPresetAndStereo)
{
    writeStations("099.0 Nine\n101.5 Nova\n");
    band.stations = {{1015, true}, {1020, false}};
    start();
    QSignalSpy lights(fm.get(), &FmTuner::stateChanged);
    freq = 1010;
    fm->FMSetFreq();
    fm->FMSetScan(+1);
    scanToTheEnd();
    EXPECT_EQ(band.station(), 1015);
    EXPECT_TRUE(fm->signal());
    EXPECT_TRUE(fm->stereo());
    EXPECT_GE(lights.count(), 1);
    EXPECT_EQ(fm->currentPreset(), 1) << "FMFindStation";
    EXPECT_EQ(list()->currentRow(), 1);
    EXPECT_EQ(label(FmTuner::kStationLabel), QStringLiteral("Nova"));

    fm->FMSetScan(+1);
    scanToTheEnd();
    EXPECT_EQ(freq, 1020);
    EXPECT_FALSE(fm->stereo()) << "a mono station";
}

TEST_F(FmTunerTest, PresetLinesTuneTheirFrequencyAndShowTheirName)
{
    writeStations("101.5 Radio Nova\n\n088.0 FM\n");
    start();
    EXPECT_EQ(fm->presets().size(), 3);
    EXPECT_EQ(list()->count(), 3);
    fm->FMJumpPreset(0);
    EXPECT_EQ(freq, 1015);
    EXPECT_EQ(band.tuned.last(), 101500000);
    EXPECT_EQ(label(FmTuner::kStationLabel), QStringLiteral("Radio Nova"));
    EXPECT_EQ(skin.groups.value(FmTuner::kPresetGroup).toInt(), 0);

    const struct
    {
        qint16 cmd;
        int preset;
        qint32 freq;
    } steps[] = {
        {85, 1, 1015},                 // an empty slot: chosen, not tuned
        {85, 2, 880},  {85, 0, 1015},  // past the end comes the start
        {84, 2, 880},  {93, 2, 880},   // preset key 2
        {91, 0, 1015}, {100, 9, 1015}, // key 9: a slot past the list, where a store goes
    };
    for (const auto &s : steps) {
        fm->DoIt(s.cmd);
        EXPECT_EQ(fm->currentPreset(), s.preset) << s.cmd;
        EXPECT_EQ(freq, s.freq) << s.cmd;
        EXPECT_EQ(skin.groups.value(FmTuner::kPresetGroup).toInt(), s.preset) << s.cmd;
    }
}

TEST_F(FmTunerTest, StoreFillsEmptySlotsRenameReplacesTheNameAndDeleteRemoves)
{
    start();
    fm->DoIt(94); // preset key 3 on an empty list
    freq = 880;
    fm->FMSetFreq();
    fm->DoIt(90);
    EXPECT_EQ(fm->presets(),
              QStringList({QString(), QString(), QString(), QStringLiteral("088.0 FM")}));
    EXPECT_EQ(stationsBytes(), QByteArray("\n\n\n088.0 FM\n"));
    EXPECT_EQ(status(), QStringLiteral("Edit station  name")) << "two blanks, as it always was";
    EXPECT_TRUE(fm->renaming());
    EXPECT_EQ(field()->text(), QStringLiteral("FM"));

    field()->setText(QStringLiteral("Jazz & Blues"));
    QTest::keyClick(field(), Qt::Key_Return);
    EXPECT_FALSE(fm->renaming());
    EXPECT_EQ(status(), QString());
    EXPECT_EQ(fm->presets().value(3), QStringLiteral("088.0 Jazz & Blues"));
    EXPECT_EQ(label(FmTuner::kStationLabel), QStringLiteral("Jazz & Blues"));
    EXPECT_EQ(stationsBytes(), QByteArray("\n\n\n088.0 Jazz & Blues\n"));

    // F2 in the list renames the preset selected there, Delete removes it.
    writeStations("101.5 A\n102.0 B\n103.0 C\n");
    fm->LoadPresets();
    list()->setCurrentRow(1);
    QTest::keyClick(list(), Qt::Key_F2);
    EXPECT_EQ(status(), QStringLiteral("Edit station  name"));
    fm->FMRenameDone(QStringLiteral("Bee\nline"));
    EXPECT_EQ(stationsBytes(), QByteArray("101.5 A\n102.0 Bee line\n103.0 C\n"))
        << "one preset, one line";
    QTest::keyClick(list(), Qt::Key_Delete);
    EXPECT_EQ(fm->presets(), QStringList({QStringLiteral("101.5 A"), QStringLiteral("103.0 C")}));
    EXPECT_EQ(stationsBytes(), QByteArray("101.5 A\n103.0 C\n"));
    list()->clearSelection();
    list()->setCurrentRow(-1);
    QTest::keyClick(list(), Qt::Key_Delete);
    EXPECT_EQ(fm->presets().size(), 2) << "nothing selected, nothing deleted";
}

TEST_F(FmTunerTest, SwitchedOffOrWithoutADeviceTheModeSaysSoOnceAndThePresetsStillWork)
{
    writeStations("101.5 Nova\n");
    const struct
    {
        qint16 enable;
        const char *fault, *message, *status;
    } cases[] = {
        {0, "", "switched off", "Tuner off"},
        {1, "There is no radio device /dev/radio0.", "There is no radio device", "No radio device"},
    };
    for (const auto &c : cases) {
        enable = c.enable;
        band.fault = QString::fromLatin1(c.fault);
        dialogs.messages.clear();
        start();
        fm->left();
        fm->entered();
        ASSERT_EQ(dialogs.messages.size(), 1) << "once a run";
        EXPECT_TRUE(dialogs.messages[0].contains(QLatin1String(c.message)));
        EXPECT_EQ(status(), QString::fromLatin1(c.status));
        band.tuned.clear();
        fm->DoIt(83);
        EXPECT_TRUE(band.tuned.isEmpty()) << c.status;
        if (!c.enable) {
            enable = 1;
            fm->settingsChanged();
            EXPECT_EQ(band.opened.size(), 1) << "ticking the box opens the device";
        }
    }
    fm->FMJumpPreset(0);
    EXPECT_EQ(label(FmTuner::kStationLabel), QStringLiteral("Nova"));
    EXPECT_EQ(label(FmTuner::kFrequencyLabel), QStringLiteral("101.5 FM"));
    EXPECT_TRUE(band.tuned.isEmpty());
    fm->DoIt(95); // preset key 4
    fm->DoIt(90);
    EXPECT_EQ(fm->presets().value(4), QStringLiteral("101.5 FM"));
}

// Without a radio device there is nothing to mute: no question either.
TEST_F(FmTunerTest, ShutDownAsksToMuteOnlyWhenItMayAsk)
{
    const struct
    {
        qint16 enable;
        bool interactive, answer;
        int questions, offs;
        const char *fault = "";
    } cases[] = {{1, true, true, 1, 1},
                 {1, true, false, 1, 0},
                 {1, false, true, 0, 0},
                 {0, true, true, 0, 0},
                 {1, true, true, 0, 0, "There is no radio device /dev/radio0."}};
    for (const auto &c : cases) {
        enable = c.enable;
        band.fault = QString::fromLatin1(c.fault);
        band.offs = 0;
        dialogs.questions.clear();
        dialogs.answer = c.answer;
        start(false);
        fm->ending(c.interactive);
        EXPECT_EQ(dialogs.questions.size(), c.questions);
        EXPECT_EQ(dialogs.questions.value(0), c.questions ? "Mute FM Tuner Audio?" : QString());
        EXPECT_EQ(band.offs, c.offs);
    }
}

TEST_F(FmTunerTest, StartTunesTheStartPresetElseTheStartFrequency)
{
    writeStations("101.5 Nova\n\n099.9 Late\n");
    const struct
    {
        qint16 preset;
        const char *startFreq;
        qint32 tuned;
    } cases[] = {
        {2, "90.0", 999},   // the preset wins
        {1, "90.0", 900},   // an empty slot: the frequency
        {7, "104.2", 1042}, // no such preset
        {1, "junk", 870},   // no number: the bottom of the band
    };
    for (const auto &c : cases) {
        startPreset = c.preset;
        startFreq = QString::fromLatin1(c.startFreq);
        start();
        EXPECT_EQ(freq, c.tuned) << c.preset;
        EXPECT_EQ(band.tuned.last(), c.tuned * 100000) << c.preset;
    }
}

TEST_F(FmTunerTest, AStationFileItCannotReadIsNeverWrittenOver)
{
    const QByteArray big(kMaxStationFileBytes + 1, 'x');
    writeStations(big);
    start();
    ASSERT_EQ(dialogs.messages.size(), 1);
    EXPECT_TRUE(dialogs.messages[0].startsWith(QStringLiteral("stations.txt is too big")));
    fm->DoIt(90);
    EXPECT_EQ(fm->presets().size(), 1) << "the list works in memory";
    EXPECT_EQ(stationsBytes(), big) << "the file stays as it was";
}
