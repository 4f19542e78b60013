#include "skinreader.h"

#include "skintokenizer.h"

#include "platform/findfile.h"
#include "platform/readfile.h"
#include "platform/text.h"

#include <QByteArrayView>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <limits>

namespace {

bool fitsInt32(qint64 v)
{
    return v >= std::numeric_limits<qint32>::min() && v <= std::numeric_limits<qint32>::max();
}

// Reads the fields of one record. After the first field that cannot be read
// nothing more is taken: the fields that follow are read as codes again.
class RecordFields
{
public:
    explicit RecordFields(SkinTokenizer &fields) : m_fields(fields) {}

    int int16() { return take(m_ok ? m_fields.int16() : std::nullopt); }
    qint32 int32() { return take(m_ok ? m_fields.int32() : std::nullopt); }
    QString text()
    {
        if (!m_ok)
            return {};
        return take(m_fields.next());
    }
    void rect(QRect &r)
    {
        const int x = int16(), y = int16(), w = int16(), h = int16();
        r = QRect(x, y, w, h);
    }
    // An overflowing sum fails the record once all its fields are read.
    SkinColour colour()
    {
        const qint64 red = int16(), green = int16(), blue = int16();
        const qint64 sum = red + 256 * green + 65536 * blue;
        if (!fitsInt32(sum)) {
            m_overflow = true;
            return 0;
        }
        return SkinColour(sum);
    }
    bool readOk() const { return m_ok; }
    bool ok() const { return m_ok && !m_overflow; }

private:
    template<typename T> T take(std::optional<T> field)
    {
        m_ok = m_ok && field.has_value();
        return field.value_or(T());
    }

    SkinTokenizer &m_fields;
    bool m_ok = true;
    bool m_overflow = false;
};

QString toolTipFrom(const QString &tip)
{
    return tip.startsWith(QLatin1Char('~')) ? QString() : tip;
}

SkinFont fontFrom(int size, const QString &text)
{
    SkinFont font;
    font.size = size < 0 ? -size : size;
    font.name = text;
    const qsizetype colon = text.indexOf(QLatin1Char(':'));
    if (colon >= 0) {
        const QString style = text.sliced(colon + 1).toUpper();
        font.name = text.first(colon).trimmed();
        font.bold = style.contains(QLatin1Char('B'));
        font.italic = style.contains(QLatin1Char('I'));
        font.underline = style.contains(QLatin1Char('U'));
    }
    if (font.name.isEmpty())
        font.name = QStringLiteral("Arial");
    return font;
}

QStringList typeWords(const QString &typeText)
{
    QStringList words;
    QString word;
    for (QChar c : typeText) {
        if (c.isLetterOrNumber() || c == QLatin1Char('_')) {
            word += c;
        } else if (!word.isEmpty()) {
            words << word;
            word.clear();
        }
    }
    if (!word.isEmpty())
        words << word;
    return words;
}

SkinPictureStep pictureStep(SkinPictureStep::Kind kind)
{
    SkinPictureStep step;
    step.kind = kind;
    return step;
}

bool pictureLoads(const QString &path)
{
    QFile file;
    if (openRegularFile(file, path, QIODevice::ReadOnly, kMaxPictureFileBytes) != FileFault::None)
        return false;
    QImageReader reader(&file);
    reader.setDecideFormatFromContent(true);
    return reader.canRead();
}

class SkinParser
{
public:
    SkinParser(const QByteArray &bytes, const QString &folder)
        : m_fields(decodeText(bytes)), m_folder(folder)
    {
    }

