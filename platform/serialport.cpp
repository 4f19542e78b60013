#include "serialport.h"

#include <QSerialPort>

namespace {

const SerialLine kDefaultLine;

QString fieldError(const QString &what, const QString &field, const QString &allowed)
{
    return QStringLiteral("%1 \"%2\" is not %3").arg(what, field, allowed);
}

} // namespace

SerialSettings parseSerialSettings(const QString &text)
{
    SerialSettings s;
    QStringList fields = text.split(QLatin1Char(','));
    for (QString &f : fields)
        f = f.trimmed();
    if (fields.size() == 1 && fields[0].isEmpty())
        return s;
    if (fields[0].startsWith(QLatin1Char('/'))) {
        s.device = fields.takeFirst();
        if (fields.size() == 1 && fields[0].isEmpty())
            return s;
    }

    QStringList errors;
    if (fields.size() > 4)
        errors << QStringLiteral("more than four fields");
    if (!fields.isEmpty()) {
        bool ok = false;
        const qint64 speed = fields[0].toLongLong(&ok);
        if (!ok || speed < 1 || speed > 4000000)
            errors << fieldError(QStringLiteral("speed"), fields[0],
                                 QStringLiteral("a number of bits a second"));
        else
            s.line.speed = qint32(speed);
    }
    if (fields.size() > 1) {
        const QString p = fields[1].toUpper();
        if (p.size() != 1 || !QStringLiteral("NEOMS").contains(p))
            errors << fieldError(QStringLiteral("parity"), fields[1],
                                 QStringLiteral("N, E, O, M or S"));
        else
            s.line.parity = p[0].toLatin1();
    }
    if (fields.size() > 2) {
        bool ok = false;
        const int bits = fields[2].toInt(&ok);
        if (!ok || bits < 5 || bits > 8)
            errors << fieldError(QStringLiteral("data bits"), fields[2],
                                 QStringLiteral("5, 6, 7 or 8"));
        else
            s.line.dataBits = bits;
    }
    if (fields.size() > 3) {
        const QString &stop = fields[3];
        if (stop == QLatin1String("1"))
            s.line.stopBits = SerialLine::StopBits::One;
        else if (stop == QLatin1String("1.5"))
            s.line.stopBits = SerialLine::StopBits::OneAndHalf;
        else if (stop == QLatin1String("2"))
            s.line.stopBits = SerialLine::StopBits::Two;
        else
            errors << fieldError(QStringLiteral("stop bits"), stop, QStringLiteral("1, 1.5 or 2"));
    }
    if (!errors.isEmpty()) {
        s.line = kDefaultLine;
        s.error = errors.join(QStringLiteral("; "));
    }
    return s;
}

QString serialDevicePath(int port)
{
    if (port >= 1 && port <= 99)
        return QStringLiteral("/dev/ttyS%1").arg(port - 1);
    if (port >= 100 && port <= 199)
        return QStringLiteral("/dev/ttyUSB%1").arg(port - 100);
    if (port >= 200 && port <= 299)
        return QStringLiteral("/dev/ttyACM%1").arg(port - 200);
    return {};
}

QtSerialPort::QtSerialPort() : m_port(std::make_unique<QSerialPort>())
{
    // A sign unplugged while Velto runs: the port closes, and the next text
    // opens it again.
    QObject::connect(m_port.get(), &QSerialPort::errorOccurred, m_port.get(),
                     [this](QSerialPort::SerialPortError error) {
                         if (error != QSerialPort::ResourceError &&
                             error != QSerialPort::WriteError)
                             return;
                         m_error = m_port->errorString();
                         QMetaObject::invokeMethod(
                             m_port.get(), [this] { m_port->close(); }, Qt::QueuedConnection);
                     });
}

QtSerialPort::~QtSerialPort() = default;

bool QtSerialPort::open(const QString &device, const SerialLine &line)
{
    close();
    m_port->setPortName(device);
    QSerialPort::Parity parity = QSerialPort::NoParity;
    switch (line.parity) {
    case 'E':
        parity = QSerialPort::EvenParity;
        break;
    case 'O':
        parity = QSerialPort::OddParity;
        break;
    case 'M':
        parity = QSerialPort::MarkParity;
        break;
    case 'S':
        parity = QSerialPort::SpaceParity;
        break;
    default:
        break;
    }
    QSerialPort::StopBits stop = QSerialPort::OneStop;
    if (line.stopBits == SerialLine::StopBits::OneAndHalf)
        stop = QSerialPort::OneAndHalfStop;
    else if (line.stopBits == SerialLine::StopBits::Two)
        stop = QSerialPort::TwoStop;

    if (!m_port->open(QIODevice::WriteOnly)) {
        m_error = m_port->errorString();
        return false;
    }
    const bool set = m_port->setBaudRate(line.speed) &&
                     m_port->setDataBits(QSerialPort::DataBits(line.dataBits)) &&
                     m_port->setParity(parity) && m_port->setStopBits(stop) &&
                     m_port->setFlowControl(QSerialPort::NoFlowControl);
    if (!set) {
        m_error = m_port->errorString();
        m_port->close();
        return false;
    }
    m_error.clear();
    return true;
}

bool QtSerialPort::isOpen() const
{
    return m_port->isOpen();
}

void QtSerialPort::close()
{
    if (m_port->isOpen())
        m_port->close();
}

bool QtSerialPort::write(const QByteArray &bytes)
{
    if (!m_port->isOpen())
        return false;
    if (m_port->write(bytes) != bytes.size()) {
        m_error = m_port->errorString();
        m_port->close();
        return false;
    }
    return true;
}

void QtSerialPort::flush(int timeoutMs)
{
    if (m_port->isOpen() && m_port->bytesToWrite() > 0)
        m_port->waitForBytesWritten(timeoutMs);
}

QString QtSerialPort::errorText() const
{
    return m_error;
}
