#include "core/dispatcher.h"

#include "support/printers.h"

#include <QStringList>
#include <gtest/gtest.h>

#include <stdexcept>

namespace {

// Every target in one object, logging each call (queries included) in order.
// throwOn names a method that throws instead of running.
class Recorder : public WindowCommands,
                 public PlayerCommands,
                 public PlaylistCommands,
                 public CalculatorCommands,
                 public StopwatchCommands,
                 public NotepadCommands,
                 public FmCommands,
                 public WebCommands,
                 public WebRadioCommands,
                 public ToolCommands
{
public:
    mutable QStringList calls;
    QString throwOn;
    bool throwForeign = false; // throw something that is no std::exception
    qint32 position = 0;
    int selected = -1;
    bool clock = false;
    const PlayerFlags *flags = nullptr;

    void log(const QString &name, const QString &arg = {}) const
    {
        calls << (arg.isNull() ? name : name + ' ' + arg);
        if (name != throwOn)
            return;
        if (throwForeign)
            throw 42;
        throw std::runtime_error("device gone");
    }
    void log(const QString &name, int arg) const { log(name, QString::number(arg)); }

    QString currentSkinFile() const override { return log("currentSkinFile"), "current.skin"; }
    qint32 currentPosition() const override { return log("currentPosition"), position; }
    int selectedIndex() const override { return log("selectedIndex"), selected; }
    void ShowLights() override
    {
        // The lights must see the flag already flipped.
        log("ShowLights", QStringLiteral("%1%2%3%4")
                              .arg(int(flags->IntroScan))
                              .arg(int(flags->StopAfterItem))
                              .arg(int(flags->RepeatItem))
                              .arg(int(flags->Shuffle)));
    }
    void LoadSkin(const QString &f) override { log("LoadSkin", f); }
    void WebLink(const QString &u) override { log("WebLink", u); }
    void AddDigit(QChar c) override { log("AddDigit", QString(c)); }
    bool clockSkin() const override { return clock; }
    void JumpTo(qint32 mark) override { log("JumpTo", mark); }

    // clang-format off
#define LOGGED(name) void name() override { log(#name); }
#define LOGGED_INT(name) void name(int v) override { log(#name, v); }
    LOGGED(Quit) LOGGED(Minimise) LOGGED(ShowPrefs) LOGGED(SelectSkin) LOGGED(ShowAux16)
    LOGGED(ToggleAux) LOGGED(ShowVisSelect) LOGGED(ShowMenu) LOGGED(ShowTrackInfo)
    LOGGED(ShowQuickFind)
    LOGGED(StopIt) LOGGED(PauseIt) LOGGED(PlayIt) LOGGED(EjectIt) LOGGED(PrevTrack)
    LOGGED(NextTrack) LOGGED(Reverse) LOGGED(Forward) LOGGED(PlayPause) LOGGED(ToggleCDMode)
    LOGGED(ToggleRemaining) LOGGED_INT(VolumeStep) LOGGED(ToggleMute)
    LOGGED_INT(PlSelAct) LOGGED(LoopPoint)
    LOGGED_INT(PlMoveEntry) LOGGED(PlClear) LOGGED(PlLoad) LOGGED(PlSaveAs) LOGGED(OpenMedia)
    LOGGED(AddFromDir)
    LOGGED_INT(CalcKey) LOGGED(SelectConversionFile) LOGGED_INT(TimerFn)
    LOGGED(NoteLoad) LOGGED(NoteSave) LOGGED(NoteClear) LOGGED(NotePrint)
    LOGGED_INT(FMSetScan) LOGGED(FMTuneDown) LOGGED(FMTuneUp) LOGGED(FMPrevPreset)
    LOGGED(FMNextPreset) LOGGED(FMShowFreq) LOGGED(FMAct87) LOGGED_INT(FMStep)
    LOGGED(FMEnterFreq) LOGGED_INT(FMPresetKey)
    LOGGED_INT(WebNav) LOGGED(WebSearch) LOGGED_INT(QuickLink)
    LOGGED_INT(WRQuickURL) LOGGED_INT(WRDoPreset) LOGGED(WRAddStation) LOGGED(WRDelStation)
    LOGGED_INT(WRStep) LOGGED(WRAct146) LOGGED(WRPlay) LOGGED(WRStop)
    LOGGED(ShowMixer)
    // clang-format on
#undef LOGGED
#undef LOGGED_INT
};

// Collects qWarning output while it lives.
struct WarningCatcher
{
    static inline QStringList caught;
    QtMessageHandler previous =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
            if (type == QtWarningMsg)
                caught << text;
        });
    ~WarningCatcher()
    {
        qInstallMessageHandler(previous);
        caught.clear();
    }
};

class DispatcherTest : public ::testing::Test
{
protected:
    DispatcherTest()
    {
        r.flags = &flags;
        for (int i = 0; i < 21; ++i)
            links << QStringLiteral("entry%1").arg(i);
    }

    QStringList run(qint16 cmd)
    {
        r.calls.clear();
        dispatcher.DoIt(cmd);
        return r.calls;
    }

