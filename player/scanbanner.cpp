#include "scanbanner.h"

#include "skin/skinsurface.h"

void ScanBanner::show(int entries)
{
    constexpr int kNameGroup = 2;
    if (entries < 0) {
        if (!m_shown)
            return;
        m_shown = false;
        emit titleChanged(m_title);
        if (m_skin.digitValue(kNameGroup).toString() == m_text)
            m_skin.SetDD(kNameGroup, m_nameBefore);
        return;
    }
    if (!m_shown) {
        m_shown = true;
        m_nameBefore = m_skin.digitValue(kNameGroup);
    }
    m_text = QStringLiteral("Scanning %1").arg(entries);
    emit titleChanged(m_text);
    m_skin.SetDD(kNameGroup, m_text);
}