    // The header line: signature (with its type list) and display name.
    bool readHeader()
    {
        const QString first = m_fields.next().value_or(QString());
        const qsizetype slash = first.indexOf(QLatin1Char('/'));
        d.signature = slash >= 0 ? first.first(slash) : first;
        if (slash >= 0)
            d.typeText = first.sliced(slash + 1);
        if (m_fields.lastEnd() == SkinTokenizer::FieldEnd::Comma) {
            d.displayName = m_fields.fieldHere();
            if (m_fields.lastEnd() == SkinTokenizer::FieldEnd::Comma)
                m_fields.restOfLine();
        }
        if (d.signature == QLatin1String("Ne-Orb Skin")) {
            d.typeText = QStringLiteral("PLAYER");
        } else if (d.signature != QLatin1String("Velto Skin")) {
            d.messages = QStringList{QStringLiteral("Invalid Skin!")};
            return false;
        }
        d.types = typeWords(d.typeText);
        d.accepted = true;
        return true;
    }

    SkinDescription read()
    {
        if (!readHeader())
            return std::move(d);
        readBitmaps();
        readBackground();
        readElements();
        if (d.errorFlag)
            d.messages << QStringLiteral("Error in skin file!") + QLatin1Char('\r') +
                              QStringLiteral("The skin file contains references to the "
                                             "following elements that do not exist!:") +
                              QLatin1Char('\r') + d.errorList;
        return std::move(d);
    }

    SkinDescription header()
    {
        readHeader();
        return std::move(d);
    }

private:
    void fail(const QString &shown)
    {
        d.errorList += QLatin1Char(' ') + shown;
        d.errorFlag = true;
    }

    // A number of the sections before the elements; a bad one reads as 0.
    int fixedNumber(bool &bad)
    {
        const std::optional<qint16> v = m_fields.int16();
        bad = bad || !v;
        return v.value_or(0);
    }

    // One pair of integers, then (role, file name) pairs up to a "*" role.
    void readBitmaps()
    {
        bool bad = false;
        auto number = [&] { return fixedNumber(bad); };
        d.bitmapFormat = number();
        d.bitmapReserved = number();
        bool mainGiven = false, resourceGiven = false;
        for (;;) {
            const std::optional<QString> role = m_fields.next();
            const std::optional<QString> name = m_fields.next();
            if (!role || !name) {
                bad = true;
                break;
            }
            if (*role == QLatin1String("*"))
                break;
            if (role->compare(QLatin1String("Main"), Qt::CaseInsensitive) == 0) {
                d.mainBitmapName = *name;
                mainGiven = true;
            } else if (role->compare(QLatin1String("Resource"), Qt::CaseInsensitive) == 0) {
                d.resourceBitmapName = *name;
                resourceGiven = true;
            }
        }
        if (bad)
            fail(QStringLiteral("Bitmaps"));
        if (mainGiven)
            d.mainBitmapPath = findFileNoCase(m_folder, d.mainBitmapName);
        if (d.mainBitmapPath.isEmpty())
            d.messages << QStringLiteral("Main bitmap not found: ") + d.mainBitmapName;
        if (resourceGiven) {
            d.resourceBitmapPath = findFileNoCase(m_folder, d.resourceBitmapName);
            if (d.resourceBitmapPath.isEmpty())
                d.messages << QStringLiteral("Resource bitmap not found: ") + d.resourceBitmapName;
        }
    }

    // Hover style, a reserved integer, the colour, three unused integers. A bad
    // field counts as 0 and the rest is still read in place.
    void readBackground()
    {
        bool bad = false;
        auto number = [&] { return fixedNumber(bad); };
        d.hoverStyle = number();
        d.backgroundReserved = number();
        const qint64 red = number(), green = number(), blue = number();
        const qint64 sum = red + 256 * green + 65536 * blue;
        if (fitsInt32(sum))
            d.backgroundColour = SkinColour(sum);
        else
            bad = true;
        for (int &unused : d.backgroundUnused)
            unused = number();
        if (bad)
            fail(QStringLiteral("Background"));
    }

