#include "fmtuner.h"

#include "fmpreset.h"

#include "platform/dialogs.h"
#include "platform/text.h"
#include "platform/tuner.h"
#include "skin/skinsurface.h"
#include "skin/skintextfield.h"

#include <algorithm>
#include <cmath>

FmTuner::FmTuner(Options options, Services services)
    : m_options(options), m_svc(std::move(services)),
      m_list(m_svc.skin, m_svc.dialogs, kPresetList, kNameField, m_svc.stationsFile, m_inMode)
{
    m_scanTimer.setInterval(kScanMs);
    connect(&m_scanTimer, &QTimer::timeout, this, &FmTuner::ScanTick);
    connect(&m_list, &StationList::clicked, this, &FmTuner::FMJumpPreset);
    connect(&m_list, &StationList::activated, this, &FmTuner::FMJumpPreset);
    connect(&m_list, &StationList::entered, this, &FmTuner::FMRenameDone);
    connect(&m_list, &StationList::keyPressed, this, [this](int key, int row) {
        if (key == Qt::Key_Delete)
            return FMDeletePreset(row);
        if (row >= 0)
            m_curPreset = row;
        FMRenamePreset();
    });
}

FmTuner::~FmTuner() = default;

QString FmTuner::problem() const
{
    if (!enabled())
        return {};
    return m_tuner ? m_tuner->problem() : QStringLiteral("No radio device is open.");
}

void FmTuner::DoIt(qint16 cmd)
{
    if (cmd >= 91 && cmd < 101)
        return FMPresetKey(cmd - 91);
    switch (cmd) {
    case 80:
        return FMSetScan(-1);
    case 81:
        return FMSetScan(+1);
    case 82:
        return FMTuneDown();
    case 83:
        return FMTuneUp();
    case 84:
        return FMPrevPreset();
    case 85:
        return FMNextPreset();
    case 86:
        return FMShowFreq();
    case 87:
        return FMToggleMute();
    case 88:
        return FMStep(+1);
    case 89:
        return FMStep(-1);
    case 90:
        return FMStorePreset();
    default:
        return;
    }
}

void FmTuner::started()
{
    LoadPresets();
    if (enabled())
        openDevice();
    // The start preset when the list has one there, else the start frequency.
    const int start = m_options.StartPreset;
    if (start >= 0 && start < m_presets.size() && FmPreset::frequency(m_presets[start]) > 0) {
        FMJumpPreset(start);
    } else {
        m_options.FMFreq = qint32(std::lround(
            std::clamp(leadingNumber(m_options.StartFreq) * 10.0, double(kLowest), 1e6)));
        FMSetFreq();
        FMFindStation();
    }
}

void FmTuner::ending(bool interactive)
{
    FMSetScan(0);
    if (m_options.FMEnable == 1 && interactive && m_tuner && m_tuner->problem().isEmpty() &&
        m_svc.dialogs.askYesNo(QStringLiteral("Mute FM Tuner Audio?")))
        m_tuner->radio_off();
    m_tuner.reset();
}

void FmTuner::skinLoaded()
{
    m_list.hook();
    if (m_inMode)
        showAll();
}

void FmTuner::entered()
{
    m_inMode = true;
    m_list.hook();
    if (enabled() && !m_tuner)
        openDevice();
    showAll();
    // Once a run is enough: the preset list stays usable without a device.
    if (!m_told && (!enabled() || !problem().isEmpty())) {
        m_told = true;
        m_svc.dialogs.message(
            enabled()
                ? problem() + QStringLiteral("\rChoose the radio device under Devices in "
                                             "Preferences. The preset list works without one.")
                : QStringLiteral("The FM tuner is switched off.\rTick \"Use an FM tuner\" "
                                 "under Devices in Preferences to use a radio device."));
    }
}

void FmTuner::left()
{
    m_inMode = false;
    FMSetScan(0);
    m_renaming = false;
}

void FmTuner::settingsChanged()
{
    if (!enabled()) {
        FMSetScan(0);
        m_tuner.reset();
        m_stereo = m_signal = false;
        emit stateChanged();
    } else if (!m_tuner || m_openedDevice != m_options.FMDevice) {
        openDevice();
        FMSetFreq();
    }
    if (m_inMode)
        showAll();
}

