#pragma once

#include <QString>
#include <memory>
#include <optional>

class QSettings;

// Per-user store of text values addressed by application, section and key.
class SettingsStore
{
public:
    virtual ~SettingsStore() = default;
    virtual std::optional<QString> get(const QString &app, const QString &section,
                                       const QString &key) const = 0;
    virtual void save(const QString &app, const QString &section, const QString &key,
                      const QString &value) = 0;
    // Puts everything saved so far on disk; false when that failed.
    virtual bool flush() = 0;
};

// INI file through QSettings. QSettings compares names with regard to case; the
// program spells some names two ways, so every name is folded to lower case.
class IniSettingsStore : public SettingsStore
{
public:
    explicit IniSettingsStore(const QString &iniPath);
    ~IniSettingsStore() override;

    std::optional<QString> get(const QString &app, const QString &section,
                               const QString &key) const override;
    void save(const QString &app, const QString &section, const QString &key,
              const QString &value) override;
    bool flush() override;

    // $XDG_CONFIG_HOME/velto/velto.ini
    static QString defaultPath();

private:
    void setDamagedFileAside();

    QString m_path;
    std::unique_ptr<QSettings> m_settings;
};
