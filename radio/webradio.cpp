#include "webradio.h"

#include "streamplaylist.h"

#include "platform/dialogs.h"
#include "platform/httpfetch.h"
#include "platform/streamtext.h"
#include "platform/wavevolume.h"
#include "skin/skinlistarea.h"
#include "skin/skinsurface.h"
#include "skin/skintextfield.h"

#include <algorithm>

namespace {

const QString kQuickName = QStringLiteral("Station");
// Enough of an answer to know whether the server sends a stream at all.
constexpr qint64 kProbeBytes = 4096;

} // namespace

WebRadio::WebRadio(Options options, Services services)
    : m_options(options), m_svc(std::move(services)), m_resolver(m_svc.http),
      m_list(m_svc.skin, m_svc.dialogs, kStationList, kAddressField, m_svc.stationsFile, m_inMode)
{
    connect(&m_list, &StationList::currentChanged, this, &WebRadio::WRList_Click);
    connect(&m_list, &StationList::activated, this, [this](int row) {
        WRList_Click(row);
        WRList_DblClick();
    });
    connect(&m_list, &StationList::keyPressed, this, [this](int key) {
        if (key == Qt::Key_Delete)
            WRDelStation();
    });
    connect(&m_list, &StationList::entered, this, [this](const QString &text) {
        if (m_editing != Editing::None)
            WRDoEdit(text);
        else
            WRQuickURL(text);
    });
}

WebRadio::~WebRadio()
{
    m_resolver.cancel();
    if (m_device)
        m_svc.wave.removeDevice(m_device.get());
}

void WebRadio::DoIt(qint16 cmd)
{
    if (cmd != 142 && cmd != 146)
        m_editing = Editing::None;
    if (cmd >= 130 && cmd < 140)
        return WRQuickURL(cmd - 130);
    switch (cmd) {
    case 140:
        return WRDoPreset(m_presetIdx - 1);
    case 141:
        return WRDoPreset(m_presetIdx + 1);
    case 142:
        return WRAddStation();
    case 143:
        return WRDelStation();
    case 144:
        return WRStep(+1);
    case 145:
        return WRStep(-1);
    case 146:
        return WRSetEdit();
    case 147:
        return WRPlay();
    case 148:
        return WRStop();
    default:
        return;
    }
}

void WebRadio::ending(bool interactive)
{
    Q_UNUSED(interactive);
    m_resolver.cancel();
    ++m_openRequest;
    if (m_device) {
        m_device->close();
        m_svc.wave.removeDevice(m_device.get());
        m_device.reset();
    }
}

void WebRadio::skinLoaded()
{
    m_list.hook();
}

void WebRadio::entered()
{
    m_inMode = true;
    m_list.hook();
    showAll();
}

void WebRadio::left()
{
    m_inMode = false;
    m_editing = Editing::None;
}

void WebRadio::clockTick(const QDateTime &now)
{
    Q_UNUSED(now);
    WRUpdate();
}

MediaDevice::StreamInfo WebRadio::streamInfo() const
{
    return m_device && m_candidate >= 0 ? m_device->streamInfo() : MediaDevice::StreamInfo();
}

QString WebRadio::completed(const QString &location)
{
    const QString trimmed = location.trimmed();
    if (trimmed.isEmpty() || trimmed.contains(QLatin1String("://")))
        return trimmed;
    return QStringLiteral("http://") + trimmed;
}

void WebRadio::WRPlay()
{
    if (m_presetIdx >= 0 && m_presetIdx < m_stations.size())
        return play(m_stations[m_presetIdx]);
    if (!m_current.location.isEmpty())
        return play(m_current);
    if (!m_options.RadioURL[0].isEmpty())
        return WRQuickURL(0);
    m_svc.dialogs.message(QStringLiteral("No station selected!"));
}

void WebRadio::WRStop()
{
    m_resolver.cancel();
    ++m_openRequest;
    if (m_device)
        m_device->close();
    m_candidate = -1;
    m_buffering = false;
    m_state = m_shownState = Stopped;
    setStatus(QStringLiteral("Stopped"));
    if (m_inMode)
        m_svc.skin.SetDD(kBufferGroup, 0);
}