void FmTuner::clockTick(const QDateTime &now)
{
    Q_UNUSED(now);
    // The lights follow the station while the mode is shown; a scan reads them itself.
    if (m_inMode && m_scanDir == 0)
        readSignal();
}

void FmTuner::openDevice()
{
    m_tuner = m_svc.openTuner ? m_svc.openTuner(m_options.FMDevice) : nullptr;
    m_openedDevice = m_options.FMDevice;
    if (!m_tuner)
        return;
    if (!m_tuner->problem().isEmpty()) {
        qWarning("velto: %s", qPrintable(m_tuner->problem()));
        return;
    }
    m_tuner->set_card_type(m_options.CardType);
    m_tuner->set_port(m_options.CardPort);
    m_options.FMVolume = qint16(std::min(m_tuner->get_volume(), 32767));
}

void FmTuner::FMSetFreq()
{
    if (!enabled())
        return;
    m_options.FMFreq = std::clamp(m_options.FMFreq, kLowest, kHighest);
    if (m_tuner) {
        m_tuner->set_frequency(m_options.FMFreq * 100000);
        m_tuner->radio_on();
    }
    if (m_muted) {
        m_muted = false; // tuning switches the sound back on
        setStatus(m_scanDir != 0 ? m_status : QString());
    }
    showFrequency();
}

void FmTuner::FMSetScan(int dir)
{
    if (dir != 0 && enabled()) {
        m_scanDir = dir > 0 ? 1 : -1;
        m_renaming = false;
        setStatus(QStringLiteral("Scanning..."));
        m_scanTimer.start();
    } else if (dir == 0 && m_scanDir != 0) {
        m_scanDir = 0;
        m_scanTimer.stop();
        setStatus(QString());
    }
}

void FmTuner::ScanTick()
{
    if (!enabled() || m_scanDir == 0)
        return;
    m_options.FMFreq += m_scanDir;
    if (m_options.FMFreq < kLowest || m_options.FMFreq > kHighest) {
        // The band's edge ends the scan; it never wraps to the other end.
        m_options.FMFreq -= m_scanDir;
        FMSetScan(0);
    }
    m_presetShown = false;
    FMSetFreq();
    const bool found = m_tuner && m_tuner->signal_detect() == 1;
    if (found) {
        FMSetScan(0);
        FMFindStation();
    }
    const bool stereo = m_tuner && m_tuner->stereo_detect() == 1;
    if (found != m_signal || stereo != m_stereo) {
        m_signal = found;
        m_stereo = stereo;
        emit stateChanged();
    }
}

void FmTuner::readSignal()
{
    const bool found = enabled() && m_tuner && m_tuner->signal_detect() == 1;
    const bool stereo = enabled() && m_tuner && m_tuner->stereo_detect() == 1;
    if (found == m_signal && stereo == m_stereo)
        return;
    m_signal = found;
    m_stereo = stereo;
    emit stateChanged();
}

void FmTuner::tuneBy(int tenths)
{
    FMSetScan(0);
    m_options.FMFreq += tenths;
    m_presetShown = false;
    FMSetFreq();
    if (enabled()) {
        FMFindStation();
        readSignal();
    }
}

void FmTuner::FMFindStation()
{
    for (int i = 0; i < m_presets.size(); ++i) {
        if (FmPreset::frequency(m_presets[i]) == m_options.FMFreq) {
            m_curPreset = i;
            m_presetShown = true;
            showPreset();
            return;
        }
    }
    m_presetShown = false;
    showPreset();
}

void FmTuner::FMJumpPreset(int i)
{
    if (i < 0)
        return;
    FMSetScan(0);
    m_curPreset = i;
    // An empty slot (a blank line, or past the end) is chosen but not tuned:
    // it is where the next stored preset goes.
    const qint32 freq = i < m_presets.size() ? FmPreset::frequency(m_presets[i]) : 0;
    m_presetShown = freq > 0;
    showPreset();
    if (freq > 0) {
        m_options.FMFreq = freq;
        FMSetFreq();
        readSignal();
    }
}

void FmTuner::FMPrevPreset()
{
    if (m_presets.isEmpty())
        return;
    FMJumpPreset(m_curPreset <= 0 || m_curPreset > m_presets.size() ? int(m_presets.size()) - 1
                                                                    : m_curPreset - 1);
}

