#include "settingsstore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSettings>
#include <QStandardPaths>
#include <QStringList>

namespace {

QString keyPath(const QString &section, const QString &key)
{
    return section.toLower() + QLatin1Char('/') + key.toLower();
}

// A program killed while writing the lock beside the file leaves it empty;
// QSettings would then wait 30 s on every save until the lock ages out. A
// lock that names its owner is left to QLockFile, which knows a dead one.
std::unique_ptr<QSettings> openSettings(const QString &iniPath)
{
    const QString lock = iniPath + QStringLiteral(".lock");
    qint64 pid = 0;
    QString host, app;
    if (QFileInfo::exists(lock) && !QLockFile(lock).getLockInfo(&pid, &host, &app))
        QFile::remove(lock);
    return std::make_unique<QSettings>(iniPath, QSettings::IniFormat);
}

} // namespace

IniSettingsStore::IniSettingsStore(const QString &iniPath)
    : m_path(iniPath), m_settings(openSettings(iniPath))
{
    if (m_settings->status() != QSettings::NoError)
        setDamagedFileAside();
}

void IniSettingsStore::setDamagedFileAside()
{
    // QSettings will not write over a file it cannot parse. Keep what could be
    // read, move the broken file aside, and start a clean one with those values.
    qWarning("velto: settings file %s is damaged; keeping what could be read", qPrintable(m_path));
    QHash<QString, QVariant> good;
    for (const QString &key : m_settings->allKeys())
        good.insert(key, m_settings->value(key));
    m_settings.reset(); // its cached copy of the file must go before the file does
    const QString aside = m_path + QStringLiteral(".damaged");
    QFile::remove(aside);
    QFile::rename(m_path, aside);
    m_settings = std::make_unique<QSettings>(m_path, QSettings::IniFormat);
    for (auto it = good.cbegin(); it != good.cend(); ++it)
        m_settings->setValue(it.key(), it.value());
}

IniSettingsStore::~IniSettingsStore() = default;

std::optional<QString> IniSettingsStore::get(const QString &app, const QString &section,
                                             const QString &key) const
{
    Q_UNUSED(app); // one application per file
    const QVariant v = m_settings->value(keyPath(section, key));
    if (!v.isValid())
        return std::nullopt;
    // A hand-edited value with a comma reads back as a list.
    if (v.typeId() == QMetaType::QStringList)
        return v.toStringList().join(QLatin1Char(','));
    return v.toString();
}

void IniSettingsStore::save(const QString &app, const QString &section, const QString &key,
                            const QString &value)
{
    Q_UNUSED(app);
    m_settings->setValue(keyPath(section, key), value);
}

bool IniSettingsStore::flush()
{
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    m_settings->sync();
    // Some damage is only found when the file is read again to be merged.
    if (m_settings->status() == QSettings::FormatError) {
        setDamagedFileAside();
        m_settings->sync();
    }
    return m_settings->status() == QSettings::NoError;
}

QString IniSettingsStore::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/velto/velto.ini");
}