void WebRadio::play(const WebStation &station)
{
    const QString location = completed(station.location);
    if (location.isEmpty()) {
        m_svc.dialogs.message(QStringLiteral("No station selected!"));
        return;
    }
    if (isStreamPlaylistAddress(location)) {
        WebStation resolving{station.name, location};
        m_current = resolving;
        remember(location);
        if (m_device)
            m_device->close();
        m_candidate = -1;
        m_state = m_shownState = Waiting;
        setStatus(QStringLiteral("Contacting..."));
        m_onAir.clear();
        showOnAir();
        emit playingStarted();
        m_resolver.resolve(location, [this, name = station.name](const QStringList &streams,
                                                                 const QString &problem) {
            if (streams.isEmpty()) {
                qWarning("velto: no stream in the playlist of %s: %s",
                         qPrintable(m_current.location), qPrintable(problem));
                m_state = m_shownState = Stopped;
                setStatus(QStringLiteral("Cannot connect"));
                m_onAir = QStringLiteral("The station's playlist: ") + problem;
                showOnAir();
                return;
            }
            m_candidates = streams;
            openStream(0);
        });
        return;
    }
    playStreams({location}, station.name);
}

void WebRadio::playStreams(const QStringList &streams, const QString &name)
{
    if (streams.isEmpty())
        return;
    m_resolver.cancel();
    m_current = {name.isEmpty() ? kQuickName : name, streams.first()};
    remember(streams.first());
    m_candidates = streams;
    m_state = m_shownState = Waiting;
    setStatus(QStringLiteral("Contacting..."));
    m_onAir.clear();
    showOnAir();
    emit playingStarted();
    openStream(0);
}

void WebRadio::playAddress(const QString &address, const QString &name)
{
    play({name.isEmpty() ? kQuickName : name, address});
}

void WebRadio::ensureDevice()
{
    if (m_device)
        return;
    m_device = m_svc.devices.create();
    if (!m_device)
        return;
    m_device->setDeviceType(QStringLiteral("MPEGVideo"));
    MediaDevice::Events events;
    events.failed = [this](int error, const QString &text) { deviceFailed(error, text); };
    events.ended = [this] { deviceEnded(); };
    m_device->setEvents(std::move(events));
    m_device->setStreamEvents({[this] { streamChanged(); }});
    m_svc.wave.addDevice(m_device.get());
}

void WebRadio::openStream(int candidate)
{
    const quint64 request = ++m_openRequest;
    if (!m_device) {
        // The engine loads on a worker thread meanwhile; "Contacting..." shows.
        m_svc.devices.whenLoaded([self = QPointer<WebRadio>(this), candidate, request] {
            if (self && request == self->m_openRequest)
                self->openLoadedStream(candidate);
        });
        return;
    }
    openLoadedStream(candidate);
}

void WebRadio::openLoadedStream(int candidate)
{
    ensureDevice();
    if (!m_device || candidate < 0 || candidate >= m_candidates.size())
        return;
    m_candidate = candidate;
    m_buffering = false;
    m_shownSeconds = -1;
    m_device->setFileName(m_candidates[candidate]);
    m_device->open();
    m_device->play();
    m_stationName.clear();
    showTitles();
    if (m_inMode) {
        m_svc.skin.setLabel(kStationLabel, stationName());
        m_svc.skin.SetDD(kTimeGroup, 0);
        m_svc.skin.SetDD(kBufferGroup, 0);
        if (SkinTextField *f = m_list.field(); f && m_editing == Editing::None)
            f->setText(m_current.location);
    }
}

QString WebRadio::stationName() const
{
    // A quick station is better called what it calls itself.
    return m_current.name == kQuickName && !m_stationName.isEmpty() ? m_stationName
                                                                    : m_current.name;
}

void WebRadio::deviceFailed(int error, const QString &text)
{
    qWarning("velto: web radio %s: %s (%d)", qPrintable(m_candidates.value(m_candidate)),
             qPrintable(text), error);
    // A station's playlist names spares: the next one may answer.
    if (m_candidate >= 0 && m_candidate + 1 < m_candidates.size())
        return openStream(m_candidate + 1);
    const QString address = m_candidates.value(m_candidate);
    m_candidate = -1;
    m_buffering = false;
    m_state = m_shownState = Stopped;
    setStatus(QStringLiteral("Cannot connect"));
    m_onAir = text;
    showOnAir();
    // The engine only says that loading failed; the server says why.
    if (isNetworkAddress(address))
        m_svc.http.get(QUrl(address), kProbeBytes, 5000, [this](const HttpFetch::Reply &reply) {
            if (reply.error.isEmpty() || reply.tooBig || m_state != Stopped)
                return;
            m_onAir = reply.error;
            showOnAir();
        });
}

