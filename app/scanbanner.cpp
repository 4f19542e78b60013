#include "app/scanbanner.h"

#include "skin/skinloader.h"

#include <QWidget>

void ScanBanner::show(int entries)
{
    if (entries < 0) {
        if (!m_shown)
            return;
        m_shown = false;
        if (m_window.windowTitle() == m_text)
            m_window.setWindowTitle(m_titleBefore);
        if (m_skin.display().value(2).toString() == m_text)
            m_skin.SetDD(2, m_nameBefore);
        return;
    }
    if (!m_shown) {
        m_shown = true;
        m_titleBefore = m_window.windowTitle();
        m_nameBefore = m_skin.display().value(2);
    }
    m_text = QStringLiteral("Scanning %1").arg(entries);
    m_window.setWindowTitle(m_text);
    m_skin.SetDD(2, m_text);
}
