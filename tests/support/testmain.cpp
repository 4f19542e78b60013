#include "netguard.h"
#include "platform/leakcheck.h"

#include <QApplication>
#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>

int main(int argc, char **argv)
{
    settleThreadsBeforeLeakCheck();
    // Widget tests run headless unless a test asks for a real X server.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    const int result = RUN_ALL_TESTS();
    // ctest runs each test on its own, so the one that tried is the one that fails.
    if (netGuardRefusals() > 0) {
        std::fprintf(stderr, "FAILED: %d attempt(s) to leave the machine, the last: %s\n",
                     netGuardRefusals(), netGuardLastRefusal().c_str());
        return 1;
    }
    return result;
}
