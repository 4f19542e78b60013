#include "platform/readfile.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <unistd.h>

namespace {

struct Case
{
    QString name;
    FileFault fault;
    QByteArray bytes; // what a read that fits gives
};

// Names a reader may be handed, around a limit of 10 bytes. Pipes, devices
// and folders are FileReaders' test, which hands them to every reader.
QList<Case> makeCases(const QString &at)
{
    auto write = [&](const char *name, const QByteArray &bytes) {
        QFile out(at + name);
        EXPECT_TRUE(out.open(QIODevice::WriteOnly) && out.write(bytes) == bytes.size()) << name;
    };
    write("fits", "0123456789");
    write("over", "0123456789A");
    write("empty", "");
    QFile::link(at + "fits", at + "alias");
    QList<Case> cases = {
        {"fits", FileFault::None, "0123456789"}, {"alias", FileFault::None, "0123456789"},
        {"empty", FileFault::None, ""},          {"over", FileFault::TooBig, {}},
        {"nothing", FileFault::Missing, {}},
    };
    // Permissions do not hold root back.
    if (::geteuid() != 0) {
        write("locked", "x");
        QFile::setPermissions(at + "locked", QFileDevice::Permissions());
        cases.push_back({"locked", FileFault::Unreadable, {}});
    }
    return cases;
}

} // namespace

TEST(ReadRegularFile, ReadsOnlyRegularFilesUpToTheLimit)
{
    QTemporaryDir dir;
    const QString at = dir.path() + '/';
    for (const Case &c : makeCases(at)) {
        const FileBytes read = readRegularFile(at + c.name, 10);
        EXPECT_EQ(read.fault, c.fault) << c.name.toStdString() << ": " << faultText(read.fault);
        EXPECT_EQ(read.bytes, c.bytes) << c.name.toStdString();
    }
}

TEST(ReadRegularFile, HoldsAFileWhoseSizeReadsZeroToTheLimit)
{
    // /proc files are regular and say they are empty, yet hold bytes.
    EXPECT_EQ(readRegularFile(QStringLiteral("/proc/self/status"), 16).fault, FileFault::TooBig);
    const FileBytes whole = readRegularFile(QStringLiteral("/proc/self/status"), 1 << 20);
    EXPECT_EQ(whole.fault, FileFault::None);
    EXPECT_TRUE(whole.bytes.startsWith("Name:")) << whole.bytes.left(40).toStdString();
}

TEST(OpenRegularFile, OpensForSeekingUnderTheSameRulesAndNeverCreates)
{
    QTemporaryDir dir;
    const QString at = dir.path() + '/';
    for (const Case &c : makeCases(at)) {
        for (const QIODevice::OpenMode mode : {QIODevice::ReadOnly, QIODevice::ReadWrite}) {
            const std::string what =
                c.name.toStdString() + (mode == QIODevice::ReadOnly ? " to read" : " to write");
            QFile file;
            const FileFault fault = openRegularFile(file, at + c.name, mode, 10);
            EXPECT_EQ(fault, c.fault) << what << ": " << faultText(fault);
            EXPECT_EQ(file.isOpen(), c.fault == FileFault::None) << what;
            if (!file.isOpen())
                continue;
            EXPECT_EQ(file.isWritable(), mode == QIODevice::ReadWrite) << what;
            EXPECT_EQ(file.size(), c.bytes.size()) << what;
            EXPECT_TRUE(file.seek(file.size() / 2)) << what;
            EXPECT_EQ(file.readAll(), c.bytes.mid(c.bytes.size() / 2)) << what;
        }
    }
    EXPECT_FALSE(QFile::exists(at + "nothing")) << "opening to write created the file";

    QFile any;
    EXPECT_EQ(openRegularFile(any, at + "over", QIODevice::ReadOnly), FileFault::None)
        << "without a limit any size opens";
    EXPECT_EQ(any.readAll(), "0123456789A");
}
