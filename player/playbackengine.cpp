#include "playbackengine.h"

#include "mediaerror.h"
#include "mediatype.h"
#include "platform/dialogs.h"
#include "platform/mediadevice.h"
#include "platform/nullmediadevice.h"
#include "platform/random.h"
#include "skin/skinsurface.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <cmath>

namespace {

const QString kDelay = QStringLiteral("Delay");
const QString kNotFound = QStringLiteral("[FILE NOT FOUND]");

} // namespace

PlaybackEngine::PlaybackEngine(PlaylistState &playlist, PlayerFlags &flags, Options options,
                               SkinSurface &skin, Dialogs &dialogs, Random &random,
                               DeviceFactory makeDevice)
    : m_playlist(playlist), m_flags(flags), m_options(options), m_skin(skin), m_dialogs(dialogs),
      m_random(random), m_makeDevice(std::move(makeDevice))
{
    m_timer1.setInterval(kTickMs);
    connect(&m_timer1, &QTimer::timeout, this, &PlaybackEngine::Timer1_Timer);
}

PlaybackEngine::~PlaybackEngine()
{
    // Devices call back into the engine: silence them before anything else goes.
    for (auto &device : m_devices)
        if (device)
            device->setEvents({});
}

MediaDevice *PlaybackEngine::device(int index) const
{
    return index == 0 || index == 1 ? m_devices[size_t(index)].get() : nullptr;
}

MediaDevice &PlaybackEngine::instance(int index)
{
    std::unique_ptr<MediaDevice> &slot = m_devices[size_t(index & 1)];
    if (!slot) {
        if (m_makeDevice)
            slot = m_makeDevice();
        if (!slot)
            slot = std::make_unique<NullMediaDevice>();
        MediaDevice::Events events;
        events.opened = [this, index] { deviceOpened(index); };
        events.ended = [this, index] { deviceEnded(index); };
        events.failed = [this, index](int, const QString &) { deviceFailed(index); };
        slot->setEvents(std::move(events));
        emit deviceCreated(slot.get());
    }
    return *slot;
}

QString PlaybackEngine::displayName() const
{
    return m_playlist.PlNames.value(m_playlist.CurTrack - 1);
}

void PlaybackEngine::clearTrackLabels()
{
    for (int label : {kTypeLabel, kNameLabel, kNumberLabel, kLengthLabel})
        m_skin.setLabel(label, QString());
}

void PlaybackEngine::PlayFile(const QString &path)
{
    m_state.CurFile = path;
    m_playlist.CurTrack = -99;
    PlayIt();
}

void PlaybackEngine::setCDMode(bool on)
{
    if (m_state.CDMode == on)
        return;
    // The last item of the other source must not play on, or come back on
    // the other device after a pause.
    CloseDevices();
    m_state.CDMode = on;
    m_state.CurDevice.clear();
    m_state.TrackLength = 0;
    m_state.PlayPos = 0;
    m_state.LoopStart = m_state.LoopEnd = 0;
    m_tag = TagRecord();
    clearTrackLabels();
    StopIt();
}

