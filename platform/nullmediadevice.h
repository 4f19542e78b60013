#pragma once

#include "platform/mediadevice.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

// A device that plays silence: every existing file opens with a made-up
// length and its position follows a steady clock. It stands in when no media
// engine is available and serves tests that need no decoding.
class NullMediaDevice : public QObject, public MediaDevice
{
public:
    explicit NullMediaDevice(qint64 defaultLengthMs = 5000, QObject *parent = nullptr);

    // Every open fails as a device that is not installed, with this text:
    // what stands in for a media engine that could not be loaded.
    void refuseAll(const QString &why) { m_refusal = why; }

    void open() override;
    void close() override;
    void play() override;
    void stop() override;
    void pause() override;
    void resume() override;
    void seek(qint64 ms) override;

    qint64 length() const override { return m_state == State::Open ? m_length : 0; }
    qint64 position() const override;
    Mode mode() const override;

private:
    enum class State { Closed, Loading, Open };

    void finishOpening(quint32 generation);
    void halt(Mode mode);
    void tick();

    qint64 m_defaultLength;
    State m_state = State::Closed;
    QString m_refusal;
    Mode m_mode = Mode::NotReady;
    quint32 m_generation = 0;
    qint64 m_length = 0;
    // While playing the position is m_base plus the time since m_clock started.
    qint64 m_base = 0;
    QElapsedTimer m_clock;
    bool m_wantPlay = false;
    QTimer m_ticker;
};
