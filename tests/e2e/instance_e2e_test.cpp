#include "e2e.h"
#include "support/testmedia.h"

namespace {

class Instance : public E2e
{
protected:
    void SetUp() override
    {
        E2e::SetUp();
        velto.setEnvironment(QStringLiteral("VELTO_AUDIO"), QStringLiteral("null"));
    }
    // Waits until --status of the running Velto says what `done` wants.
    bool statusUntil(const std::function<bool(const QStringList &)> &done)
    {
        return waitUntil([&] {
            const VeltoRun r = runVelto(velto.environment(), {QStringLiteral("--status")});
            return r.exitCode == 0 && done(r.out.split('\n'));
        });
    }

    VeltoProcess velto;
    TestMedia media;
};

TEST_F(Instance, LaterStartsHandOverAndTheRunningOneAnswers)
{
    const QString one = media.sineWav(QStringLiteral("one.wav"), 30000);
    const QString two = media.sineWav(QStringLiteral("two.wav"), 30000);
    const QProcessEnvironment env = velto.environment();
    // Nothing runs yet: the commands have nobody to talk to.
    const VeltoRun alone = runVelto(env, {QStringLiteral("--next")});
    EXPECT_EQ(alone.exitCode, 1);
    EXPECT_EQ(alone.err, QStringLiteral("velto: Velto is not running\n"));

    ASSERT_FALSE(velto.startWindow({QStringLiteral("--play"), one}).isEmpty());
    EXPECT_TRUE(statusUntil([](const QStringList &s) { return s.value(0) == "Playing"; }));

    // --play from another folder: the name is relative to where it was typed.
    const VeltoRun relative = runVelto(env, {QStringLiteral("--play"), QStringLiteral("two.wav")},
                                       QFileInfo(two).absolutePath());
    EXPECT_EQ(relative.exitCode, 0) << relative.err.toStdString();
    EXPECT_TRUE(statusUntil(
        [](const QStringList &s) { return s.value(0) == "Playing" && s.value(1) == "two.wav"; }));

    // A command reaches the running window as its button would.
    EXPECT_EQ(runVelto(env, {QStringLiteral("--stop")}).exitCode, 0);
    EXPECT_TRUE(statusUntil([](const QStringList &s) { return s.value(0) == "Stopped"; }));
}

TEST_F(Instance, TwoStartsAtOnceEndWithOneWindow)
{
    VeltoProcess second;
    second.setEnvironment(QStringLiteral("XDG_RUNTIME_DIR"),
                          velto.environment().value(QStringLiteral("XDG_RUNTIME_DIR")));
    ASSERT_TRUE(velto.start());
    ASSERT_TRUE(second.start());
    // One of them hands over and ends; the other shows the window.
    ASSERT_TRUE(waitUntil([&] { return velto.finished() || second.finished(); }));
    VeltoProcess &running = velto.finished() ? second : velto;
    VeltoProcess &gone = velto.finished() ? velto : second;
    EXPECT_EQ(gone.process().exitCode(), 0);
    EXPECT_FALSE(running.waitForWindow().isEmpty());
    EXPECT_FALSE(running.finished());
}

TEST_F(Instance, StartAfterAKilledOneTakesItsPlace)
{
    ASSERT_FALSE(velto.startWindow().isEmpty());
    velto.signal(SIGKILL);
    EXPECT_FALSE(velto.waitForExit()) << "killed, not ended";
    // Its socket is still there, with nobody behind it.
    ASSERT_FALSE(velto.startWindow().isEmpty());
    const VeltoRun status = runVelto(velto.environment(), {QStringLiteral("--status")});
    EXPECT_EQ(status.exitCode, 0) << status.err.toStdString();
    EXPECT_TRUE(status.out.startsWith(QStringLiteral("Stopped\n"))) << status.out.toStdString();
}

} // namespace
