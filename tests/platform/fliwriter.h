#pragma once

#include <QByteArray>

// Writes small FLI and FLC animations for the tests: a palette and a black
// picture in the first frame, unchanged frames after it.
inline QByteArray makeFlic(bool flc, int frames, quint32 speed, int width = 64, int height = 48)
{
    auto le = [](QByteArray &out, quint32 v, int bytes) {
        for (int i = 0; i < bytes; ++i)
            out.append(char(v >> (8 * i)));
    };
    QByteArray body;
    for (int i = 0; i < frames; ++i) {
        QByteArray chunks;
        int count = 0;
        if (i == 0) {
            QByteArray palette("\1\0\0\0", 4); // one packet: skip 0, all 256 colours
            for (int c = 0; c < 256 * 3; ++c)
                palette.append(char((c / 3 * 4) % 64));
            le(chunks, quint32(6 + palette.size()), 4);
            le(chunks, flc ? 4 : 11, 2); // 256-level or 64-level colours
            chunks.append(palette);
            le(chunks, 6, 4);
            le(chunks, 13, 2); // black picture
            count = 2;
        }
        le(body, quint32(16 + chunks.size()), 4);
        le(body, 0xf1fa, 2);
        le(body, quint32(count), 2);
        body.append(QByteArray(8, '\0'));
        body.append(chunks);
    }
    QByteArray header;
    le(header, quint32(128 + body.size()), 4);
    le(header, flc ? 0xaf12 : 0xaf11, 2);
    le(header, quint32(frames), 2);
    le(header, quint32(width), 2);
    le(header, quint32(height), 2);
    le(header, 8, 2); // depth
    le(header, 3, 2); // flags
    le(header, speed, flc ? 4 : 2);
    header.append(QByteArray(128 - header.size(), '\0'));
    return header + body;
}