void PlaybackEngine::PlayIt()
{
    PlaylistState &pl = m_playlist;
    if (pl.CurTrack == -99) {
        if (pl.PlPath.size() < Playlist::kMaxEntries) {
            const QString &file = m_state.CurFile;
            pl.PlPath << file;
            pl.PlNames << Playlist::markPicture(
                Playlist::FriendlyName(file, m_options.FriendlyNames > 0), file);
            emit playlistChanged();
        }
        pl.CurTrack = int(pl.PlNames.size());
    }
    const int count = int(pl.PlNames.size());
    if (pl.CurTrack < 1)
        pl.CurTrack = count;
    if (pl.CurTrack > count) {
        // Past the end the list wraps to its start but stays stopped.
        pl.CurTrack = 1;
        clearTrackLabels();
        StopIt();
        return;
    }

    m_timer1.stop();
    if (m_opening[size_t(m_state.CurMci)]) {
        // Still opening the entry before: that one will not play now.
        m_opening[size_t(m_state.CurMci)] = false;
        instance(m_state.CurMci).close();
    }
    clearTrackLabels();
    m_state.CurDevice.clear();
    // A loop marks a spot in one item; the next item starts without it.
    m_state.LoopStart = m_state.LoopEnd = 0;
    if (pl.CurTrack < 1 || pl.CurTrack > pl.PlPath.size())
        return; // an empty list plays nothing

    if (m_state.CDMode) {
        // The CD part filled the list with its tracks' names for the device.
        m_state.CurDevice = QStringLiteral("cdaudio");
        m_state.CurMci = 1;
        m_state.CurFile = pl.PlPath[pl.CurTrack - 1];
        m_tag = TagRecord();
        openCurrent();
        return;
    }

    const QString file = pl.PlPath[pl.CurTrack - 1];
    m_state.CurFile = file;
    if (file.size() >= 5 && file[4] == QLatin1Char(':')) {
        m_dialogs.message(QStringLiteral("Internet file!"));
        return;
    }
    if (file.isEmpty() || !QFileInfo::exists(file)) {
        QString &name = pl.PlNames[pl.CurTrack - 1];
        if (!name.contains(kNotFound))
            name += QLatin1Char(' ') + kNotFound;
        pl.PlPath[pl.CurTrack - 1].clear();
        emit playlistChanged();
        return;
    }

    const MediaType type = classifyMedia(file, m_options.MCIDevice);
    m_state.CurDevice = type.device;
    m_tag = TagRecord();
    switch (type.kind) {
    case MediaType::Kind::Mpeg: {
        const Mp3Info info = GetMP3Info(file);
        m_tag = info.tag;
        emit mp3Info(info);
        if (m_options.UseTagCover == 1)
            emit tagCoverWanted(m_tag.Album, m_tag.Artist);
        break;
    }
    case MediaType::Kind::Placeholder:
        return; // playback halts here until the user moves on
    case MediaType::Kind::Picture:
        startDelayItem();
        return;
    case MediaType::Kind::CdTrack:
        emit cdTrackWanted(type.cdTrack);
        return;
    case MediaType::Kind::DiscImage:
        emit discImageWanted(file);
        return;
    default:
        break;
    }
    openCurrent();
}

void PlaybackEngine::startDelayItem()
{
    m_state.TrackLength = kPictureMs;
    m_state.PlayPos = 0;
    m_state.TrackStart = 0;
    emit coverWanted(m_state.CurFile);
    emit entryShown(m_playlist.CurTrack - 1);
    // A picture opens no device. Its instance still gets "play" (only
    // "delay" in lower case would skip it) and ignores it; closed first, so
    // no older item comes back to life under the picture.
    MediaDevice &device = instance(m_state.CurMci);
    m_opening[size_t(m_state.CurMci)] = false;
    device.close();
    device.play();
    m_starting = true;
    started(true);
}

void PlaybackEngine::openCurrent()
{
    const int index = m_state.CurMci;
    MediaDevice &device = instance(index);
    device.close();
    device.setDeviceType(m_state.CurDevice);
    device.setFileName(m_state.CurFile);
    m_state.TrackLength = 0;
    m_state.PlayPos = 0;
    m_state.TrackStart = 0;
    m_opening[size_t(index)] = true;
    m_starting = true;
    device.open();
    // Asked for now, so sound starts the moment the file is open; the rest
    // of the start waits for the device in deviceOpened().
    device.play();
    // Tracker modules play through the same device as any file, so nothing
    // waits here: the tick starts when the device reports the file open.
}

void PlaybackEngine::deviceOpened(int index)
{
    if (!m_opening[size_t(index)])
        return;
    m_opening[size_t(index)] = false;
    MediaDevice &device = instance(index);
    if (index != m_state.CurMci) {
        device.close();
        return;
    }
    m_state.TrackLength = qint32(qMin<qint64>(device.length(), INT32_MAX));
    emit trackStarted(m_state.CurFile);
    started(m_starting);
    // With an overlap the next item opens on the other device in this one's
    // last moments: made now, those moments pay only for loading the file.
    if (!m_state.CDMode && m_options.PBOverlap >= 1)
        instance(1 - index);
}

// Steps that follow a successful open, "Delay" items included. After a StopIt
// the titles still show what is loaded, but nothing counts as playing.
void PlaybackEngine::started(bool showPlaying)
{
    m_shownSeconds = -1;
    if (showPlaying) {
        m_state.playing = true;
        m_state.paused = false;
        m_skin.setSliderShown(kPositionSlider, true);
        ShowLights();
    }
    ShowTitles();
    emit entryPlaying(m_playlist.CurTrack - 1);
    if (showPlaying) {
        m_timer1.start();
        emit ExDevOut(m_signText);
    }
}

