#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringDecoder>

// Text a stream sends about itself (ICY titles and names, tags): UTF-8 when
// it is valid, else Latin-1, as older servers send it. Control characters
// become blanks and the text is cut at kMaxStreamText characters, so a
// server cannot fill the display with junk. Header-only: the media engine
// module uses it too.
constexpr qsizetype kMaxStreamText = 256;

inline QString streamText(QByteArrayView bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(bytes);
    if (utf8.hasError())
        text = QString::fromLatin1(bytes.data(), bytes.size());
    for (QChar &c : text) {
        const char16_t u = c.unicode();
        if (u < 0x20 || (u >= 0x7f && u < 0xa0))
            c = QLatin1Char(' ');
    }
    text = text.simplified();
    if (text.size() > kMaxStreamText) {
        qsizetype cut = kMaxStreamText;
        if (text.at(cut - 1).isHighSurrogate())
            --cut;
        text.truncate(cut);
    }
    return text;
}

inline bool isNetworkAddress(const QString &name)
{
    return name.startsWith(QLatin1String("http://"), Qt::CaseInsensitive) ||
           name.startsWith(QLatin1String("https://"), Qt::CaseInsensitive);
}