    void readElements()
    {
        while (!m_fields.atEnd()) {
            QString rest;
            const QString code = readCode(rest);
            const QChar kind = code.isEmpty() ? QChar() : code.front();
            // A skip only ends the file at a code that is exactly "E", so a
            // skipped "Eject" stays harmless.
            if (m_skipping) {
                if (code == QLatin1String("E"))
                    break;
                if (kind == QLatin1Char(':') && code.sliced(1) == m_skipLabel)
                    m_skipping = false;
                continue;
            }
            if (kind == QLatin1Char('E'))
                break;
            readRecord(kind, code,
                       SkinTokenizer::codeNumber(QStringView(code).sliced(code.isEmpty() ? 0 : 1)),
                       rest);
        }
    }

    // The code of a record. ";" and "/" records take the rest of their line
    // as it stands, quotes and commas included.
    QString readCode(QString &rest)
    {
        const QChar c = m_fields.peek();
        if (c == QLatin1Char(';') || c == QLatin1Char('/')) {
            m_fields.skipChar();
            rest = m_fields.restOfLine();
            return QString(c);
        }
        QString code = m_fields.fieldHere();
        if ((code.startsWith(QLatin1Char(';')) || code.startsWith(QLatin1Char('/'))) &&
            m_fields.lastEnd() == SkinTokenizer::FieldEnd::Comma)
            rest = m_fields.restOfLine();
        return code;
    }

    void readRecord(QChar kind, const QString &code, qint64 n, const QString &rest)
    {
        switch (kind.unicode()) {
        case 'A':
            return readAnim(code, n);
        case 'B':
        case 'K':
            return readButton(kind == QLatin1Char('K'), code, n);
        case 'C':
            return readArea(code, n);
        case 'D':
            return readDigits(code, n);
        case 'I':
            return readLight(code, n);
        case 'L':
        case 'T':
            return readLabel(kind == QLatin1Char('T'), code, n);
        case 'M':
            return readMulti(code, n);
        case 'N':
            if (!fitsInt32(n))
                return fail(code);
            d.outline.declaredPoints = qint32(n);
            d.outline.multiPolygon = false;
            d.outline.polygonPointCounts.clear();
            return;
        case 'O':
            return readTransparent(code);
        case 'P':
            return readPoint(code, n);
        case 'R':
            return readLoad(code, n);
        case 'S':
            return readSlider(code, n);
        case 'U':
            d.pictureSteps << pictureStep(SkinPictureStep::Commit);
            return;
        case 'W':
            return readSize(code, n);
        case 'X':
            return readList(code, n);
        case 'Z':
            return readCopy(code, n);
        case '/':
            d.comment += QLatin1Char('\r') + rest;
            return;
        case '?':
            return readCondition(code, n);
        default:
            return; // ";" comments, ":" labels outside a skip, unknown kinds
        }
    }

    // Out-of-range numbers are listed once the whole record has been read,
    // so the next record starts where the skin author expects it.
    bool check(const RecordFields &f, const QString &code, qint64 n, qint64 low, qint64 high)
    {
        if (!f.ok() || n < low || n > high) {
            fail(code);
            return false;
        }
        return true;
    }

    void readAnim(const QString &code, qint64 n)
    {
        RecordFields f(m_fields);
        SkinAnim a;
        a.number = int(n);
        const int x = f.int16(), y = f.int16();
        a.face.rx() = f.int16();
        a.face.ry() = f.int16();
        const int w = f.int16(), h = f.int16();
        a.rect = QRect(x, y, w, h);
        a.frames = f.int16();
        a.msPerFrame = f.int16();
        a.direction = f.int16();
        a.toolTip = toolTipFrom(f.text());
        if (check(f, code, n, 0, 4) && !a.rect.isEmpty())
            d.anims << a;
    }

