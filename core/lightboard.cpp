#include "lightboard.h"

#include "core/menumodel.h"
#include "core/settings.h"
#include "player/playerpart.h"
#include "radio/fmtuner.h"
#include "skin/lights.h"
#include "skin/skinsurface.h"
#include "tools/stopwatches.h"

void LightBoard::refresh()
{
    const Settings &settings = m_sources.settings;
    const PlayerPart &player = m_sources.player;
    const PlaybackState &state = player.state();
    const PlayerFlags &flags = player.flags();

    PlayerSwitches s;
    s.playing = state.playing && !state.paused;
    s.paused = state.paused;
    s.introScan = flags.IntroScan;
    s.stopAfterItem = flags.StopAfterItem;
    s.repeatItem = flags.RepeatItem;
    s.shuffle = flags.Shuffle;
    s.continuousPlay = settings.ContPB != 0;
    s.muted = player.muted();
    s.mediaMode = !state.CDMode;
    s.scheduleAuto = settings.Auto != 0;
    s.snooze = settings.Snooze != 0;
    s.abLoop = state.LoopStart != 0;
    s.lyrics = player.lyricsLoaded();
    s.ledSign = settings.ExEnable == 1;
    s.onTop = isOnTop(settings.WinOnTop);
    s.twentyFourHour = settings.TimeFmt != 0;
    s.stopwatchRunning = m_sources.stopwatches.anyRunning();
    s.fmStereo = m_sources.fmTuner.stereo();
    s.fmSignal = m_sources.fmTuner.signal();
    m_skin.ShowLights(ShowLights(s));
}
