#pragma once

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QtEndian>

// Bytes the player and window tests make their files from.

inline QByteArray readAll(const QString &path)
{
    QFile in(path);
    return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
}

// Audio-like bytes behind an MPEG frame header (128 kbit/s, 44 kHz, joint
// stereo), with no "tag" in any letter case.
inline QByteArray audio(int size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (int i = 0; i < size; ++i)
        bytes[i] = char(0x80 + (i * 7) % 0x70);
    return bytes.replace(0, 4, "\xFF\xFB\x90\x44");
}

// A picture of one colour, small unless asked otherwise.
inline QByteArray picture(QRgb colour, const char *format = "PNG", QSize size = {6, 4})
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

inline QByteArray be32(quint32 v)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(v, bytes.data());
    return bytes;
}
