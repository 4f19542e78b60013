#pragma once

#include "toolcommands.h"

#include <QDateTime>
#include <QString>
#include <array>
#include <functional>

// The ten stopwatch timers of the clock mode, one of them current.
// Fields of each timer: 0 running, 1 split (the display holds the time the
// split was taken while the timer runs on), 2 hours, 3 minutes, 4 tenths of a
// second within the minute (0-599). The clock tick advances running timers.
class Stopwatches : public StopwatchCommands
{
public:
    static constexpr int Count = 10;
    static constexpr int Fields = 5;
    using LabelFn = std::function<void(int label, const QString &text)>;
    using DisplayFn = std::function<void(const QString &text)>;

    void setLabelFn(LabelFn fn) { m_setLabel = std::move(fn); }
    void setDisplayFn(DisplayFn fn) { m_display = std::move(fn); }

    // 0 and 6 reset all, 1 next, 2 previous, 3 start/stop, 4 reset current,
    // 5 lap, 7 split on/off; other codes do nothing.
    void TimerFn(int function) override;

    // Adds elapsed time to every running timer and draws the current one.
    // Negative steps (the clock set back) add nothing.
    void advance(qint64 elapsedMs);
    // The same from wall-clock readings; the first reading only sets the mark.
    void tick(const QDateTime &now);

    int current() const { return m_current; }
    bool anyRunning() const;
    qint16 field(int timer, int field) const;
    // "h:mm:ss.t" of the timer, as the display shows it.
    QString text(int timer) const;
    // Whole seconds the display shows: the split while one is held.
    qint64 shownSeconds(int timer) const;

private:
    static qint64 totalTenths(const std::array<qint16, Fields> &t);
    static void setTotal(std::array<qint16, Fields> &t, qint64 tenths);
    qint64 shownTenths(int timer) const;
    // Draws the current timer; the clock tick's calls only when it changed.
    void show(bool always = true);

    std::array<std::array<qint16, Fields>, Count> m_timers{};
    std::array<qint64, Count> m_split{};
    int m_current = 0;
    std::array<qint64, Count> m_pendingMs{};
    QDateTime m_last;
    LabelFn m_setLabel;
    DisplayFn m_display;
    QString m_shown;
};