void WebRadio::deviceEnded()
{
    // A live stream has no end: the station or the network closed it.
    m_candidate = -1;
    m_buffering = false;
    m_state = m_shownState = Stopped;
    setStatus(QStringLiteral("Connection lost"));
    if (m_device)
        m_device->close();
}

void WebRadio::streamChanged()
{
    if (!m_device || m_candidate < 0)
        return;
    const MediaDevice::StreamInfo info = m_device->streamInfo();
    if (info.buffering != m_buffering) {
        m_buffering = info.buffering;
        if (m_buffering) {
            m_state = m_shownState = Waiting;
            setStatus(QStringLiteral("Buffering..."));
        } else if (m_device->mode() == MediaDevice::Mode::Playing) {
            m_state = m_shownState = Playing;
            setStatus(QStringLiteral("Playing..."));
        }
    }
    if (info.buffering && m_inMode && info.bufferPercent != m_shownBuffer) {
        m_shownBuffer = info.bufferPercent;
        m_svc.skin.SetDD(kBufferGroup, info.bufferPercent);
    }
    const QString bandwidth =
        info.bitRate > 0 ? QStringLiteral("%1 kbit/s").arg((info.bitRate + 500) / 1000) : QString();
    if (info.name != m_stationName) {
        m_stationName = info.name;
        if (m_inMode)
            m_svc.skin.setLabel(kStationLabel, stationName());
    }
    const QString onAir = info.title.isEmpty() ? info.name : info.title;
    if (bandwidth != m_bandwidth || onAir != m_onAir) {
        m_bandwidth = bandwidth;
        m_onAir = onAir;
        showOnAir();
        showTitles();
    }
}

void WebRadio::WRUpdate()
{
    PlayState now = Stopped;
    if (m_resolver.busy()) {
        now = Waiting;
    } else if (m_device && m_candidate >= 0) {
        switch (m_device->mode()) {
        case MediaDevice::Mode::NotReady:
            now = Waiting;
            break;
        case MediaDevice::Mode::Playing:
            now = m_device->streamInfo().buffering ? Waiting : Playing;
            break;
        case MediaDevice::Mode::Paused:
            now = Paused;
            break;
        default:
            break;
        }
    }
    m_state = now;
    if (now != m_shownState) {
        m_shownState = now;
        if (now == Stopped)
            setStatus(QStringLiteral("Stopped"));
        else if (now == Playing)
            setStatus(QStringLiteral("Playing"));
        else if (now == Waiting)
            setStatus(QStringLiteral("Waiting"));
    }
    if (!m_inMode)
        return;
    if (now == Playing || now == Waiting) {
        const qint64 seconds = m_device && m_candidate >= 0 ? m_device->position() / 1000 : 0;
        if (seconds != m_shownSeconds) {
            m_shownSeconds = seconds;
            m_svc.skin.SetDD(kTimeGroup, int(seconds));
        }
    }
    const int buffer = now == Playing ? 100 : now == Waiting ? streamInfo().bufferPercent : 0;
    if (buffer != m_shownBuffer) {
        m_shownBuffer = buffer;
        m_svc.skin.SetDD(kBufferGroup, buffer);
    }
}

void WebRadio::WRQuickURL(int slot)
{
    if (slot < 0 || slot >= int(m_options.RadioURL.size()) || m_options.RadioURL[slot].isEmpty())
        return;
    const QString location = m_options.RadioURL[slot];
    for (const WebStation &s : m_stations) {
        if (completed(s.location) == location)
            return play(s);
    }
    play({kQuickName, location});
}

void WebRadio::WRQuickURL(const QString &typed)
{
    const QString location = completed(typed);
    if (location.isEmpty())
        return;
    play({kQuickName, location});
}

void WebRadio::WRDoPreset(int i)
{
    if (m_stations.isEmpty())
        return;
    // Past either end of the list comes the other end.
    const int count = int(m_stations.size());
    i = (i % count + count) % count;
    WRShowPreset(i);
    play(m_stations[i]);
}

void WebRadio::WRShowPreset(int i)
{
    if (i < 0 || i >= m_stations.size())
        return;
    m_presetIdx = i;
    m_list.select(i);
    if (m_inMode) {
        m_svc.skin.setLabel(kStationLabel, m_stations[i].name);
        if (SkinTextField *f = m_list.field(); f && m_editing == Editing::None)
            f->setText(m_stations[i].location);
    }
}

