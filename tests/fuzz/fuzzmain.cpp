#include "fuzztarget.h"

#include <QCoreApplication>

#include <clocale>
#include <cstdio>
#include <cstdlib>

namespace {

// The readers warn about every odd input; printing that would slow the
// fuzzer down a hundredfold and bury its own report.
void quiet(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", qPrintable(message));
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qInstallMessageHandler(quiet);
    static QCoreApplication app(*argc, *argv);
    std::setlocale(LC_NUMERIC, "C");
    return 0;
}

bool registerFuzzTarget(const char *, FuzzFunction)
{
    return true;
}

void fuzzCheckFailed(const char *condition, const char *file, int line)
{
    std::fprintf(stderr, "%s:%d: check failed: %s\n", file, line, condition);
    std::abort();
}
