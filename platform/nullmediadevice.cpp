#include "nullmediadevice.h"

#include <QFileInfo>
#include <QPointer>

NullMediaDevice::NullMediaDevice(qint64 defaultLengthMs, QObject *parent)
    : QObject(parent), m_defaultLength(qMax<qint64>(0, defaultLengthMs))
{
    m_ticker.setInterval(50);
    connect(&m_ticker, &QTimer::timeout, this, &NullMediaDevice::tick);
}

void NullMediaDevice::open()
{
    close();
    const quint32 generation = ++m_generation;
    m_error = NoError;
    m_errorText.clear();
    m_state = State::Loading;
    // Decided now, reported from the event loop like a real device.
    QMetaObject::invokeMethod(
        this, [this, generation] { finishOpening(generation); }, Qt::QueuedConnection);
}

void NullMediaDevice::finishOpening(quint32 generation)
{
    if (generation != m_generation || m_state != State::Loading)
        return;
    const QFileInfo file(m_fileName);
    const bool cdTrack = isCdTrack(m_deviceType, m_fileName);
    if (!m_refusal.isEmpty()) {
        m_error = DeviceNotInstalled;
        m_errorText = m_refusal;
    } else if (cdTrack) {
        // A disc's track: nothing on disk to look at.
    } else if (!isKnownDeviceType(m_deviceType)) {
        m_error = DeviceNotInstalled;
        m_errorText = QStringLiteral("unknown device type");
    } else if (m_fileName.isEmpty() || !file.isFile()) {
        m_error = CannotOpen;
        m_errorText = QStringLiteral("loading failed");
    } else if (file.size() == 0) {
        m_error = UnknownFormat;
        m_errorText = QStringLiteral("unrecognized file format");
    }
    if (m_error != NoError) {
        m_state = State::Closed;
        ++m_generation;
        if (m_events.failed)
            m_events.failed(m_error, m_errorText);
        return;
    }
    m_state = State::Open;
    m_length = m_defaultLength;
    m_base = 0;
    m_mode = Mode::Stopped;
    QPointer<NullMediaDevice> alive(this);
    if (m_events.opened)
        m_events.opened();
    if (alive && m_state == State::Open && m_wantPlay)
        play();
}

void NullMediaDevice::close()
{
    ++m_generation;
    m_ticker.stop();
    m_state = State::Closed;
    m_mode = Mode::NotReady;
    m_length = 0;
    m_base = 0;
    m_from = -1;
    m_wantPlay = false;
}

qint64 NullMediaDevice::position() const
{
    if (m_state != State::Open)
        return 0;
    if (m_mode != Mode::Playing)
        return m_base;
    return qMin(m_length, m_base + m_clock.elapsed());
}

MediaDevice::Mode NullMediaDevice::mode() const
{
    return m_state == State::Open ? m_mode : Mode::NotReady;
}

void NullMediaDevice::play()
{
    if (m_state == State::Loading) {
        m_wantPlay = true;
        return;
    }
    if (m_state != State::Open)
        return;
    m_wantPlay = false;
    if (m_from >= 0) {
        m_base = qBound<qint64>(0, m_from, m_length);
        m_from = -1;
    } else if (m_mode == Mode::Playing || position() >= m_length) {
        return;
    }
    m_mode = Mode::Playing;
    m_clock.start();
    m_ticker.start();
}

void NullMediaDevice::halt(Mode mode)
{
    if (m_state == State::Loading)
        m_wantPlay = false;
    if (m_state != State::Open)
        return;
    m_base = position();
    m_mode = mode;
    m_ticker.stop();
}

void NullMediaDevice::stop()
{
    halt(Mode::Stopped);
}

void NullMediaDevice::pause()
{
    halt(Mode::Paused);
}

void NullMediaDevice::resume()
{
    if (mode() == Mode::Paused || m_state == State::Loading)
        play();
}

void NullMediaDevice::seek(qint64 ms)
{
    if (m_state != State::Open)
        return;
    m_base = qBound<qint64>(0, ms, m_length);
    m_clock.start();
}

void NullMediaDevice::tick()
{
    const qint64 now = position();
    QPointer<NullMediaDevice> alive(this);
    if (m_events.positionChanged)
        m_events.positionChanged(now);
    if (!alive || m_mode != Mode::Playing || now < m_length)
        return;
    halt(Mode::Stopped);
    if (m_events.ended)
        m_events.ended();
}