void WebRadio::WRList_Click(int row)
{
    m_editing = Editing::None;
    WRShowPreset(row);
}

void WebRadio::WRList_DblClick()
{
    if (m_presetIdx >= 0 && m_presetIdx < m_stations.size())
        WRDoPreset(m_presetIdx);
}

void WebRadio::WRStep(int dir)
{
    if (m_stations.isEmpty())
        return;
    const int from = m_presetIdx < 0 ? (dir > 0 ? -1 : int(m_stations.size())) : m_presetIdx;
    WRShowPreset(std::clamp(from + dir, 0, int(m_stations.size()) - 1));
}

void WebRadio::WRSetEdit()
{
    const bool selected = m_presetIdx >= 0 && m_presetIdx < m_stations.size();
    m_editing = selected ? Editing::Edit : Editing::Add;
    m_list.edit(selected ? stationLine(m_stations[m_presetIdx]) : QString(), true);
}

void WebRadio::WRAddStation()
{
    m_editing = Editing::Add;
    m_list.edit(kQuickName + QStringLiteral(" @ http://"), false);
}

void WebRadio::WRDoEdit(const QString &text)
{
    const WebStation station = readStationLine(StationList::oneLine(text));
    if (m_editing == Editing::Edit && m_presetIdx >= 0 && m_presetIdx < m_stations.size()) {
        m_stations[m_presetIdx] = station;
    } else {
        m_stations << station;
        m_presetIdx = int(m_stations.size()) - 1;
    }
    m_editing = Editing::None;
    showList();
    WRShowPreset(m_presetIdx);
    SaveStations();
}

void WebRadio::WRDelStation()
{
    SkinListArea *l = m_list.list();
    const bool selected = m_presetIdx >= 0 && m_presetIdx < m_stations.size() &&
                          (!l || l->currentRow() == m_presetIdx);
    if (!selected) {
        m_svc.dialogs.message(QStringLiteral("No station selected!"));
        return;
    }
    m_stations.removeAt(m_presetIdx);
    m_presetIdx =
        m_stations.isEmpty() ? -1 : std::min<int>(m_presetIdx, int(m_stations.size()) - 1);
    showList();
    if (m_presetIdx >= 0)
        WRShowPreset(m_presetIdx);
    SaveStations();
}

void WebRadio::LoadStations()
{
    m_stations.clear();
    for (const QString &line : m_list.load()) {
        if (!line.trimmed().isEmpty())
            m_stations << readStationLine(line);
    }
    m_presetIdx = -1;
    showList();
}

bool WebRadio::SaveStations()
{
    QStringList lines;
    for (const WebStation &s : m_stations)
        lines << stationLine(s);
    return m_list.save(lines);
}

void WebRadio::remember(const QString &location)
{
    auto &recent = m_options.RadioURL;
    auto it = std::find(recent.begin(), recent.end(), location);
    if (it == recent.end())
        it = recent.end() - 1;
    std::move_backward(recent.begin(), it, it + 1);
    recent[0] = location;
}

void WebRadio::setStatus(const QString &text)
{
    m_status = text;
    if (m_inMode)
        m_svc.skin.setLabel(kStatusLabel, text);
}

void WebRadio::showOnAir()
{
    if (!m_inMode)
        return;
    m_svc.skin.setLabel(kOnAirLabel, m_onAir);
    m_svc.skin.setLabel(kBandwidthLabel, m_bandwidth);
}

void WebRadio::showTitles()
{
    const QString what = m_onAir.isEmpty() ? m_current.name : m_onAir;
    emit titlesChanged(what, (QStringLiteral("Velto - ") + what).left(64));
}

void WebRadio::showList()
{
    QStringList names;
    for (const WebStation &s : m_stations)
        names << s.name;
    m_list.fill(names, m_presetIdx);
}

void WebRadio::showAll()
{
    if (!m_inMode)
        return;
    m_svc.skin.setLabel(kStatusLabel, m_status);
    m_svc.skin.setLabel(kStationLabel, stationName());
    showOnAir();
    m_shownSeconds = m_shownBuffer = -1;
    if (SkinTextField *f = m_list.field(); f && m_editing == Editing::None)
        f->setText(m_current.location);
    WRUpdate();
}
