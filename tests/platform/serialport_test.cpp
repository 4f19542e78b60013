#include "platform/serialport.h"

#include "support/pseudoterminal.h"

#include <gtest/gtest.h>

namespace {

using Stop = SerialLine::StopBits;

SerialLine line(qint32 speed, char parity, int data, Stop stop)
{
    return SerialLine{speed, parity, data, stop};
}

} // namespace

// A bad text names every field that is wrong and leaves the default line, so
// nothing is ever opened with half of what the user meant.
TEST(SerialSettings, ReadsTheFourFieldsFillsWhatIsLeftOutAndNamesWhatIsWrong)
{
    const SerialLine standard = line(9600, 'N', 8, Stop::One);
    const struct
    {
        const char *text;
        SerialLine line;
        const char *device, *error;
    } cases[] = {
        {"9600,N,8,1", standard, "", ""},
        {"", standard, "", ""},
        {"2400,e,7", line(2400, 'E', 7, Stop::One), "", ""},
        {" 1200 , O , 5 , 1.5 ", line(1200, 'O', 5, Stop::OneAndHalf), "", ""},
        {"115200,M,8,2", line(115200, 'M', 8, Stop::Two), "", ""},
        {"/dev/ttyUSB0,4800,N,8,1", line(4800, 'N', 8, Stop::One), "/dev/ttyUSB0", ""},
        {"/dev/pts/7", standard, "/dev/pts/7", ""},
        {"0,N,8,1", standard, "", "speed \"0\" is not a number of bits a second"},
        {"9600,X,9,3", standard, "",
         "parity \"X\" is not N, E, O, M or S; data bits \"9\" is not 5, 6, 7 or 8; "
         "stop bits \"3\" is not 1, 1.5 or 2"},
        {"4800,E,7,1,1", standard, "", "more than four fields"},
    };
    for (const auto &c : cases) {
        const SerialSettings s = parseSerialSettings(QString::fromLatin1(c.text));
        EXPECT_EQ(s.error, QString::fromLatin1(c.error)) << c.text;
        EXPECT_EQ(s.line, c.line) << c.text;
        EXPECT_EQ(s.device, QString::fromLatin1(c.device)) << c.text;
    }
}

TEST(SerialDevicePath, NumbersNameTheBuiltInPortsThenUsbAdapters)
{
    const struct
    {
        int port;
        const char *path;
    } cases[] = {
        {0, ""},
        {1, "/dev/ttyS0"},
        {99, "/dev/ttyS98"},
        {100, "/dev/ttyUSB0"},
        {199, "/dev/ttyUSB99"},
        {200, "/dev/ttyACM0"},
        {299, "/dev/ttyACM99"},
        {300, ""},
    };
    for (const auto &c : cases)
        EXPECT_EQ(serialDevicePath(c.port), QString::fromLatin1(c.path)) << c.port;
}

TEST(QtSerialPort, WritesTheBytesWithTheLineSetUpAsAsked)
{
    PseudoTerminal pty;
    ASSERT_TRUE(pty.isOpen());
    QtSerialPort port;
    // Linux keeps a pseudo-terminal at 8 bits without parity, so only the
    // speed and the stop bits can be seen to change here.
    ASSERT_TRUE(port.open(pty.path(), line(2400, 'N', 8, Stop::Two)))
        << port.errorText().toStdString();
    const termios t = pty.settings();
    EXPECT_EQ(cfgetospeed(&t), speed_t(B2400));
    EXPECT_TRUE(t.c_cflag & CSTOPB);
    EXPECT_FALSE(t.c_cflag & CRTSCTS) << "no flow control";

    const QByteArray bytes("<ID01>\r\n\x00\xff", 10);
    ASSERT_TRUE(port.write(bytes));
    EXPECT_EQ(pty.read(bytes.size()), bytes);
    port.close();
    EXPECT_FALSE(port.write("late")) << "a closed port takes nothing";
}

TEST(QtSerialPort, AMissingDeviceFailsAndLeavesThePortClosed)
{
    QtSerialPort port;
    EXPECT_FALSE(port.open(QStringLiteral("/dev/velto-no-such-port"), SerialLine()));
    EXPECT_FALSE(port.isOpen());
    EXPECT_FALSE(port.errorText().isEmpty());
}
