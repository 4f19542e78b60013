#include "lifecycle.h"

#include "commandline.h"
#include "placement.h"
#include "programfolder.h"
#include "settings.h"

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/random.h"
#include "platform/screens.h"
#include "player/playlist.h"
#include "player/startfiles.h"
#include "skin/skinpart.h"

#include <QDir>
#include <QFileInfo>

QString Lifecycle::defaultSkin() const
{
    return m_svc.folder.file(QStringLiteral("skins/default.skin"));
}

QString Lifecycle::startSkin()
{
    Settings &s = m_settings;
    const QString folder = s.SkinPath.isEmpty() ? m_svc.folder.path() : s.SkinPath;
    const QString chosen = QDir(folder).filePath(s.Skin);
    if (!s.Skin.isEmpty() && QFileInfo(chosen).isFile())
        return chosen;
    // A first start has chosen nothing yet: nothing to complain about.
    if (!s.Skin.isEmpty())
        m_svc.dialogs.message(QStringLiteral("Previously selected skin not found (") + s.Skin +
                              QStringLiteral(")! Using default"));
    const QFileInfo fallback(defaultSkin());
    s.SkinPath = fallback.absolutePath();
    s.Skin = fallback.fileName();
    return fallback.filePath();
}

void Lifecycle::Load(const QStringList &names, const QString &workingFolder, bool playNow)
{
    Settings &s = m_settings;
    m_svc.config.ReadAll(s);
    const QPoint current = m_window.windowPos();
    m_svc.config.ReadPosition(s, current.x(), current.y());
    m_window.moveWindow(
        keepOnScreen(QPoint(s.X, s.Y), m_window.windowSize(), m_svc.screens.workAreas()));
    bool levelKnown = false;
    const quint32 level =
        m_svc.config.GetCfgStr(QStringLiteral("OutputLevel"), QString()).toUInt(&levelKnown);
    if (levelKnown)
        m_player.restoreOutputLevel(level);

    const QString skin = startSkin();
    m_svc.random.seed(quint32(m_svc.clock.now().time().msecsSinceStartOfDay()));
    m_window.LoadSkin(skin);

    // The parts read their own files (schedule, stations, conversions) and
    // start their timers.
    for (SkinPart *part : m_parts)
        part->started();

    if (s.StartMin == 1)
        m_window.minimiseWindow();

    const QStringList named = openedNames(names, workingFolder);
    for (const QString &name : named) {
        if (name.contains(QLatin1String("://")) || QFileInfo::exists(name))
            m_player.addOpened(name);
        else
            m_svc.dialogs.message(QStringLiteral("File not found:\r") + name);
    }
    if (named.isEmpty() && s.StartMd == 1)
        RestoreLastState();
    else if (named.isEmpty() && s.StartMd == 2 && !s.StartFile.isEmpty())
        m_player.addOpened(s.StartFile);

    if (s.AutoPlay != 0 || (playNow && !named.isEmpty()))
        m_player.playWhenScanned();
}

void Lifecycle::SaveLastState()
{
    m_svc.config.SaveStr(QStringLiteral("LastCover"), m_player.currentCover());
    m_svc.config.SaveStr(QStringLiteral("LastTrack"), QString::number(m_playlist.CurTrack));
    m_svc.config.SaveStr(QStringLiteral("OutputLevel"), QString::number(m_player.outputLevel()));
    const QString failure =
        Playlist(m_playlist).WritePL(m_svc.folder.file(QStringLiteral("playlist.m3u")));
    if (!failure.isEmpty())
        qWarning("velto: %s", qPrintable(failure));
}

void Lifecycle::RestoreLastState()
{
    Playlist playlist(m_playlist);
    playlist.friendlyNames = m_settings.FriendlyNames > 0;
    const QString failure = playlist.PlRead(m_svc.folder.file(QStringLiteral("playlist.m3u")));
    if (!failure.isEmpty())
        m_svc.dialogs.message(failure);
    m_playlist.CurTrack = m_svc.config.GetCfgInt(QStringLiteral("LastTrack"), QStringLiteral("0"));
    m_player.setStartCover(m_svc.config.GetCfgStr(QStringLiteral("LastCover"), QString()));
}

void Lifecycle::Unload(bool interactive)
{
    if (m_unloaded)
        return;
    m_unloaded = true;
    const QPoint pos = m_window.windowPos();
    m_settings.X = qint16(pos.x());
    m_settings.Y = qint16(pos.y());

    // The last state goes first so one write of the store holds it all.
    SaveLastState();
    if (!m_svc.config.WriteAll(m_settings))
        qWarning("velto: the settings could not be written");

    for (SkinPart *part : m_parts)
        part->ending(interactive);
}
