#pragma once

#include "platform/dialogs.h"

#include <QApplication>
#include <benchmark/benchmark.h>

#include <clocale>

// Dialogs nobody sits at: every question says yes, every file dialog picks `answer`.
class QuietDialogs : public Dialogs
{
public:
    QString answer;
    void message(const QString &) override {}
    bool askYesNo(const QString &) override { return true; }
    QStringList openFiles(const QString &, const QString &, const QString &) override
    {
        return answer.isEmpty() ? QStringList() : QStringList{answer};
    }
    QString saveFile(const QString &, const QString &, const QString &) override { return answer; }
    QString selectFolder(const QString &, const QString &) override { return answer; }
};

// main() for benchmarks that need widgets: off screen unless a display is asked for.
inline int runWithWidgets(int argc, char **argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // As in the program: the media engine refuses other number formats.
    std::setlocale(LC_NUMERIC, "C");
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
