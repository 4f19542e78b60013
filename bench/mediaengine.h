#pragma once

#include "bench/benchsupport.h"
#include "platform/mediadevicefactory.h"
#include "platform/random.h"
#include "player/playbackengine.h"
#include "tests/support/recordingsurface.h"

#include <QFileInfo>

// The media engine module, loaded once per run.
inline MediaDeviceFactory &mediaDevices()
{
    static MediaDeviceFactory factory;
    return factory;
}

// A playback engine on real devices, writing to a surface that only keeps
// what it is given; the files are its playlist, the first one current.
template<typename Surface = RecordingSurface> struct EngineRig
{
    PlaylistState playlist;
    PlayerFlags flags;
    QuietDialogs dialogs;
    SystemRandom random;
    Surface skin;
    QString mciDevice = QStringLiteral("0");
    qint16 pbOverlap = 0, useTagCover = 0, friendlyNames = 1;
    PlaybackEngine engine{playlist,
                          flags,
                          {mciDevice, pbOverlap, useTagCover, friendlyNames},
                          skin,
                          dialogs,
                          random,
                          [] { return mediaDevices().create(); }};

    explicit EngineRig(const QStringList &files)
    {
        for (const QString &f : files) {
            playlist.PlPath << f;
            playlist.PlNames << QFileInfo(f).fileName();
        }
        playlist.CurTrack = 1;
    }
};
