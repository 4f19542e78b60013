#include "ledsign.h"

#include "platform/serialport.h"
#include "platform/text.h"

namespace {

// Bounded: a sign that stalls the line must not hold up the exit.
constexpr int kFlushAtExitMs = 1000;

} // namespace

QByteArray ledFrame(const QString &text)
{
    return QByteArrayLiteral("<ID01><PA><CG>  ") + toWindows1252(text) +
           QByteArrayLiteral("   \r\n");
}

QString LedSign::device() const
{
    const SerialSettings settings = parseSerialSettings(m_options.ExParm);
    return settings.device.isEmpty() ? serialDevicePath(m_options.ExPort) : settings.device;
}

void LedSign::SerialOpen()
{
    const SerialSettings settings = parseSerialSettings(m_options.ExParm);
    const QString path = device();
    QString failure;
    if (!settings.error.isEmpty())
        failure = QStringLiteral("port settings \"%1\": %2").arg(m_options.ExParm, settings.error);
    else if (path.isEmpty())
        failure = QStringLiteral("no serial port %1").arg(m_options.ExPort);
    else if (!m_port.open(path, settings.line))
        failure = path + QStringLiteral(": ") + m_port.errorText();
    if (failure.isEmpty()) {
        m_warned.clear();
    } else if (failure != m_warned) {
        m_warned = failure;
        qWarning("velto: the external display stays silent: %s", qPrintable(failure));
    }
}

void LedSign::SerialClose()
{
    m_port.close();
}

void LedSign::ExDevOut(const QString &text)
{
    // On is 1, as the preferences write it.
    if (m_options.ExEnable != 1)
        return;
    if (!m_port.isOpen())
        SerialOpen();
    if (m_port.isOpen())
        m_port.write(ledFrame(text));
}

void LedSign::started()
{
    ExDevOut(QStringLiteral("Welcome to Velto!"));
}

// The sign keeps the last text it got; without this it would go on showing
// a title after Velto has gone.
void LedSign::ending(bool)
{
    ExDevOut(QStringLiteral("Velto stopped"));
    m_port.flush(kFlushAtExitMs);
    SerialClose();
}