    Recorder r;
    PlayerFlags flags;
    qint32 markPos = 0;
    qint16 wrPresetIdx = 7;
    QStringList links;
    Dispatcher dispatcher{{r, r, r, r, r, r, r, r, r, r, flags, markPos, wrPresetIdx, links}};
};

// Range bounds, offsets, directions and the private actions; which numbers
// do nothing at all is the sweep below.
TEST_F(DispatcherTest, CommandsReachTheirProcedureWithTheRangeOffset)
{
    r.selected = 4;
    r.position = -1; // nothing plays: MarkPos still takes it
    const std::pair<qint16, const char *> cases[] = {
        // clang-format off
        {7, "VolumeStep 1"},    {8, "VolumeStep -1"},   {17, "selectedIndex, PlSelAct 4"},
        {18, "PlMoveEntry 1"},  {19, "PlMoveEntry -1"}, {40, "AddDigit 0"},   {49, "AddDigit 9"},
        {50, "AddDigit ."},     {51, "CalcKey 0"},      {68, "CalcKey 17"},   {70, "TimerFn 1"},
        {75, "TimerFn 6"},      {80, "FMSetScan -1"},   {89, "FMStep -1"},    {91, "FMPresetKey 0"},
        {100, "FMPresetKey 9"}, {105, "WebNav 4"},      {110, "QuickLink 0"}, {139, "WRQuickURL 9"},
        {140, "WRDoPreset 6"},  {141, "WRDoPreset 8"},  {145, "WRStep -1"},   {148, "WRStop"},
        {31, "currentPosition"}, {39, "JumpTo -1"}, {4, "ToggleRemaining"},
        {151, "currentSkinFile, LoadSkin current.skin"},
        // clang-format on
    };
    for (const auto &[cmd, calls] : cases)
        EXPECT_EQ(run(cmd).join(", "), QLatin1String(calls)) << "command " << cmd;
    EXPECT_EQ(markPos, -1);
    EXPECT_EQ(wrPresetIdx, 7) << "the preset index belongs to the web radio";
    r.clock = true;
    EXPECT_EQ(run(4).join(", "), QLatin1String("TimerFn 7")) << "a clock skin splits";
}

TEST_F(DispatcherTest, OnlyNumbersOfTheTableDoAnything)
{
    WarningCatcher quiet;
    const auto listed = [](int cmd) {
        return (cmd >= 1 && cmd <= 106) || (cmd >= 110 && cmd <= 119) ||
               (cmd >= 130 && cmd <= 148) || cmd == 150 || cmd == 151 ||
               (cmd >= 1001 && cmd <= 1010);
    };
    for (int cmd = -32768; cmd <= 32767; ++cmd) {
        const QStringList calls = run(qint16(cmd));
        ASSERT_EQ(!calls.isEmpty(), listed(cmd))
            << "command " << cmd << ": " << calls.join(", ").toStdString();
    }
}

TEST_F(DispatcherTest, ToggleCommandsFlipOneFlagThenRedrawTheLights)
{
    // The lights show IntroScan, StopAfterItem, RepeatItem and Shuffle in that order.
    const std::pair<qint16, const char *> cases[] = {{25, "ShowLights 1000"},
                                                     {26, "ShowLights 0100"},
                                                     {27, "ShowLights 0010"},
                                                     {28, "ShowLights 0001"}};
    for (const auto &[cmd, lightsAfterFirst] : cases) {
        flags = {};
        EXPECT_EQ(run(cmd), QStringList{lightsAfterFirst}) << "command " << cmd;
        EXPECT_EQ(run(cmd), QStringList{"ShowLights 0000"}) << "command " << cmd;
    }
}

TEST_F(DispatcherTest, KeyTableLoadsSkinsButNeverOpensALink)
{
    WarningCatcher warnings;
    for (int cmd = 1001; cmd <= 1010; ++cmd)
        EXPECT_EQ(run(qint16(cmd)), QStringList{"LoadSkin entry" + QString::number(cmd - 1000)});
    for (int cmd = 1011; cmd <= 1020; ++cmd) {
        EXPECT_TRUE(run(qint16(cmd)).isEmpty()) << "command " << cmd;
        ASSERT_FALSE(warnings.caught.isEmpty());
        EXPECT_TRUE(warnings.caught.last().contains(QString::number(cmd)));
    }
    // A skin whose key table was never filled has nothing to load.
    links.clear();
    EXPECT_TRUE(run(1001).isEmpty());
}

TEST_F(DispatcherTest, AFailingCommandIsLoggedAndTheNextOneRuns)
{
    for (bool foreign : {false, true}) {
        WarningCatcher warnings;
        r.throwOn = QStringLiteral("PlayIt");
        r.throwForeign = foreign;
        EXPECT_EQ(run(12), QStringList{"PlayIt"});
        ASSERT_EQ(warnings.caught.size(), 1);
        EXPECT_TRUE(warnings.caught.first().contains(QStringLiteral("DoIt(12)")));
        EXPECT_EQ(warnings.caught.first().contains(QStringLiteral("device gone")), !foreign);
        EXPECT_EQ(run(10), QStringList{"StopIt"});
    }
}

} // namespace