void PlaybackEngine::deviceFailed(int index)
{
    if (!m_opening[size_t(index)])
        return;
    m_opening[size_t(index)] = false;
    MediaDevice &device = instance(index);
    const QString text = mediaErrorMessage(device.errorNumber(), device.deviceType(),
                                           device.fileName(), device.errorText());
    if (index == m_state.CurMci) {
        m_state.CurDevice.clear();
        m_state.playing = false;
        m_state.paused = false;
        m_starting = false;
        m_timer1.stop();
        ShowLights();
    }
    // Shown from the event loop, not from inside the device's callback.
    QMetaObject::invokeMethod(
        &m_timer1, [this, text] { m_dialogs.message(text); }, Qt::QueuedConnection);
}

void PlaybackEngine::deviceEnded(int index)
{
    // The item an overlap let finish gives back its file and its sound
    // output, which would otherwise stay open in the desktop's mixer.
    if (index != m_state.CurMci) {
        if (!m_opening[size_t(index)])
            instance(index).close();
        return;
    }
    if (!m_state.playing || m_state.paused || m_state.CurDevice == kDelay ||
        m_opening[size_t(index)])
        return;
    // The tick usually sees the end first; when it is late the end test runs
    // now. An item whose length never became known moves on all the same.
    if (m_state.TrackLength == 0)
        learnLength();
    if (m_state.TrackLength == 0)
        PlayNext();
    else
        Timer1_Timer();
}

// Devices may open before they know the length (streams, some files): it is
// read again until it is there, and the titles follow.
void PlaybackEngine::learnLength()
{
    const MediaDevice *device = m_devices[size_t(m_state.CurMci)].get();
    if (!device || m_state.CurDevice == kDelay)
        return;
    m_state.TrackLength = qint32(qMin<qint64>(device->length(), INT32_MAX));
    if (m_state.TrackLength != 0)
        ShowTitles();
}

void PlaybackEngine::StopIt()
{
    for (auto &device : m_devices) {
        if (!device)
            continue;
        device->seek(m_state.TrackStart);
        device->stop();
    }
    m_starting = false;
    m_timer1.stop();
    m_skin.setSliderShown(kPositionSlider, false);
    m_shownSeconds = 0;
    m_skin.SetDD(kTimeGroup, QVariant(0));
    m_state.playing = false;
    m_state.paused = false;
    ShowLights();
    emit ExDevOut(QStringLiteral("Velto stopped"));
}

void PlaybackEngine::PauseIt()
{
    if (!m_state.playing)
        return;
    MediaDevice *device = m_devices[size_t(m_state.CurMci)].get();
    if (m_state.paused) {
        if (device && m_state.CurDevice != kDelay)
            device->resume();
        m_state.paused = false;
    } else {
        if (device && m_state.CurDevice != kDelay)
            device->pause();
        m_state.paused = true;
    }
    ShowLights();
    emit ExDevOut(m_state.paused ? QStringLiteral("paused...") : m_signText);
}

void PlaybackEngine::PlayPause()
{
    if (m_state.playing)
        PauseIt();
    else
        PlayIt();
}

void PlaybackEngine::Reverse()
{
    if (!m_state.playing)
        return;
    PlayFrom(m_state.PlayPos - 10000);
    ShowLights();
}

void PlaybackEngine::Forward()
{
    if (!m_state.playing)
        return;
    // PlayFrom clamps to the item; the sum must not wrap on the way there.
    PlayFrom(qint32(qMin<qint64>(qint64(m_state.PlayPos) + 10000, INT32_MAX)));
    ShowLights();
}

qint16 PlaybackEngine::randomTrack()
{
    // r in [0, 1) gives 1 to count + 1; count + 1 stops at the end of the list.
    const double value = m_random.next() * double(m_playlist.PlNames.size()) + 1.0;
    return qint16(qBound(-32768.0, std::nearbyint(value), 32767.0)); // halves to even
}

void PlaybackEngine::RndTrack()
{
    m_playlist.CurTrack = randomTrack();
}

void PlaybackEngine::NextTrack()
{
    if (m_flags.Shuffle)
        RndTrack();
    else
        ++m_playlist.CurTrack;
    PlayIt();
}

void PlaybackEngine::PrevTrack()
{
    if (m_flags.Shuffle)
        RndTrack();
    else
        --m_playlist.CurTrack;
    PlayIt();
}

