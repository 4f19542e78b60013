#pragma once

#include "stationlist.h"

#include "skin/skinpart.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <memory>

class Dialogs;
class SkinSurface;
class Tuner;

// The FM tuner mode: tunes a radio device, scans for stations, and keeps the
// preset list ("stations.txt") on the skin's preset list. The frequency is
// counted in tenths of a megahertz (870 is 87.0 MHz) and kept within the band.
//
// Without a device the mode says so once a run; the preset list works all
// the same.
class FmTuner : public QObject, public SkinPart
{
    Q_OBJECT
public:
    static constexpr qint32 kLowest = 870;
    static constexpr qint32 kHighest = 1080;
    static constexpr int kScanMs = 100;
    // Where the shipped FM skin shows things.
    static constexpr int kStatusLabel = 15;
    static constexpr int kFrequencyLabel = 16;
    static constexpr int kStationLabel = 17;
    static constexpr int kFrequencyGroup = 7;
    static constexpr int kPresetGroup = 8;
    static constexpr int kPresetList = 6;
    static constexpr int kNameField = 1;

    // The settings the tuner reads; FMFreq is the frequency itself.
    struct Options
    {
        const qint16 &FMEnable;
        const QString &FMDevice;
        const qint16 &CardType;
        const qint16 &CardPort;
        const qint16 &StartPreset;
        const QString &StartFreq;
        qint32 &FMFreq;
        qint16 &FMVolume;
    };
    struct Services
    {
        SkinSurface &skin;
        Dialogs &dialogs;
        std::function<std::unique_ptr<Tuner>(const QString &device)> openTuner;
        QString stationsFile;
    };

    FmTuner(Options options, Services services);
    ~FmTuner() override;

    // SkinPart
    QStringList modes() const override { return {QStringLiteral("FMTUNER")}; }
    void DoIt(qint16 cmd) override;
    void started() override;
    void ending(bool interactive) override;
    void skinLoaded() override;
    void entered() override;
    void left() override;
    void settingsChanged() override;
    void clockTick(const QDateTime &now) override;

    void FMSetFreq();
    void FMSetScan(int dir);
    // One step of a scan (the scan timer's tick).
    void ScanTick();
    void FMFindStation();
    void FMJumpPreset(int i);
    void FMPrevPreset();
    void FMNextPreset();
    void FMTuneDown() { tuneBy(-10); }
    void FMTuneUp() { tuneBy(+10); }
    void FMStep(int dir) { tuneBy(dir); }
    void FMShowFreq();
    void FMToggleMute();
    void FMPresetKey(int key);
    // Stores the tuned frequency at the current preset, then offers to name it.
    void FMStorePreset();
    // Opens the name field on the current preset's name.
    void FMRenamePreset();
    // The name field's text becomes the current preset's name.
    void FMRenameDone(const QString &name);
    void FMDeletePreset(int i);

    void LoadPresets();
    // False when the file could not be written (the user is told).
    bool SavePresets();

    bool enabled() const { return m_options.FMEnable != 0; }
    qint32 frequency() const { return m_options.FMFreq; }
    int scanDir() const { return m_scanDir; }
    int currentPreset() const { return m_curPreset; }
    const QStringList &presets() const { return m_presets; }
    bool stereo() const { return m_stereo; }
    bool signal() const { return m_signal; }
    bool muted() const { return m_muted; }
    bool renaming() const { return m_renaming; }
    // Empty while the device works (or the tuner is off).
    QString problem() const;

signals:
    // The stereo or signal lights may have changed.
    void stateChanged();

private:
    void tuneBy(int tenths);
    void openDevice();
    void readSignal();
    void showAll();
    void showFrequency();
    void showPreset();
    void showPresetList();
    void setStatus(const QString &text);

    Options m_options;
    Services m_svc;
    std::unique_ptr<Tuner> m_tuner;
    QString m_openedDevice;
    QStringList m_presets;
    int m_scanDir = 0;
    int m_curPreset = 0;
    bool m_presetShown = false; // the frequency is that of the current preset
    bool m_stereo = false;
    bool m_signal = false;
    bool m_muted = false;
    bool m_renaming = false;
    bool m_inMode = false;
    StationList m_list;
    bool m_told = false; // the missing device was reported this run
    QString m_status;
    QTimer m_scanTimer;
};
