#include "screenscale.h"

#include <QByteArrayList>

#include <algorithm>
#include <cmath>

namespace {

constexpr const char *kQtNames[] = {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS",
                                    "QT_ENABLE_HIGHDPI_SCALING", "QT_SCALE_FACTOR_ROUNDING_POLICY"};

// A factor rounded down, at least 1; what Qt could not read stays as it is.
QByteArray wholeFactor(const QByteArray &factor)
{
    bool ok = false;
    const double value = factor.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(value))
        return factor;
    return QByteArray::number(std::max(std::floor(value), 1.0), 'f', 0);
}

// "1.5;2" or "DP-1=1.5;HDMI-1=2": each factor rounded down, names kept.
QByteArray wholeScreenFactors(const QByteArray &list)
{
    QList<QByteArray> entries = list.split(';');
    for (QByteArray &entry : entries) {
        const qsizetype equals = entry.lastIndexOf('=');
        entry = entry.first(equals + 1) + wholeFactor(entry.sliced(equals + 1));
    }
    return entries.join(';');
}

QByteArray &field(ScaleVariables &v, int index)
{
    QByteArray *fields[] = {&v.scaleFactor, &v.screenScaleFactors, &v.enableHighDpiScaling,
                            &v.roundingPolicy};
    return *fields[index];
}

} // namespace

ScaleVariables wholeNumberScale(const ScaleVariables &user)
{
    ScaleVariables whole = user;
    const QByteArray forced = user.veltoScale.trimmed();
    if (forced == "1" || forced == "2" || forced == "3") {
        // Off, Qt still applies QT_SCALE_FACTOR, on every screen alike.
        whole.scaleFactor = forced;
        whole.screenScaleFactors.clear();
        whole.enableHighDpiScaling = "0";
        whole.roundingPolicy.clear();
        return whole;
    }
    if (!whole.scaleFactor.isEmpty())
        whole.scaleFactor = wholeFactor(whole.scaleFactor);
    if (!whole.screenScaleFactors.isEmpty())
        whole.screenScaleFactors = wholeScreenFactors(whole.screenScaleFactors);
    // The user's policy would take the place of main()'s rounding down.
    whole.roundingPolicy.clear();
    return whole;
}

ScreenScale::ScreenScale()
{
    ScaleVariables user;
    user.veltoScale = qgetenv("VELTO_SCALE");
    for (int i = 0; i < Count; ++i) {
        m_userSet[size_t(i)] = qEnvironmentVariableIsSet(kQtNames[i]);
        m_user[size_t(i)] = qgetenv(kQtNames[i]);
        field(user, i) = m_user[size_t(i)];
    }
    ScaleVariables whole = wholeNumberScale(user);
    for (int i = 0; i < Count; ++i) {
        if (field(whole, i).isEmpty())
            qunsetenv(kQtNames[i]);
        else
            qputenv(kQtNames[i], field(whole, i));
    }
}

ScreenScale::~ScreenScale()
{
    restore();
}

void ScreenScale::restore()
{
    if (m_restored)
        return;
    m_restored = true;
    for (int i = 0; i < Count; ++i) {
        if (m_userSet[size_t(i)])
            qputenv(kQtNames[i], m_user[size_t(i)]);
        else
            qunsetenv(kQtNames[i]);
    }
}