void PlaybackEngine::PlSelAct(int selectedIndex)
{
    if (selectedIndex < 0)
        return;
    m_playlist.CurTrack = selectedIndex + 1;
    PlayIt();
}

void PlaybackEngine::PlayNext()
{
    const qint16 overlap = m_options.PBOverlap;
    if (!m_state.CDMode && overlap >= 1) {
        const int old = m_state.CurMci;
        m_state.CurMci = 1 - old;
        letFinishOrStop(old, overlap);
    }
    if (!m_flags.RepeatItem) {
        if (m_flags.Shuffle)
            RndTrack();
        else
            ++m_playlist.CurTrack;
    }
    PlayIt();
    if (m_flags.StopAfterItem)
        StopIt();
}

// The old item keeps its device only for its last moments; one left early
// (intro scan) would otherwise play on under the next item to its end.
void PlaybackEngine::letFinishOrStop(int index, qint16 overlap)
{
    MediaDevice *device = m_devices[size_t(index)].get();
    if (!device)
        return;
    if (m_opening[size_t(index)]) {
        m_opening[size_t(index)] = false;
        device->close();
        return;
    }
    // A second of slack: positions arrive in steps and the tick may be late.
    if (device->length() - device->position() > qint64(overlap) + 1000)
        device->close();
}

void PlaybackEngine::PlayFrom(qint32 pos)
{
    if (pos < 0)
        pos = 0;
    if (pos > m_state.TrackLength)
        pos = m_state.TrackLength - 1000;
    if (m_state.CurDevice == kDelay) {
        m_state.PlayPos = qMax(pos, 0);
        emit seeked(m_state.PlayPos);
        return;
    }
    MediaDevice *device = m_devices[size_t(m_state.CurMci)].get();
    if (!device)
        return;
    device->stop();
    device->setFrom(qint64(m_state.TrackStart) + pos);
    device->play();
    if (m_state.paused) {
        m_state.paused = false;
        ShowLights();
    }
    emit seeked(qMax(pos, 0));
}

void PlaybackEngine::GetPlayPos()
{
    if (m_state.CurDevice != kDelay) {
        const MediaDevice *device = m_devices[size_t(m_state.CurMci)].get();
        const qint64 position = device ? device->position() : 0;
        m_state.PlayPos = qint32(qMin<qint64>(position, INT32_MAX - kTickMs));
        if (m_state.CDMode)
            m_state.PlayPos -= m_state.TrackStart;
    }
    // The tick's own interval: "Delay" items count up by it, and files move
    // on one tick before their end.
    m_state.PlayPos += kTickMs;
    const qint32 shown =
        m_state.ShowRemaining ? m_state.TrackLength - m_state.PlayPos : m_state.PlayPos;
    // The display changes once a second; drawing it on every tick only
    // repaints the window nine times for nothing.
    if (shown / 1000 != m_shownSeconds) {
        m_shownSeconds = shown / 1000;
        m_skin.SetDD(kTimeGroup, QVariant(m_shownSeconds));
    }
    if (m_state.TrackLength > 0)
        m_skin.setSliderValue(kPositionSlider,
                              double(m_state.PlayPos) / double(m_state.TrackLength));
}

void PlaybackEngine::Timer1_Timer()
{
    if (m_state.TrackLength == 0 && m_state.playing)
        learnLength();
    if (!m_state.playing || m_state.paused || m_state.TrackLength == 0)
        return;
    GetPlayPos();
    emit ticked(m_state.PlayPos);
    // One move per tick: after PlayNext the position read above belongs to
    // the item that just ended.
    if (m_flags.IntroScan && m_state.PlayPos >= 10001) {
        PlayNext();
        return;
    }
    if (m_state.LoopEnd >= 1 && m_state.PlayPos >= m_state.LoopEnd) {
        PlayFrom(m_state.LoopStart);
        return;
    }
    // A CD track ends like a file: each plays as a stream of its own.
    if (m_state.PlayPos >= m_state.TrackLength - m_options.PBOverlap)
        PlayNext();
}

