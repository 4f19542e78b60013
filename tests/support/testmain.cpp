#include <QApplication>
#include <gtest/gtest.h>

#include <clocale>

int main(int argc, char **argv)
{
    // Widget tests run headless unless a test asks for a real X server.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    // What the web engine asks of a program that loads it as a module.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    return RUN_ALL_TESTS();
}
