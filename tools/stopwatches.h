#pragma once

#include "skin/skinpart.h"

#include <QDateTime>
#include <QString>
#include <array>

// The ten stopwatch timers of the clock mode, one of them current.
// Fields of each timer: 0 running, 1 split (the display holds the time the
// split was taken while the timer runs on), 2 hours, 3 minutes, 4 tenths of a
// second within the minute (0-599). The clock tick advances running timers.
//
// The current timer's number shows on label 28 and its time on digit group 6:
// whole seconds in mode 5, else the text "h:mm:ss.t".
class SkinSurface;

class Stopwatches : public SkinPart
{
public:
    static constexpr int Count = 10;
    static constexpr int Fields = 5;
    static constexpr int kNumberLabel = 28;
    static constexpr int kGroup = 6;

    explicit Stopwatches(SkinSurface &skin) : m_skin(skin) {}

    // SkinPart: commands 70-75 are functions 1-6; on a clock skin command 4
    // is the split (7).
    QStringList modes() const override { return {QStringLiteral("CLOCK")}; }
    void DoIt(qint16 cmd) override;
    void started() override { TimerFn(0); }
    void skinLoaded() override { show(); }
    void clockTick(const QDateTime &now) override { tick(now); }

    // 0 and 6 reset all, 1 next, 2 previous, 3 start/stop, 4 reset current,
    // 5 lap, 7 split on/off; other codes do nothing.
    void TimerFn(int function);

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
    SkinSurface &m_skin;
    QString m_shown;
};