    void readButton(bool isKey, const QString &code, qint64 n)
    {
        RecordFields f(m_fields);
        SkinButton b;
        f.rect(b.rect);
        b.face.rx() = f.int16();
        b.face.ry() = f.int16();
        b.name = f.text();
        const bool nameRead = f.readOk();
        b.toolTip = toolTipFrom(f.text());
        const QString keyText = isKey ? f.text() : QString();
        if (!f.ok()) {
            // The name, once read, stands for the record in the error list.
            return fail(nameRead ? b.name : code);
        }
        if (isKey) {
            if (n < 0 || n > 20) {
                d.errorFlag = true;
                return;
            }
            b.keyNumber = int(n);
            b.command = qint16(1000 + n);
        } else {
            if (n == 0)
                return;
            if (n < 1 || n > std::numeric_limits<qint16>::max())
                return fail(code);
            b.command = qint16(n);
        }
        if (b.rect.isEmpty())
            return;
        if (m_buttonCount >= 120) {
            d.messages << QStringLiteral("This skin contains too many buttons!");
            d.errorFlag = true;
            return;
        }
        b.index = ++m_buttonCount;
        b.faceText = QString::number(b.face.x()) + QLatin1Char(',') + QString::number(b.face.y());
        if (isKey)
            d.keyTable[b.keyNumber] = keyText;
        d.buttons << b;
    }

    void readArea(const QString &code, qint64 n)
    {
        RecordFields f(m_fields);
        SkinArea a;
        a.number = int(n);
        f.rect(a.rect);
        a.toolTip = toolTipFrom(f.text());
        if (check(f, code, n, 1, 3) && !a.rect.isEmpty())
            d.areas << a;
    }

    void readDigits(const QString &code, qint64 n)
    {
        RecordFields f(m_fields);
        SkinDigitGroup g;
        g.number = int(n);
        g.pos.rx() = f.int16();
        g.pos.ry() = f.int16();
        g.face.rx() = f.int16();
        g.face.ry() = f.int16();
        g.glyphWidth = f.int16();
        g.glyphHeight = f.int16();
        g.narrowWidth = f.int16();
        g.sheetType = f.int16();
        g.gap = f.int16();
        g.mode = f.int16();
        g.toolTip = toolTipFrom(f.text());
        if (check(f, code, n, 0, 13) && g.glyphWidth >= 1 && g.glyphHeight >= 1)
            d.digitGroups << g;
    }

    void readLight(const QString &code, qint64 n)
    {
        RecordFields f(m_fields);
        SkinLight l;
        l.number = int(n);
        f.rect(l.rect);
        l.colour = f.colour();
        l.shape = f.int16();
        l.toolTip = toolTipFrom(f.text());
        if (check(f, code, n, 0, 22) && !l.rect.isEmpty())
            d.lights << l;
    }

    void readLabel(bool isTextField, const QString &code, qint64 n)
    {
        RecordFields f(m_fields);
        SkinLabel l;
        l.number = int(n);
        f.rect(l.rect);
        l.foreColour = f.colour();
        const int size = f.int16();
        l.font = fontFrom(size, f.text());
        l.toolTip = toolTipFrom(f.text());
        if (!check(f, code, n, 0, isTextField ? 3 : 80) || l.rect.isEmpty())
            return;
        (isTextField ? d.textFields : d.labels) << l;
    }

    void readSlider(const QString &code, qint64 n)
    {
        RecordFields f(m_fields);
        SkinSlider s;
        s.number = int(n);
        f.rect(s.rect);
        s.face.rx() = f.int16();
        s.face.ry() = f.int16();
        s.orientation = f.int16();
        s.knobLength = f.int16();
        s.toolTip = toolTipFrom(f.text());
        if (check(f, code, n, 0, 6) && !s.rect.isEmpty())
            d.sliders << s;
    }

    void readList(const QString &code, qint64 n)
    {
        RecordFields f(m_fields);
        SkinList l;
        l.number = int(n);
        f.rect(l.rect);
        l.foreColour = f.colour();
        l.backColour = f.colour();
        l.fontSize = f.int16();
        l.fontName = f.text();
        l.toolTip = toolTipFrom(f.text());
        // List 3 has no area behind it; its record is read and builds nothing.
        if (check(f, code, n, 1, 8) && n != 3 && !l.rect.isEmpty())
            d.lists << l;
    }

