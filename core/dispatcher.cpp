#include "dispatcher.h"

#include <QDebug>
#include <exception>
#include <stdexcept>
#include <string>

namespace {

using P = Dispatcher::Parts;
using Handler = void (*)(P &, int cmd);

// Commands low <= cmd < high. Single numbers are one-wide ranges, so the
// bounds of every range read exactly as the command table states them.
struct Route
{
    int low;
    int high;
    Handler run;
};

void toggle(P &p, bool PlayerFlags::*flag)
{
    p.flags.*flag = !(p.flags.*flag);
    p.player.ShowLights();
}

constexpr Route kRoutes[] = {
    {1, 2, [](P &p, int) { p.window.Quit(); }},
    {2, 3, [](P &p, int) { p.window.Minimise(); }},
    {3, 4, [](P &p, int) { p.window.ShowTrackInfo(); }},
    // A clock skin shows no track time: there the same button holds a split.
    {4, 5,
     [](P &p, int) {
         if (p.window.clockSkin())
             p.stopwatch.TimerFn(7);
         else
             p.player.ToggleRemaining();
     }},
    {5, 6, [](P &p, int) { p.window.ShowPrefs(); }},
    {6, 7, [](P &p, int) { p.window.SelectSkin(); }},
    {7, 8, [](P &p, int) { p.player.VolumeStep(+1); }},
    {8, 9, [](P &p, int) { p.player.VolumeStep(-1); }},
    {9, 10, [](P &p, int) { p.player.ToggleMute(); }},
    {10, 11, [](P &p, int) { p.player.StopIt(); }},
    {11, 12, [](P &p, int) { p.player.PauseIt(); }},
    {12, 13, [](P &p, int) { p.player.PlayIt(); }},
    {13, 14, [](P &p, int) { p.player.EjectIt(); }},
    {14, 15, [](P &p, int) { p.player.PrevTrack(); }},
    {15, 16, [](P &p, int) { p.player.NextTrack(); }},
    {16, 17, [](P &p, int) { p.window.ShowAux16(); }},
    {17, 18, [](P &p, int) { p.player.PlSelAct(p.playlist.selectedIndex()); }},
    {18, 19, [](P &p, int) { p.playlist.PlMoveEntry(+1); }},
    {19, 20, [](P &p, int) { p.playlist.PlMoveEntry(-1); }},
    {20, 21, [](P &p, int) { p.playlist.PlClear(); }},
    {21, 22, [](P &p, int) { p.playlist.PlLoad(); }},
    {22, 23, [](P &p, int) { p.playlist.PlSaveAs(); }},
    {23, 24, [](P &p, int) { p.playlist.OpenMedia(); }},
    {24, 25, [](P &p, int) { p.playlist.AddFromDir(); }},
    {25, 26, [](P &p, int) { toggle(p, &PlayerFlags::IntroScan); }},
    {26, 27, [](P &p, int) { toggle(p, &PlayerFlags::StopAfterItem); }},
    {27, 28, [](P &p, int) { toggle(p, &PlayerFlags::RepeatItem); }},
    {28, 29, [](P &p, int) { toggle(p, &PlayerFlags::Shuffle); }},
    {29, 30, [](P &p, int) { p.tools.ShowMixer(); }},
    {30, 31, [](P &p, int) { p.player.LoopPoint(); }},
    // Whatever the position is, playing or not.
    {31, 32, [](P &p, int) { p.MarkPos = p.player.currentPosition(); }},
    {32, 33, [](P &p, int) { p.player.Reverse(); }},
    {33, 34, [](P &p, int) { p.player.Forward(); }},
    {34, 35, [](P &p, int) { p.window.ToggleAux(); }},
    {35, 36, [](P &p, int) { p.window.ShowVisSelect(); }},
    {36, 37, [](P &p, int) { p.player.PlayPause(); }},
    {37, 38, [](P &p, int) { p.player.ToggleCDMode(); }},
    {38, 39, [](P &p, int) { p.window.ShowMenu(); }},
    {39, 40, [](P &p, int) { p.player.JumpTo(p.MarkPos); }},
    {40, 50, [](P &p, int cmd) { p.calculator.AddDigit(QChar(cmd + 8)); }},
    {50, 51, [](P &p, int) { p.calculator.AddDigit(QLatin1Char('.')); }},
    {51, 69, [](P &p, int cmd) { p.calculator.CalcKey(cmd - 51); }},
    {69, 70, [](P &p, int) { p.calculator.SelectConversionFile(); }},
    {70, 76, [](P &p, int cmd) { p.stopwatch.TimerFn(cmd - 69); }},
    {76, 77, [](P &p, int) { p.notepad.NoteLoad(); }},
    {77, 78, [](P &p, int) { p.notepad.NoteSave(); }},
    {78, 79, [](P &p, int) { p.notepad.NoteClear(); }},
    {79, 80, [](P &p, int) { p.notepad.NotePrint(); }},
    {80, 81, [](P &p, int) { p.fm.FMSetScan(-1); }},
    {81, 82, [](P &p, int) { p.fm.FMSetScan(+1); }},
    {82, 83, [](P &p, int) { p.fm.FMTuneDown(); }},
    {83, 84, [](P &p, int) { p.fm.FMTuneUp(); }},
    {84, 85, [](P &p, int) { p.fm.FMPrevPreset(); }},
    {85, 86, [](P &p, int) { p.fm.FMNextPreset(); }},
    {86, 87, [](P &p, int) { p.fm.FMShowFreq(); }},
    {87, 88, [](P &p, int) { p.fm.FMAct87(); }},
    {88, 89, [](P &p, int) { p.fm.FMStep(+1); }},
    {89, 90, [](P &p, int) { p.fm.FMStep(-1); }},
    {90, 91, [](P &p, int) { p.fm.FMEnterFreq(); }},
    {91, 101, [](P &p, int cmd) { p.fm.FMPresetKey(cmd - 91); }},
    {101, 106, [](P &p, int cmd) { p.web.WebNav(cmd - 101); }},
    {106, 107, [](P &p, int) { p.web.WebSearch(); }},
    // 107 and 108 are reserved and do nothing on purpose, as do 109 and 120-129.
    {110, 120, [](P &p, int cmd) { p.web.QuickLink(cmd - 110); }},
    {130, 140, [](P &p, int cmd) { p.webRadio.WRQuickURL(cmd - 130); }},
    {140, 141, [](P &p, int) { p.webRadio.WRDoPreset(p.WRPresetIdx - 1); }},
    {141, 142, [](P &p, int) { p.webRadio.WRDoPreset(p.WRPresetIdx + 1); }},
    {142, 143, [](P &p, int) { p.webRadio.WRAddStation(); }},
    {143, 144, [](P &p, int) { p.webRadio.WRDelStation(); }},
    {144, 145, [](P &p, int) { p.webRadio.WRStep(+1); }},
    {145, 146, [](P &p, int) { p.webRadio.WRStep(-1); }},
    {146, 147, [](P &p, int) { p.webRadio.WRAct146(); }},
    {147, 148, [](P &p, int) { p.webRadio.WRPlay(); }},
    {148, 149, [](P &p, int) { p.webRadio.WRStop(); }},
    {150, 151, [](P &p, int) { p.window.ShowQuickFind(); }},
    {151, 152, [](P &p, int) { p.window.LoadSkin(p.window.currentSkinFile()); }},
    {1001, 1011,
     [](P &p, int cmd) { p.window.LoadSkin(Dispatcher::linkEntry(p.LinkList, cmd - 1000)); }},
    // The 210 offset lands on 801..810, past the end of the key table, so these
    // never open a link. Skins rely on these numbers being inert: keep it.
    {1011, 1021,
     [](P &p, int cmd) { p.window.WebLink(Dispatcher::linkEntry(p.LinkList, cmd - 210)); }},
};

constexpr bool routesSortedAndDisjoint()
{
    int previousHigh = 0;
    for (const Route &r : kRoutes) {
        if (r.low < previousHigh || r.high <= r.low)
            return false;
        previousHigh = r.high;
    }
    return true;
}
static_assert(routesSortedAndDisjoint(), "command ranges must be sorted and must not overlap");

const Route *findRoute(int cmd)
{
    for (const Route &r : kRoutes) {
        if (cmd < r.low)
            return nullptr;
        if (cmd < r.high)
            return &r;
    }
    return nullptr;
}

} // namespace

const QString &Dispatcher::linkEntry(const QStringList &list, int index)
{
    if (index < 0 || index > 20 || index >= list.size())
        throw std::out_of_range("subscript out of range: key table entry " + std::to_string(index));
    return list[index];
}

void Dispatcher::DoIt(qint16 cmd)
{
    const Route *route = findRoute(cmd);
    if (!route)
        return;
    try {
        route->run(m_parts, cmd);
    } catch (const std::exception &e) {
        qWarning("DoIt(%d) failed: %s", int(cmd), e.what());
    } catch (...) {
        qWarning("DoIt(%d) failed", int(cmd));
    }
}
