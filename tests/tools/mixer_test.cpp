#include "support/fakes.h"
#include "tools/mixer.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

// Two folders for a PATH, filled with stand-in programs.
struct SearchPath
{
    QTemporaryDir first, second;

    QString path() const { return first.path() + QStringLiteral("::") + second.path(); }

    // A shell script that records its arguments in `marker`; a name starting
    // with '!' is a file that is not executable.
    static void add(const QTemporaryDir &folder, QString name, const QString &marker = QString())
    {
        const bool executable = !name.startsWith('!');
        QFile file(folder.filePath(name.remove('!')));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n");
        if (!marker.isEmpty())
            file.write(QStringLiteral("echo \"$@\" > '%1'\n").arg(marker).toUtf8());
        file.close();
        if (executable)
            file.setPermissions(file.permissions() | QFileDevice::ExeOwner);
    }
};

TEST(Mixer, PicksTheFirstMixerInItsOrderOfPreference)
{
    const struct
    {
        QStringList inFirst, inSecond;
        QString program; // the file name found, empty for none
        QStringList arguments = {};
    } cases[] = {
        {{"alsamixer", "xterm"},
         {"gnome-control-center", "pavucontrol-qt", "pavucontrol"},
         "pavucontrol"},
        {{"gnome-control-center"}, {"pavucontrol-qt"}, "pavucontrol-qt"},
        {{"!pavucontrol"}, {"pavucontrol-qt"}, "pavucontrol-qt"}, // cannot run: passed over
        {{"xterm"}, {"alsamixer", "gnome-control-center"}, "gnome-control-center", {"sound"}},
        {{"xterm", "x-terminal-emulator"},
         {"alsamixer"},
         "x-terminal-emulator",
         {"-e", "ALSAMIXER"}},
        {{"xterm"}, {"alsamixer"}, "xterm", {"-e", "ALSAMIXER"}},
        {{}, {"alsamixer"}, {}}, // alsamixer without a terminal is no mixer
        {{}, {}, {}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(&c - cases);
        SearchPath p;
        for (const QString &name : c.inFirst)
            SearchPath::add(p.first, name);
        for (const QString &name : c.inSecond)
            SearchPath::add(p.second, name);
        const auto found = Mixer::findMixer(p.path());
        ASSERT_EQ(found.has_value(), !c.program.isEmpty());
        if (!found)
            continue;
        EXPECT_EQ(QFileInfo(found->program).fileName(), c.program);
        QStringList expected = c.arguments;
        expected.replaceInStrings("ALSAMIXER", p.second.filePath("alsamixer"));
        EXPECT_EQ(found->arguments, expected);
    }
}

TEST(Mixer, AnEmptyPathOrPathEntryNeverMeansTheCurrentFolder)
{
    SearchPath p;
    SearchPath::add(p.second, QStringLiteral("pavucontrol"));
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(p.second.path()));
    EXPECT_FALSE(Mixer::findMixer(QString()).has_value());
    EXPECT_FALSE(Mixer::findMixer(QStringLiteral("::")).has_value());
    QDir::setCurrent(before);
}

TEST(Mixer, SaysWhatToInstallOrStartsTheMixerAsAProgramOfItsOwn)
{
    SearchPath p;
    FakeDialogs dialogs;
    Mixer(dialogs, p.path()).ShowMixer();
    EXPECT_EQ(dialogs.messages,
              QStringList{QStringLiteral("No volume mixer was found.\r"
                                         "Install pavucontrol (or pavucontrol-qt, GNOME's sound "
                                         "settings, or alsamixer and a terminal) to set the "
                                         "volume of your sound devices.")});

    dialogs.messages.clear();
    QTemporaryDir scratch;
    const QString marker = scratch.filePath(QStringLiteral("started"));
    SearchPath::add(p.first, QStringLiteral("gnome-control-center"), marker);
    Mixer(dialogs, p.path()).ShowMixer(); // gone before the mixer has even started
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFileInfo(marker).size() > 0; }, 30000));
    QFile started(marker);
    ASSERT_TRUE(started.open(QIODevice::ReadOnly));
    EXPECT_EQ(started.readAll(), QByteArray("sound\n"));
    EXPECT_TRUE(dialogs.messages.isEmpty());
}

} // namespace
