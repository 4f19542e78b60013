#pragma once

#include "app/velto.h"
#include "core/programfolder.h"

#include "support/fakes.h"
#include "support/temphome.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

// The real program and its main window on the shipped skins in a temporary home, with scripted
// dialogs, clock, random numbers and screens. Window tests derive from it.
class ShippedWindow
{
protected:
    ~ShippedWindow() { qunsetenv("VELTO_DATA_DIR"); }

    // names and playNow as on the command line.
    void start(const QStringList &names = {}, bool playNow = false)
    {
        qputenv("VELTO_DATA_DIR", VELTO_DATA_DIR);
        ProgramFolder folder(ProgramFolder::defaultPath());
        folder.prepare(ProgramFolder::shippedDataPath());
        velto = std::make_unique<Velto>(Velto::Platform{store, dialogs, clock, random, screens},
                                        folder);
        window = &velto->window();
        velto->Load(names, home.path(), playNow);
    }

    // What waits for the window to be on screen (the last cover) comes in.
    void showFirstFrame()
    {
        QSignalSpy painted(window, &frmNeOrb::firstFramePainted);
        window->show();
        ASSERT_TRUE(painted.wait(5000));
    }

    // Sets the scripted time and waits until the window's clock timer has
    // read it. Once the window is loaded only that tick asks the clock, and a
    // tick runs whole before the event loop turns again.
    bool tickAt(const QTime &time)
    {
        clock.time = QDateTime(clock.time.date(), time);
        const int reads = clock.reads;
        return QTest::qWaitFor([&] { return clock.reads > reads; }, 10000);
    }

    TempHome home;
    MemoryStore store;
    FakeDialogs dialogs;
    FakeClock clock;
    FakeRandom random;
    FakeScreens screens;
    std::unique_ptr<Velto> velto;
    frmNeOrb *window = nullptr; // velto's
};
