#pragma once

#include <QObject>
#include <QString>
#include <QTimer>

class SkinLoader;

// The playing name on digit group 2 with the "ScrollName" setting: a name
// longer than the group's cells runs through them from right to left, one
// character every 200 ms, with " *** " between the end and the next start.
// A name that fits, or any name with scrolling off, stands still.
class NameScroller : public QObject
{
    Q_OBJECT
public:
    static constexpr int kGroup = 2;
    static constexpr int kStepMs = 200;

    explicit NameScroller(SkinLoader &skin);

    void setEnabled(bool enabled);
    bool enabled() const { return m_enabled; }
    void setText(const QString &text);
    QString text() const { return m_text; }
    // A new skin may give the group another width.
    void skinChanged();

    // What the cells show after `step` steps, for a group of `cells` cells.
    static QString frame(const QString &text, int cells, int step);
    bool scrolling() const { return m_timer.isActive(); }

private:
    int cells() const;
    void show();

    SkinLoader &m_skin;
    QTimer m_timer;
    QString m_text;
    bool m_enabled = false;
    int m_step = 0;
};
