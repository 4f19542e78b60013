#include "tools/calculator.h"
#include "tools/conversionfile.h"

#include "bench/benchsupport.h"
#include "bench/limit.h"
#include "platform/clock.h"
#include "skin/skinlabelwidget.h"
#include "skin/skinlistarea.h"
#include "skin/skinloader.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QWidget>
#include <benchmark/benchmark.h>

#include <memory>

namespace {

// The calculator on the shipped calculator skin, as the program has it.
struct CalculatorOnItsSkin
{
    QuietDialogs dialogs;
    SystemClock clock;
    QWidget window;
    SkinLoader loader{window, dialogs, clock};
    QString CvtFile;
    QTemporaryDir folder;
    std::unique_ptr<Calculator> calc;

    CalculatorOnItsSkin()
    {
        loader.LoadSkin(QStringLiteral(VELTO_DATA_DIR "/skins/calculator.skin"));
        renew();
    }
    void renew()
    {
        if (SkinListArea *list = loader.list(Calculator::kConversionList))
            list->clear();
        CvtFile.clear(); // or the new calculator would load the last file at start
        calc.reset();
        calc = std::make_unique<Calculator>(Calculator::Options{CvtFile},
                                            Calculator::Services{loader, dialogs, folder.path()});
        calc->started();
    }
};

// "Name i,factor,offset" lines, as a long conversion file has them.
QByteArray conversionLines(int count)
{
    QByteArray bytes;
    for (int i = 0; i < count; ++i)
        bytes += "Unit number " + QByteArray::number(i) + " to base," +
                 QByteArray::number(1.0 + i / 7.0, 'g', 12) + "," + QByteArray::number(i % 5) +
                 "\r\n";
    return bytes;
}

// One key of a sum, from the command to the display's pixels: the digit or
// operator, the new text on label 23, and the label painted again. Limit
// 1 ms, so keying as fast as fingers go never lags.
void BM_KeyToDisplay(benchmark::State &state)
{
    CalculatorOnItsSkin skin;
    SkinLabelWidget *display = skin.loader.labelWidget(Calculator::kDisplayLabel);
    QImage target(display->size(), QImage::Format_ARGB32_Premultiplied);
    // 123 + 456 x 7 = ... and again: digits, operators and results in turn.
    const qint16 keys[] = {41, 42, 43, 51, 44, 45, 46, 53, 47, 55, 61};
    size_t next = 0;
    for (auto _ : state) {
        skin.calc->DoIt(keys[next]);
        next = (next + 1) % std::size(keys);
        display->render(&target);
        benchmark::DoNotOptimize(target.constBits());
    }
    // The sum keyed once more, short of the clear, must come out right, or the
    // keys did nothing.
    for (; next != 0; next = (next + 1) % std::size(keys))
        skin.calc->DoIt(keys[next]);
    for (size_t i = 0; i + 1 < std::size(keys); ++i)
        skin.calc->DoIt(keys[i]);
    if (skin.calc->display() != QLatin1String("4053"))
        state.SkipWithError("the keys did not reach the calculator");
    setLimit(state, 1000);
}
BENCHMARK(BM_KeyToDisplay)->Unit(benchmark::kMicrosecond);

// A 10,000-line conversion file read into the list. Limit 20 ms: loading it
// from the dialog should feel instant.
void BM_LoadCvtFile(benchmark::State &state)
{
    CalculatorOnItsSkin skin;
    const QString file = skin.folder.filePath(QStringLiteral("long.ccf"));
    QFile out(file);
    if (!out.open(QIODevice::WriteOnly) || out.write(conversionLines(10000)) < 0)
        state.SkipWithError("cannot write the conversion file");
    out.close();
    for (auto _ : state) {
        state.PauseTiming();
        skin.renew();
        state.ResumeTiming();
        skin.calc->LoadCvtFile(file);
    }
    if (skin.loader.list(Calculator::kConversionList)->count() != 10000)
        state.SkipWithError("not every conversion was listed");
    setLimit(state, 20);
}
BENCHMARK(BM_LoadCvtFile)->Unit(benchmark::kMillisecond);

// The reader alone, for comparison with the whole load above.
void BM_ReadConversionFile(benchmark::State &state)
{
    const QByteArray bytes = conversionLines(10000);
    for (auto _ : state)
        benchmark::DoNotOptimize(readConversionFile(bytes, QStringLiteral("long.ccf")));
    setLimit(state, 20);
}
BENCHMARK(BM_ReadConversionFile)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    return runBenchmarks(argc, argv);
}
