#pragma once

class FmTuner;
class PlayerPart;
class SkinSurface;
class Stopwatches;
struct Settings;

// The one place the indicator lights are decided: each light from the
// state of the part or the setting behind it, so a light added to the list
// cannot be forgotten by the part that changes its state.
class LightBoard
{
public:
    struct Sources
    {
        const Settings &settings;
        const PlayerPart &player;
        const Stopwatches &stopwatches;
        const FmTuner &fmTuner;
    };

    LightBoard(SkinSurface &skin, Sources sources) : m_skin(skin), m_sources(sources) {}

    // Shows every light as the parts' state has it now. Cheap when nothing
    // changed: the clock's beat calls it four times a second.
    void refresh();

private:
    SkinSurface &m_skin;
    Sources m_sources;
};
