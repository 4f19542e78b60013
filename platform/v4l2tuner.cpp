#include "platform/tuner.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/videodev2.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Drivers scale their signal strength to 0-65535; a third of it is a station
// worth stopping a scan for without stopping on every hiss.
constexpr int kSignalThreshold = 65535 / 3;
constexpr int kFullVolume = 65535;

int retrying(int fd, unsigned long request, void *arg)
{
    int result;
    do {
        result = ::ioctl(fd, request, arg);
    } while (result < 0 && errno == EINTR);
    return result;
}

class V4l2Tuner : public Tuner
{
public:
    explicit V4l2Tuner(const QString &path) { open(path); }
    ~V4l2Tuner() override
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    V4l2Tuner(const V4l2Tuner &) = delete;
    V4l2Tuner &operator=(const V4l2Tuner &) = delete;

    QString problem() const override { return m_problem; }

    void set_frequency(qint32 hz) override
    {
        if (m_fd < 0 || hz <= 0)
            return;
        // Units of 62.5 Hz, or of 62.5 kHz for tuners without the fine scale.
        const qint64 units = m_lowUnits ? qint64(hz) * 2 / 125 : qint64(hz) / 62500;
        v4l2_frequency f{};
        f.tuner = m_tuner;
        f.type = V4L2_TUNER_RADIO;
        f.frequency = quint32(qBound<qint64>(m_rangeLow, units, m_rangeHigh));
        if (retrying(m_fd, VIDIOC_S_FREQUENCY, &f) < 0)
            qWarning("velto: the radio device refused %d Hz: %s", hz, std::strerror(errno));
    }
    void radio_on() override { setControl(V4L2_CID_AUDIO_MUTE, 0); }
    void radio_off() override { setControl(V4L2_CID_AUDIO_MUTE, 1); }

    int signal_detect() override
    {
        v4l2_tuner t{};
        return readTuner(t) && t.signal >= kSignalThreshold ? 1 : 0;
    }
    int stereo_detect() override
    {
        v4l2_tuner t{};
        return readTuner(t) && (t.rxsubchans & V4L2_TUNER_SUB_STEREO) ? 1 : 0;
    }

    int get_volume() override
    {
        if (m_fd < 0)
            return 0;
        if (!m_volume.present)
            return m_ownVolume;
        v4l2_control c{};
        c.id = V4L2_CID_AUDIO_VOLUME;
        if (retrying(m_fd, VIDIOC_G_CTRL, &c) < 0)
            return m_ownVolume;
        const qint64 span = qMax(1, m_volume.maximum - m_volume.minimum);
        return int((qint64(c.value) - m_volume.minimum) * kFullVolume / span);
    }
    void set_volume(int volume) override
    {
        m_ownVolume = qBound(0, volume, kFullVolume);
        if (!m_volume.present)
            return;
        const qint64 span = m_volume.maximum - m_volume.minimum;
        setControl(
            V4L2_CID_AUDIO_VOLUME,
            int(m_volume.minimum + (qint64(m_ownVolume) * span + kFullVolume / 2) / kFullVolume));
    }
    void volumeup() override { set_volume(get_volume() + kFullVolume / 16); }
    void volumedown() override { set_volume(get_volume() - kFullVolume / 16); }

private:
    void open(const QString &path)
    {
        const QByteArray name = QFile::encodeName(path);
        struct stat st
        {
        };
        if (path.isEmpty() || ::stat(name.constData(), &st) != 0) {
            m_problem = QStringLiteral("There is no radio device %1.").arg(path);
            return;
        }
        // Only a character device is opened: a pipe would wait for a writer.
        if (!S_ISCHR(st.st_mode)) {
            m_problem = QStringLiteral("%1 is not a radio device.").arg(path);
            return;
        }
        m_fd = ::open(name.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
        if (m_fd < 0) {
            m_problem = QStringLiteral("The radio device %1 cannot be opened: %2.")
                            .arg(path, QString::fromLocal8Bit(std::strerror(errno)));
            return;
        }
        v4l2_capability caps{};
        v4l2_tuner t{};
        if (retrying(m_fd, VIDIOC_QUERYCAP, &caps) < 0 || !readTuner(t) ||
            t.type != V4L2_TUNER_RADIO) {
            m_problem = QStringLiteral("%1 is not a radio receiver.").arg(path);
            ::close(m_fd);
            m_fd = -1;
            return;
        }
        m_lowUnits = t.capability & V4L2_TUNER_CAP_LOW;
        m_rangeLow = t.rangelow;
        m_rangeHigh = qMax(t.rangelow, t.rangehigh);
        v4l2_queryctrl q{};
        q.id = V4L2_CID_AUDIO_VOLUME;
        if (retrying(m_fd, VIDIOC_QUERYCTRL, &q) == 0 && !(q.flags & V4L2_CTRL_FLAG_DISABLED) &&
            q.maximum > q.minimum)
            m_volume = {true, q.minimum, q.maximum};
    }

    bool readTuner(v4l2_tuner &t) const
    {
        if (m_fd < 0)
            return false;
        t = {};
        t.index = m_tuner;
        return retrying(m_fd, VIDIOC_G_TUNER, &t) == 0;
    }

    void setControl(quint32 id, int value)
    {
        if (m_fd < 0)
            return;
        v4l2_control c{};
        c.id = id;
        c.value = value;
        retrying(m_fd, VIDIOC_S_CTRL, &c); // a card without the control has nothing to change
    }

    int m_fd = -1;
    QString m_problem;
    quint32 m_tuner = 0;
    bool m_lowUnits = false;
    quint32 m_rangeLow = 0;
    quint32 m_rangeHigh = 0xffffffffu;
    struct
    {
        bool present = false;
        qint32 minimum = 0;
        qint32 maximum = 0;
    } m_volume;
    int m_ownVolume = kFullVolume; // where the card has no volume control
};

} // namespace

std::unique_ptr<Tuner> openRadioDevice(const QString &path)
{
    return std::make_unique<V4l2Tuner>(path);
}

QStringList radioDevices()
{
    QStringList found;
    const QDir dev(QStringLiteral("/dev"));
    for (const QString &name :
         dev.entryList({QStringLiteral("radio*")}, QDir::System | QDir::Files, QDir::Name))
        found << dev.filePath(name);
    return found;
}