void FmTuner::FMNextPreset()
{
    if (m_presets.isEmpty())
        return;
    FMJumpPreset(m_curPreset + 1 >= m_presets.size() ? 0 : m_curPreset + 1);
}

void FmTuner::FMPresetKey(int key)
{
    FMJumpPreset(key);
}

void FmTuner::FMShowFreq()
{
    FMSetScan(0);
    showFrequency();
    FMFindStation();
}

void FmTuner::FMToggleMute()
{
    if (!enabled())
        return;
    m_muted = !m_muted;
    if (m_tuner)
        m_muted ? m_tuner->radio_off() : m_tuner->radio_on();
    setStatus(m_muted ? QStringLiteral("Mute") : QString());
}

void FmTuner::FMStorePreset()
{
    FMSetScan(0);
    // Empty slots fill the list up to the current preset.
    while (m_presets.size() <= m_curPreset)
        m_presets << QString();
    m_presets[m_curPreset] = FmPreset::stored(std::clamp(m_options.FMFreq, kLowest, kHighest));
    m_presetShown = true;
    showPresetList();
    showPreset();
    SavePresets();
    FMRenamePreset();
}

void FmTuner::FMRenamePreset()
{
    if (m_curPreset < 0 || m_curPreset >= m_presets.size())
        return;
    m_renaming = true;
    // The prompt as it has always been spelt, two blanks and all.
    setStatus(QStringLiteral("Edit station  name"));
    if (m_inMode)
        m_list.edit(FmPreset::name(m_presets[m_curPreset]), true);
}

void FmTuner::FMRenameDone(const QString &name)
{
    const bool wasRenaming = m_renaming;
    m_renaming = false;
    if (m_curPreset < 0 || m_curPreset >= m_presets.size())
        return;
    if (wasRenaming)
        setStatus(QString());
    m_presets[m_curPreset] =
        FmPreset::renamed(m_presets[m_curPreset], StationList::oneLine(name).trimmed());
    showPresetList();
    showPreset();
    SavePresets();
}

void FmTuner::FMDeletePreset(int i)
{
    if (i < 0 || i >= m_presets.size())
        return;
    m_presets.removeAt(i);
    // Blank slots left at the end are no presets.
    while (!m_presets.isEmpty() && m_presets.last().trimmed().isEmpty())
        m_presets.removeLast();
    m_curPreset = std::min<int>(m_curPreset, std::max<int>(0, int(m_presets.size()) - 1));
    showPresetList();
    FMFindStation();
    SavePresets();
}

void FmTuner::LoadPresets()
{
    m_presets = m_list.load();
    showPresetList();
}

bool FmTuner::SavePresets()
{
    return m_list.save(m_presets);
}

void FmTuner::setStatus(const QString &text)
{
    m_status = text;
    if (m_inMode)
        m_svc.skin.setLabel(kStatusLabel, text);
}

void FmTuner::showFrequency()
{
    if (!m_inMode)
        return;
    m_svc.skin.setLabel(kFrequencyLabel, FmPreset::mhz(m_options.FMFreq) + QStringLiteral(" FM"));
    m_svc.skin.SetDD(kFrequencyGroup, m_options.FMFreq / 10.0);
}

void FmTuner::showPreset()
{
    const bool shown = m_presetShown && m_curPreset < m_presets.size();
    m_list.select(shown ? m_curPreset : -1);
    if (!m_inMode)
        return;
    m_svc.skin.setLabel(kStationLabel, shown ? FmPreset::name(m_presets[m_curPreset]) : QString());
    m_svc.skin.SetDD(kPresetGroup, m_curPreset);
}

void FmTuner::showPresetList()
{
    m_list.fill(m_presets, -1);
}

void FmTuner::showAll()
{
    if (!m_inMode)
        return;
    QString status = m_status;
    if (status.isEmpty() && !enabled())
        status = QStringLiteral("Tuner off");
    else if (status.isEmpty() && !problem().isEmpty())
        status = QStringLiteral("No radio device");
    m_svc.skin.setLabel(kStatusLabel, status);
    showFrequency();
    showPreset();
    if (SkinTextField *f = m_list.field(); f && !m_renaming)
        f->setText(m_presetShown && m_curPreset < m_presets.size()
                       ? FmPreset::name(m_presets[m_curPreset])
                       : QString());
}
