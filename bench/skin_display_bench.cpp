#include "bench/limit.h"
#include "platform/clock.h"
#include "skin/segmentdisplay.h"

#include <QImage>
#include <benchmark/benchmark.h>

namespace {

class FixedClock : public Clock
{
public:
    QDateTime time = QDateTime(QDate(2026, 11, 23), QTime(7, 29, 58));
    QDateTime now() const override { return time; }
};

// Steps one second per reading, so the seconds on label 9 change every call.
class SteppingClock : public Clock
{
public:
    mutable QDateTime time = QDateTime(QDate(2026, 11, 23), QTime(7, 29, 58));
    QDateTime now() const override
    {
        time = time.addSecs(1);
        return time;
    }
};

// A window-sized picture and a 13x23 digit sheet, as a typical skin has them.
struct Scene
{
    QImage canvas{400, 260, QImage::Format_ARGB32_Premultiplied};
    QImage resource{400, 200, QImage::Format_RGB32};
    QRect lastRepaint;
    QString lastLabel;

    Scene()
    {
        canvas.fill(Qt::black);
        resource.fill(Qt::green);
    }
    DigitGroup group(qint16 mode) const
    {
        DigitGroup g;
        g.faceX = 0;
        g.faceY = 100;
        g.width = 13;
        g.height = 23;
        g.narrow = 6;
        g.gap = 1;
        g.mode = mode;
        g.x = 120;
        g.y = 40;
        g.visible = true;
        return g;
    }
};

// SetDD runs in every tick. Limit 10 us, a fifth of the 50 us a tick may take
// for the time, the clock, the lyrics, the lights and the position together.
void run(benchmark::State &state, const Clock &clock, qint16 mode)
{
    Scene scene;
    SegmentDisplay display(
        scene.canvas, scene.resource, clock, [&scene](const QRect &r) { scene.lastRepaint = r; },
        [&scene](int, const QString &text) { scene.lastLabel = text; });
    display.setTimeFmt(1);
    display.setGroup(0, scene.group(mode));
    int seconds = 0;
    for (auto _ : state) {
        display.SetDD(0, seconds);
        seconds = (seconds + 1) % 360000;
        benchmark::DoNotOptimize(scene.lastRepaint);
    }
    setLimit(state, 10000);
}

} // namespace

// Track time h:mm:ss on six digit cells and two colons, with the repaint request.
static void BM_SetDDTrackTime(benchmark::State &state)
{
    SystemClock clock;
    run(state, clock, 5);
}
BENCHMARK(BM_SetDDTrackTime);

// The clock group at a tick: wall-clock time read, hh:mm drawn, seconds to label 9.
static void BM_SetDDClock(benchmark::State &state)
{
    SystemClock clock;
    run(state, clock, 2);
}
BENCHMARK(BM_SetDDClock);

// The same with a clock that costs nothing: what SetDD itself takes.
static void BM_SetDDClockFixedTime(benchmark::State &state)
{
    FixedClock clock;
    run(state, clock, 2);
}
BENCHMARK(BM_SetDDClockFixedTime);

// Worst case for the clock group: label 9 changes on every call.
static void BM_SetDDClockNewSecondEachCall(benchmark::State &state)
{
    SteppingClock clock;
    run(state, clock, 2);
}
BENCHMARK(BM_SetDDClockNewSecondEachCall);

BENCHMARK_MAIN();
