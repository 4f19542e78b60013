#pragma once

#include <QString>
#include <QVariant>

class QWidget;
class SkinLoader;

// While a folder is scanned, "Scanning N" stands in the window title and in
// the name group (2); what they showed comes back after the scan unless
// something else wrote there meanwhile.
class ScanBanner
{
public:
    ScanBanner(QWidget &window, SkinLoader &skin) : m_window(window), m_skin(skin) {}

    // Entries found so far; -1 once the scan ended.
    void show(int entries);

private:
    QWidget &m_window;
    SkinLoader &m_skin;
    QString m_titleBefore, m_text;
    QVariant m_nameBefore;
    bool m_shown = false;
};
