#include "core/dispatcher.h"

#include "skin/skinpart.h"

#include <QStringList>
#include <gtest/gtest.h>

#include <stdexcept>

namespace {

// A part that notes the numbers it runs; throwOn names one that throws.
class Part : public SkinPart
{
public:
    explicit Part(QStringList modes = {}) : m_modes(std::move(modes)) {}
    QStringList modes() const override { return m_modes; }
    void DoIt(qint16 cmd) override
    {
        ran << cmd;
        if (cmd == throwOn)
            throw std::runtime_error("device gone");
        if (cmd == throwForeignOn)
            throw 42;
    }
    QList<int> ran;
    int throwOn = -1, throwForeignOn = -1;

private:
    QStringList m_modes;
};

// Collects qWarning output while it lives.
struct WarningCatcher
{
    static inline QStringList caught;
    QtMessageHandler previous =
        qInstallMessageHandler([](QtMsgType type, const QMessageLogContext &, const QString &text) {
            if (type == QtWarningMsg)
                caught << text;
        });
    ~WarningCatcher()
    {
        qInstallMessageHandler(previous);
        caught.clear();
    }
};

} // namespace

TEST(Dispatcher, RoutesRangesByTheirExactBoundsAndLeavesTheRestAlone)
{
    Dispatcher d;
    Part low, high;
    d.route(51, 69, low);
    d.route(1011, 1021, high);
    for (int cmd = -32768; cmd <= 32767; ++cmd)
        d.DoIt(qint16(cmd));
    QList<int> lowRange, highRange;
    for (int cmd = 51; cmd < 69; ++cmd)
        lowRange << cmd;
    for (int cmd = 1011; cmd <= 1020; ++cmd)
        highRange << cmd;
    EXPECT_EQ(low.ran, lowRange);
    EXPECT_EQ(high.ran, highRange);
}

TEST(Dispatcher, ThePartOfTheSkinsModeRunsASharedNumber)
{
    Dispatcher d;
    Part player({QStringLiteral("PLAYER"), QStringLiteral("KARAOKE")});
    Part clock({QStringLiteral("CLOCK")});
    d.route(3, 5, player);
    d.route(4, 5, clock);
    const struct
    {
        QStringList skinModes;
        const Part *runs4;
    } cases[] = {
        {{}, &player}, // no mode: the part routed first
        {{"PLAYER"}, &player},
        {{"CLOCK"}, &clock},
        {{"SCREENSAVER,CLOCK"}, &clock}, // a type list names several modes
        {{"KARAOKE", "CLOCK"}, &player}, // both: the part routed first
    };
    for (const auto &c : cases) {
        d.setSkinModes(c.skinModes);
        EXPECT_EQ(d.target(4), c.runs4) << c.skinModes.join(',').toStdString();
        EXPECT_EQ(d.target(3), &player) << "only the player owns 3";
    }
}

TEST(Dispatcher, AFailingCommandIsLoggedAndTheNextOneRuns)
{
    Dispatcher d;
    Part part;
    part.throwOn = 12;
    part.throwForeignOn = 13;
    d.route(10, 14, part);
    for (const auto &[cmd, message] : {std::pair{12, true}, {13, false}}) {
        WarningCatcher warnings;
        d.DoIt(qint16(cmd));
        ASSERT_EQ(warnings.caught.size(), 1);
        EXPECT_TRUE(warnings.caught.first().contains(QStringLiteral("DoIt(%1)").arg(cmd)));
        EXPECT_EQ(warnings.caught.first().contains(QStringLiteral("device gone")), message);
        d.DoIt(10);
        EXPECT_EQ(part.ran.last(), 10);
    }
}

TEST(Dispatcher, KeyTableEntriesAreCheckedAgainstTheTablesSize)
{
    QStringList links;
    for (int i = 0; i < 21; ++i)
        links << QStringLiteral("entry%1").arg(i);
    EXPECT_EQ(Dispatcher::linkEntry(links, 20), QStringLiteral("entry20"));
    EXPECT_THROW(Dispatcher::linkEntry(links, 21), std::out_of_range);
    EXPECT_THROW(Dispatcher::linkEntry({}, 1), std::out_of_range) << "a skin without K records";
}
