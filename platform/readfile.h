#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>

class QFile;

// Why a file given by name could not be had.
enum class FileFault {
    None,
    Missing,    // no such file, or a link to nothing
    NotRegular, // a folder, pipe, device or socket, or a link to one
    TooBig,     // more bytes than the reader takes
    Unreadable, // no permission, or an error while reading
};

// For warnings: "missing", "not a regular file", ...
const char *faultText(FileFault fault);

struct FileBytes
{
    QByteArray bytes; // empty unless fault is None
    FileFault fault = FileFault::None;
};

// The bytes of path when it is a regular file (a link to one counts) of at
// most limit bytes. A pipe or device is never opened, so nothing waits for a
// writer or reads an endless stream; and no more than limit + 1 bytes are
// read, so a file that grows while read, or whose size reads 0 (/proc), is
// held to the limit too.
FileBytes readRegularFile(const QString &path, qint64 limit);

// Opens file on path under the same rules, for readers that seek in it. The
// mode is ReadOnly or ReadWrite (with Unbuffered if wanted); nothing is ever
// created or truncated. maxSize below 0 takes a file of any size.
FileFault openRegularFile(QFile &file, const QString &path, QIODevice::OpenMode mode,
                          qint64 maxSize = -1);

// Qt decodes no picture of more than 128 MB (QImageReader::allocationLimit);
// a picture file larger than that is not one it would show.
constexpr qint64 kMaxPictureFileBytes = 128 * 1024 * 1024;