void PlaybackEngine::ShowTitles()
{
    const QString name = displayName();
    const qint32 seconds = m_state.TrackLength / 1000;
    const QString type = m_state.CDMode ? QStringLiteral("CDA") : mediaExtension(m_state.CurFile);
    m_skin.setLabel(kTypeLabel, type);
    m_skin.setLabel(kNameLabel, name);
    m_skin.setLabel(kNumberLabel, QString::number(m_playlist.CurTrack));
    m_skin.setLabel(
        kLengthLabel,
        QStringLiteral("%1:%2").arg(seconds / 60).arg(seconds % 60, 2, 10, QLatin1Char('0')));
    m_skin.SetDD(kNumberGroup, QVariant(m_playlist.CurTrack));
    m_skin.SetDD(kNameGroup, QVariant(name));

    const TagFields fields = fieldsFromRecord(m_tag);
    const QString what = fields.title.isEmpty() ? name
                                                : QLatin1Char('[') + fields.artist +
                                                      QStringLiteral("] - ") + fields.title;
    // The desktop adds the program's name to every window title itself.
    m_signText = QStringLiteral("Velto - ") + what;
    emit titlesChanged(what, m_signText.left(64));
}

void PlaybackEngine::skinLoaded()
{
    m_skin.setSliderShown(kPositionSlider, m_state.playing);
}

void PlaybackEngine::LoopPoint()
{
    if (m_state.LoopStart == 0) {
        m_state.LoopStart = m_state.PlayPos;
        m_state.LoopEnd = 0;
    } else if (m_state.LoopEnd == 0) {
        m_state.LoopEnd = m_state.PlayPos;
    } else {
        m_state.LoopStart = m_state.LoopEnd = 0;
    }
    ShowLights();
}

void PlaybackEngine::CloseDevices()
{
    m_timer1.stop();
    m_starting = false;
    m_opening = {};
    for (auto &device : m_devices)
        if (device)
            device->close();
    m_state.playing = false;
    m_state.paused = false;
}

void PlaybackEngine::TagSaved(const QString &file)
{
    if (file.isEmpty() || file != m_state.CurFile || m_state.CurDevice.isEmpty() ||
        classifyMedia(file, m_options.MCIDevice).kind != MediaType::Kind::Mpeg)
        return;
    m_tag = GetMP3Info(file).tag;
    ShowTitles();
}

PlaybackEngine::JumpTarget PlaybackEngine::parseJump(const QString &text)
{
    static const QRegularExpression entry(QStringLiteral("^\\d{1,5}$"));
    static const QRegularExpression time(
        QStringLiteral("^(?:(\\d{1,3}):)?(\\d{1,4}):([0-5]\\d)(?:\\.(\\d{1,3}))?$"));
    const QString t = text.trimmed();
    JumpTarget target;
    if (entry.match(t).hasMatch()) {
        target.kind = JumpTarget::Kind::Entry;
        target.value = t.toLongLong();
        return target;
    }
    const QRegularExpressionMatch m = time.match(t);
    if (!m.hasMatch())
        return target;
    const qint64 hours = m.captured(1).toLongLong();
    const qint64 minutes = m.captured(2).toLongLong();
    const qint64 seconds = m.captured(3).toLongLong();
    const QString fraction = m.captured(4);
    const qint64 ms =
        fraction.isEmpty() ? 0 : (fraction + QStringLiteral("00")).left(3).toLongLong();
    target.kind = JumpTarget::Kind::Time;
    target.value = ((hours * 60 + minutes) * 60 + seconds) * 1000 + ms;
    return target;
}

void PlaybackEngine::JumpTo(qint32 markPos)
{
    const int count = int(m_playlist.PlNames.size());
    // A marked position is one Enter away: back to the spot the user marked.
    const qint32 markSeconds = markPos / 1000;
    const QString mark = m_state.playing && markPos > 0
                             ? QStringLiteral("%1:%2")
                                   .arg(markSeconds / 60)
                                   .arg(markSeconds % 60, 2, 10, QLatin1Char('0'))
                             : QString();
    const QString answer = m_dialogs.askText(
        QStringLiteral("Jump to entry number (1 to %1), or to a time in this item (m:ss):")
            .arg(count),
        mark);
    const JumpTarget target = parseJump(answer);
    switch (target.kind) {
    case JumpTarget::Kind::Entry:
        if (target.value >= 1 && target.value <= count) {
            m_playlist.CurTrack = int(target.value);
            PlayIt();
        }
        break;
    case JumpTarget::Kind::Time:
        if (m_state.playing)
            PlayFrom(qint32(qMin<qint64>(target.value, INT32_MAX)));
        break;
    case JumpTarget::Kind::None:
        break;
    }
}
