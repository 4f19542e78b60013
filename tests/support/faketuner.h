#pragma once

#include "platform/tuner.h"

#include <QList>
#include <QStringList>

#include <functional>
#include <map>
#include <memory>

// The radio band a fake tuner hears, and what was asked of the tuners made on
// it. No machine here has a radio card: this is the one fake for it.
struct FakeBand
{
    // Stations by frequency in tenths of a MHz; true for a stereo one.
    std::map<qint32, bool> stations;
    QString fault;       // what the next tuner made says is wrong with it
    QStringList opened;  // the devices asked for
    QList<qint32> tuned; // every set_frequency, in hertz
    bool on = false;
    int offs = 0; // radio_off calls
    int volume = 40000;
    int port = -1, cardType = -1;

    qint32 station() const { return tuned.isEmpty() ? 0 : tuned.last() / 100000; }

    std::function<std::unique_ptr<Tuner>(const QString &)> factory();
};

class FakeTuner : public Tuner
{
public:
    explicit FakeTuner(FakeBand &band) : m_band(band), m_fault(band.fault) {}
    QString problem() const override { return m_fault; }
    void set_frequency(qint32 hz) override
    {
        if (m_fault.isEmpty())
            m_band.tuned << hz;
    }
    void radio_on() override { m_band.on = m_fault.isEmpty(); }
    void radio_off() override
    {
        m_band.on = false;
        ++m_band.offs;
    }
    int signal_detect() override { return m_fault.isEmpty() && find() ? 1 : 0; }
    int stereo_detect() override { return m_fault.isEmpty() && find() && *find() ? 1 : 0; }
    int get_volume() override { return m_fault.isEmpty() ? m_band.volume : 0; }
    void set_volume(int volume) override { m_band.volume = volume; }
    void volumeup() override { m_band.volume += 4096; }
    void volumedown() override { m_band.volume -= 4096; }
    void set_port(int port) override { m_band.port = port; }
    void set_card_type(int type) override { m_band.cardType = type; }

private:
    const bool *find() const
    {
        const auto it = m_band.stations.find(m_band.station());
        return it == m_band.stations.end() ? nullptr : &it->second;
    }
    FakeBand &m_band;
    QString m_fault;
};

inline std::function<std::unique_ptr<Tuner>(const QString &)> FakeBand::factory()
{
    return [this](const QString &device) -> std::unique_ptr<Tuner> {
        opened << device;
        return std::make_unique<FakeTuner>(*this);
    };
}
