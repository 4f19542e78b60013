#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

class SkinSurface;

// While a folder is scanned, "Scanning N" stands in the window title and in
// the name group (2); what they showed comes back after the scan unless
// something else wrote there meanwhile.
class ScanBanner : public QObject
{
    Q_OBJECT
public:
    explicit ScanBanner(SkinSurface &skin) : m_skin(skin) {}

    // The title the window shows when no scan runs.
    void setTitle(const QString &title) { m_title = title; }
    // Entries found so far; -1 once the scan ended.
    void show(int entries);

signals:
    void titleChanged(const QString &title);

private:
    SkinSurface &m_skin;
    QString m_title = QStringLiteral("Velto");
    QString m_text;
    QVariant m_nameBefore;
    bool m_shown = false;
};
