#include "e2e.h"
#include "support/testmedia.h"

#include <QProcess>
#include <gtest/gtest.h>

#include <csignal>

namespace {

struct Started
{
    int exitCode = -1;
    QString out, err;
};

// A short-lived start of velto beside the one running, as a shell or the
// file manager makes it.
Started runVelto(const QProcessEnvironment &env, const QStringList &args)
{
    QProcess p;
    p.setProcessEnvironment(env);
    p.start(QStringLiteral(VELTO_BINARY), args);
    Started run;
    if (!p.waitForFinished(20000)) {
        p.kill();
        p.waitForFinished();
        return run;
    }
    run.exitCode = p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
    run.out = QString::fromLocal8Bit(p.readAllStandardOutput());
    run.err = QString::fromLocal8Bit(p.readAllStandardError());
    return run;
}

class Instance : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (!haveDisplay())
            GTEST_SKIP() << "no X server (scripts/test starts Xvfb)";
        velto.setEnvironment(QStringLiteral("VELTO_AUDIO"), QStringLiteral("null"));
    }
    // Waits until --status of the running Velto says what `done` wants.
    bool statusUntil(const std::function<bool(const QStringList &)> &done)
    {
        return waitUntil([&] {
            const Started r = runVelto(velto.environment(), {QStringLiteral("--status")});
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
    const Started alone = runVelto(env, {QStringLiteral("--next")});
    EXPECT_EQ(alone.exitCode, 1);
    EXPECT_EQ(alone.err, QStringLiteral("velto: Velto is not running\n"));

    ASSERT_TRUE(velto.start({QStringLiteral("--play"), one}));
    ASSERT_FALSE(velto.waitForWindow().isEmpty());
    EXPECT_TRUE(statusUntil([](const QStringList &s) { return s.value(0) == "Playing"; }));

    // --play from another folder: the name is relative to where it was typed.
    QProcess p;
    p.setProcessEnvironment(env);
    p.setWorkingDirectory(QFileInfo(two).absolutePath());
    p.start(QStringLiteral(VELTO_BINARY), {QStringLiteral("--play"), QStringLiteral("two.wav")});
    ASSERT_TRUE(p.waitForFinished(20000));
    EXPECT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
    EXPECT_TRUE(statusUntil(
        [](const QStringList &s) { return s.value(0) == "Playing" && s.value(1) == "two.wav"; }));

    EXPECT_EQ(runVelto(env, {QStringLiteral("--play-pause")}).exitCode, 0);
    EXPECT_TRUE(statusUntil([](const QStringList &s) { return s.value(0) == "Paused"; }));
    EXPECT_EQ(runVelto(env, {QStringLiteral("--prev")}).exitCode, 0);
    EXPECT_TRUE(statusUntil(
        [](const QStringList &s) { return s.value(0) == "Playing" && s.value(1) == "one.wav"; }));
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
    EXPECT_EQ(gone.exitCode(), 0);
    EXPECT_FALSE(running.waitForWindow().isEmpty());
    EXPECT_FALSE(running.finished());
}

TEST_F(Instance, StartAfterAKilledOneTakesItsPlace)
{
    ASSERT_TRUE(velto.start());
    ASSERT_FALSE(velto.waitForWindow().isEmpty());
    velto.signal(SIGKILL);
    EXPECT_FALSE(velto.waitForExit()) << "killed, not ended";
    // Its socket is still there, with nobody behind it.
    ASSERT_TRUE(velto.start());
    ASSERT_FALSE(velto.waitForWindow().isEmpty());
    const Started status = runVelto(velto.environment(), {QStringLiteral("--status")});
    EXPECT_EQ(status.exitCode, 0) << status.err.toStdString();
    EXPECT_TRUE(status.out.startsWith(QStringLiteral("Stopped\n"))) << status.out.toStdString();
}

} // namespace
