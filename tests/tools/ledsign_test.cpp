#include "tools/ledsign.h"

#include "platform/serialport.h"
#include "support/pseudoterminal.h"

#include <gtest/gtest.h>

namespace {

// The sign on a pseudo-terminal, driven through the real serial port.
class LedSignTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(pty.isOpen());
        ExParm = pty.path() + QStringLiteral(",9600,N,8,1");
    }

    PseudoTerminal pty;
    qint16 ExEnable = 1, ExPort = 0;
    QString ExParm;
    QtSerialPort port;
    LedSign sign{{ExEnable, ExPort, ExParm}, port};
};

QByteArray frame(const QByteArray &text)
{
    return "<ID01><PA><CG>  " + text + "   \r\n";
}

} // namespace

TEST(LedFrame, WrapsTheTextInTheSignsCodesAndBlanks)
{
    const std::pair<QString, QByteArray> cases[] = {
        {QString(), "<ID01><PA><CG>     \r\n"},
        {QStringLiteral("Caf\u00e9 \u20ac \u266b"), "<ID01><PA><CG>  Caf\xe9 \x80 ?   \r\n"},
        {QStringLiteral("a\r\nb"), "<ID01><PA><CG>  a\r\nb   \r\n"},
    };
    for (const auto &[text, bytes] : cases)
        EXPECT_EQ(ledFrame(text), bytes) << text.toStdString();
}

TEST_F(LedSignTest, SwitchedOffItOpensNothingAndSendsNothing)
{
    for (const qint16 off : {0, -1, 2}) {
        ExEnable = off;
        sign.started();
        sign.ExDevOut(QStringLiteral("Velto - Blue Tone"));
        sign.ending(false);
        EXPECT_FALSE(port.isOpen()) << off;
    }
    ExEnable = 1;
    sign.ExDevOut(QStringLiteral("now"));
    EXPECT_EQ(pty.read(frame("now").size()), frame("now")) << "nothing came before";
}

// New settings take effect with the next text. A port that cannot be had
// leaves the sign silent, with no message, and the next text tries again: the
// sign plugged in later starts to show.
TEST_F(LedSignTest, NewSettingsAndAPortThatFailedAreTriedWithTheNextText)
{
    sign.ExDevOut(QStringLiteral("one"));
    EXPECT_EQ(pty.read(frame("one").size()), frame("one"));
    const termios before = pty.settings();
    EXPECT_EQ(cfgetospeed(&before), speed_t(B9600));

    ExParm = QStringLiteral("/dev/velto-no-such-port,9600,N,8,1");
    sign.settingsChanged();
    EXPECT_FALSE(port.isOpen());
    sign.ExDevOut(QStringLiteral("lost"));
    EXPECT_FALSE(port.isOpen());
    ExParm = pty.path() + QStringLiteral(",1200,N,8,2");
    sign.ExDevOut(QStringLiteral("two"));
    EXPECT_EQ(pty.read(frame("two").size()), frame("two"));
    const termios t = pty.settings();
    EXPECT_EQ(cfgetospeed(&t), speed_t(B1200));
    EXPECT_TRUE(t.c_cflag & CSTOPB);
}

TEST_F(LedSignTest, ThePortNumberNamesTheDeviceUnlessTheSettingsDo)
{
    const struct
    {
        qint16 port;
        QString parm;
        QString device;
    } cases[] = {
        {1, QStringLiteral("9600,N,8,1"), QStringLiteral("/dev/ttyS0")},
        {104, QString(), QStringLiteral("/dev/ttyUSB4")},
        {0, QStringLiteral("9600,N,8,1"), QString()},
        {3, QStringLiteral("/dev/pts/9,9600,N,8,1"), QStringLiteral("/dev/pts/9")},
    };
    for (const auto &c : cases) {
        ExPort = c.port;
        ExParm = c.parm;
        EXPECT_EQ(sign.device(), c.device) << c.port;
    }
}
