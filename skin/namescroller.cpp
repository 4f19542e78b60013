#include "namescroller.h"

#include "skinloader.h"

#include <algorithm>
#include <cstdlib>

NameScroller::NameScroller(SkinLoader &skin) : m_skin(skin)
{
    m_timer.setInterval(kStepMs);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        ++m_step;
        show();
    });
}

void NameScroller::setEnabled(bool enabled)
{
    if (enabled == m_enabled)
        return;
    // What the group shows now is the name to run.
    if (enabled)
        m_text = m_skin.display().value(kGroup).toString();
    m_enabled = enabled;
    m_step = 0;
    show();
}

void NameScroller::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    m_step = 0;
    show();
}

void NameScroller::skinChanged()
{
    m_step = 0;
    show();
}

QString NameScroller::frame(const QString &text, int cells, int step)
{
    if (cells <= 0 || text.size() <= cells)
        return text;
    const QString loop = text + QStringLiteral(" *** ");
    const qsizetype start = step % loop.size();
    return (loop.mid(start) + loop).left(cells);
}

// Only the character and letter sheets hold names; their cells are the mode's size.
int NameScroller::cells() const
{
    const auto &groups = m_skin.skin().digitGroups;
    const auto group = std::find_if(groups.begin(), groups.end(), [](const SkinDigitGroup &g) {
        return g.number == kGroup && g.sheetType >= 1 && g.sheetType <= 3;
    });
    return group == groups.end() ? 0 : std::abs(group->mode);
}

void NameScroller::show()
{
    const int width = m_enabled ? cells() : 0;
    const bool runs = width > 0 && m_text.size() > width;
    if (runs && !m_timer.isActive())
        m_timer.start();
    else if (!runs)
        m_timer.stop();
    m_skin.drawDD(kGroup, runs ? frame(m_text, width, m_step) : m_text);
}
