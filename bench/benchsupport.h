#pragma once

#include "platform/dialogs.h"

#include <QApplication>
#include <benchmark/benchmark.h>

#include <clocale>
#include <functional>

// Dialogs nobody sits at: every question says yes, every file dialog picks `answer`.
class QuietDialogs : public Dialogs
{
public:
    QString answer;
    void message(const QString &) override {}
    bool question(const QString &, const QString &) override { return true; }
    QString askText(const QString &, const QString &) override { return answer; }
    QStringList openFiles(const QString &, const QString &, const QString &) override
    {
        return answer.isEmpty() ? QStringList() : QStringList{answer};
    }
    QString saveFile(const QString &, const QString &, const QString &) override { return answer; }
    QString selectFolder(const QString &, const QString &) override { return answer; }
};

// main() for the benchmarks. `App` is the least application they need
// (QApplication for widgets, off screen unless a display is asked for);
// `atEnd` lets go of what must not outlive it.
template<typename App = QApplication>
int runBenchmarks(int argc, char **argv, const std::function<void()> &atEnd = {})
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    App app(argc, argv);
    // As in the program: the media engine refuses other number formats.
    std::setlocale(LC_NUMERIC, "C");
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    if (atEnd)
        atEnd();
    return 0;
}