    void readMulti(const QString &code, qint64 n)
    {
        RecordFields f(m_fields);
        const int k = f.int16();
        QList<qint32> counts;
        for (int i = 0; i < k && f.readOk(); ++i)
            counts << f.int32();
        if (!f.ok() || !fitsInt32(n))
            return fail(code);
        d.outline.declaredPoints = qint32(n);
        d.outline.multiPolygon = true;
        d.outline.polygonPointCounts = counts;
    }

    void readPoint(const QString &code, qint64 x)
    {
        // Points beyond the declared count are ignored without their y field.
        if (d.outline.points.size() >= d.outline.declaredPoints)
            return;
        RecordFields f(m_fields);
        const int y = f.int16();
        if (!f.ok() || !fitsInt32(x))
            return fail(code);
        d.outline.points << QPoint(int(x), y);
    }

    void readTransparent(const QString &code)
    {
        RecordFields f(m_fields);
        SkinPictureStep step = pictureStep(SkinPictureStep::TransparentColour);
        step.colour = f.colour();
        if (!f.ok())
            return fail(code);
        d.pictureSteps << step;
    }

    void readLoad(const QString &code, qint64 n)
    {
        RecordFields f(m_fields);
        SkinPictureStep step = pictureStep(SkinPictureStep::LoadMain);
        step.slot = int(n);
        step.fileName = f.text();
        if (!check(f, code, n, 0, 2))
            return;
        step.path = findFileNoCase(m_folder, step.fileName);
        step.loaded = pictureLoads(step.path);
        m_loadFlag = step.loaded ? 1 : 0;
        d.pictureSteps << step;
    }

    void readSize(const QString &code, qint64 n)
    {
        RecordFields f(m_fields);
        const int w = f.int16(), h = f.int16();
        if (check(f, code, n, 0, 1))
            d.pictureSize = QSize(w, h);
    }

    void readCopy(const QString &code, qint64 n)
    {
        RecordFields f(m_fields);
        SkinPictureStep step = pictureStep(SkinPictureStep::Copy);
        f.rect(step.target);
        step.source.rx() = f.int16();
        step.source.ry() = f.int16();
        if (check(f, code, n, 0, 1))
            d.pictureSteps << step;
    }

    void readCondition(const QString &code, qint64 n)
    {
        RecordFields f(m_fields);
        const QString label = f.text();
        if (!f.ok())
            return fail(code);
        if (n == m_loadFlag) {
            m_skipping = true;
            m_skipLabel = label;
        }
    }

    SkinTokenizer m_fields;
    QString m_folder;
    SkinDescription d;
    int m_buttonCount = 0;
    int m_loadFlag = 0;
    bool m_skipping = false;
    QString m_skipLabel;
};

} // namespace

SkinDescription readSkin(QIODevice &in, const QString &skinFolder)
{
    return SkinParser(in.readAll(), skinFolder).read();
}

SkinDescription readSkinFile(const QString &path)
{
    QString found = path;
    if (!QFileInfo(found).isFile()) {
        const QFileInfo info(path);
        found = findFileNoCase(info.path(), info.fileName());
    }
    const FileBytes in = readRegularFile(found, kMaxSkinFileBytes);
    if (in.fault != FileFault::None) {
        SkinDescription d;
        d.messages << (in.fault == FileFault::TooBig ? QStringLiteral("Invalid Skin!")
                                                     : QStringLiteral("Skin not found!"));
        return d;
    }
    return SkinParser(in.bytes, QFileInfo(found).absolutePath()).read();
}

SkinDescription readSkinHeader(QIODevice &in)
{
    // Blank lines (and a byte order mark) may come before the header line.
    QByteArray bytes;
    while (!in.atEnd()) {
        const QByteArray line = in.readLine();
        if (line.isEmpty())
            break;
        bytes += line;
        QByteArrayView text(bytes);
        if (text.startsWith("\xEF\xBB\xBF"))
            text = text.sliced(3);
        if (!text.trimmed().isEmpty())
            break;
    }
    return SkinParser(bytes, QString()).header();
}
