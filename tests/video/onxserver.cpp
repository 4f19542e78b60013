#include <QByteArray>
#include <QtGlobal>

// Qt's headless platform has no OpenGL for widgets, so these tests use the X
// server when there is one (the test main keeps a platform already set, and
// this runs before it). Listing the tests at build time needs no display.
static const bool onXServer =
    qEnvironmentVariableIsSet("DISPLAY") && qputenv("QT_QPA_PLATFORM", QByteArray("xcb"));
