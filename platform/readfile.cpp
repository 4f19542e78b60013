#include "platform/readfile.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

FileFault faultOf(int error)
{
    return error == ENOENT || error == ENOTDIR || error == ELOOP || error == ENAMETOOLONG
               ? FileFault::Missing
               : FileFault::Unreadable;
}

// A descriptor of path when it is a regular file, or -1 and the fault. The
// type is checked before opening, so no device is ever opened (some act on
// open alone), and again on the open descriptor, in case the name was
// replaced in between. O_NONBLOCK keeps even that race from waiting on a
// pipe; it is cleared again, as it means nothing for a regular file.
int openRegular(const QString &path, int access, qint64 maxSize, FileFault &fault,
                struct stat &info)
{
    const QByteArray name = QFile::encodeName(path);
    if (name.isEmpty() || name.contains('\0')) {
        fault = FileFault::Missing;
        return -1;
    }
    if (::stat(name.constData(), &info) != 0) {
        fault = faultOf(errno);
        return -1;
    }
    if (!S_ISREG(info.st_mode)) {
        fault = FileFault::NotRegular;
        return -1;
    }
    const int fd = ::open(name.constData(), access | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (fd < 0) {
        fault = faultOf(errno);
        return -1;
    }
    const int flags = ::fcntl(fd, F_GETFL);
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode) || flags < 0 ||
        ::fcntl(fd, F_SETFL, flags & ~O_NONBLOCK) != 0) {
        fault = S_ISREG(info.st_mode) ? FileFault::Unreadable : FileFault::NotRegular;
        ::close(fd);
        return -1;
    }
    if (maxSize >= 0 && info.st_size > maxSize) {
        fault = FileFault::TooBig;
        ::close(fd);
        return -1;
    }
    fault = FileFault::None;
    return fd;
}

} // namespace

const char *faultText(FileFault fault)
{
    switch (fault) {
    case FileFault::None:
        break;
    case FileFault::Missing:
        return "missing";
    case FileFault::NotRegular:
        return "not a regular file";
    case FileFault::TooBig:
        return "too big";
    case FileFault::Unreadable:
        return "unreadable";
    }
    return "fine";
}

FileBytes readRegularFile(const QString &path, qint64 limit)
{
    FileBytes result;
    struct stat info;
    limit = std::max<qint64>(limit, 0);
    const int fd = openRegular(path, O_RDONLY, limit, result.fault, info);
    if (fd < 0)
        return result;

    // One byte past the limit tells a file that fits from one that does not.
    const qint64 cap = limit + 1;
    QByteArray bytes(std::min<qint64>(cap, std::max<qint64>(info.st_size + 1, 64 * 1024)),
                     Qt::Uninitialized);
    qint64 got = 0;
    while (got < cap) {
        if (got == bytes.size())
            bytes.resize(std::min<qint64>(cap, got * 2));
        const ssize_t n = ::read(fd, bytes.data() + got, size_t(bytes.size() - got));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0) {
            result.fault = FileFault::Unreadable;
            break;
        }
        if (n == 0)
            break;
        got += n;
    }
    ::close(fd);
    if (result.fault == FileFault::None && got > limit)
        result.fault = FileFault::TooBig;
    if (result.fault == FileFault::None) {
        bytes.truncate(got);
        result.bytes = std::move(bytes);
    }
    return result;
}

FileFault openRegularFile(QFile &file, const QString &path, QIODevice::OpenMode mode,
                          qint64 maxSize)
{
    file.close();
    file.setFileName(path);
    const bool write = mode.testFlag(QIODevice::WriteOnly);
    FileFault fault = FileFault::None;
    struct stat info;
    const int fd = openRegular(path, write ? O_RDWR : O_RDONLY, maxSize, fault, info);
    if (fd < 0)
        return fault;
    const QIODevice::OpenMode wanted =
        (write ? QIODevice::ReadWrite : QIODevice::ReadOnly) | (mode & QIODevice::Unbuffered);
    if (!file.open(fd, wanted, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return FileFault::Unreadable;
    }
    return FileFault::None;
}
