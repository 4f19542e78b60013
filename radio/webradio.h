#pragma once

#include "stationlist.h"
#include "streamresolver.h"
#include "webstation.h"

#include "platform/mediadevice.h"
#include "platform/mediadevicefactory.h"
#include "skin/skinpart.h"

#include <QList>
#include <QObject>
#include <QPointer>

#include <array>
#include <functional>
#include <memory>

class Dialogs;
class HttpFetch;
class SkinSurface;
class WaveVolume;

// The web radio mode: plays internet radio streams on a media device of its
// own, keeps the station list ("webradio.txt") on the skin's station list and
// shows what the stream tells: its state, buffer, bit rate and title.
//
// The state follows the streaming player it was written for: 0 stopped,
// 1 paused, 2 playing, 3 waiting (contacting or buffering).
class WebRadio : public QObject, public SkinPart
{
    Q_OBJECT
public:
    enum PlayState { Stopped = 0, Paused = 1, Playing = 2, Waiting = 3 };

    // Where the shipped web radio skin shows things.
    static constexpr int kStatusLabel = 15;
    static constexpr int kStationLabel = 17;
    static constexpr int kOnAirLabel = 18;
    static constexpr int kBandwidthLabel = 19;
    static constexpr int kTimeGroup = 9;
    static constexpr int kBufferGroup = 10;
    static constexpr int kStationList = 8;
    static constexpr int kAddressField = 1;

    struct Options
    {
        // The addresses played last, newest first: the quick stations.
        std::array<QString, 10> &RadioURL;
    };
    struct Services
    {
        SkinSurface &skin;
        Dialogs &dialogs;
        // The media engine: the window never waits for it to load.
        MediaDeviceFactory &devices;
        WaveVolume &wave; // the program's output level, which the stream follows
        HttpFetch &http;
        QString stationsFile;
    };

    WebRadio(Options options, Services services);
    ~WebRadio() override;

    // SkinPart
    QStringList modes() const override { return {QStringLiteral("WEBRADIO")}; }
    void DoIt(qint16 cmd) override;
    void started() override { LoadStations(); }
    void ending(bool interactive) override;
    void skinLoaded() override;
    void entered() override;
    void left() override;
    void clockTick(const QDateTime &now) override;

    // Plays the current station: the one selected, else the last address played.
    void WRPlay();
    void WRStop();
    // The clock's beat: state, time and buffer on the skin.
    void WRUpdate();
    // Quick station i: the i-th address played last (0 the latest).
    void WRQuickURL(int slot);
    // An address typed by the user, without "http://" if they like.
    void WRQuickURL(const QString &typed);
    void WRDoPreset(int i);
    void WRShowPreset(int i);
    void WRList_Click(int row);
    void WRList_DblClick();
    void WRStep(int dir);
    // The edit field: the selected station as name + " @" + location.
    void WRSetEdit();
    // The edit field offers a new "Station" at an "http://" address.
    void WRAddStation();
    // The edited line goes back to the selected station, or is added.
    void WRDoEdit(const QString &text);
    void WRDelStation();

    void LoadStations();
    bool SaveStations();

    // An address handed over from outside (the command line, the desktop):
    // played as a quick station named "Station".
    void playAddress(const QString &address, const QString &name = QString());
    // Several addresses of one station (its playlist), tried in order.
    void playStreams(const QStringList &streams, const QString &name);

    PlayState playState() const { return m_state; }
    bool active() const { return m_state != Stopped; }
    const QList<WebStation> &stations() const { return m_stations; }
    int presetIndex() const { return m_presetIdx; }
    const WebStation &current() const { return m_current; }
    QString status() const { return m_status; }
    MediaDevice::StreamInfo streamInfo() const;

signals:
    // A station starts: other players stop.
    void playingStarted();
    void titlesChanged(const QString &title, const QString &trayTip);

private:
    enum class Editing { None, Edit, Add };

    void play(const WebStation &station);
    void openStream(int candidate);
    void openLoadedStream(int candidate);
    void ensureDevice();
    void remember(const QString &location);
    void streamChanged();
    void deviceFailed(int error, const QString &text);
    void deviceEnded();
    void setStatus(const QString &text);
    void showAll();
    void showList();
    void showOnAir();
    void showTitles();
    QString stationName() const;
    static QString completed(const QString &location);

    Options m_options;
    Services m_svc;
    std::unique_ptr<MediaDevice> m_device;
    StreamResolver m_resolver;
    QList<WebStation> m_stations;
    int m_presetIdx = -1;
    WebStation m_current;
    QStringList m_candidates;
    int m_candidate = -1;
    // Counts stream openings asked for; one still waiting for the engine
    // is dropped when a later one, or Stop, came meanwhile.
    quint64 m_openRequest = 0;
    PlayState m_state = Stopped;
    PlayState m_shownState = Stopped;
    bool m_buffering = false;
    qint64 m_shownSeconds = -1;
    int m_shownBuffer = -1;
    QString m_status;
    QString m_onAir;
    QString m_bandwidth;
    QString m_stationName; // as the stream calls itself
    Editing m_editing = Editing::None;
    bool m_inMode = false;
    StationList m_list;
};
