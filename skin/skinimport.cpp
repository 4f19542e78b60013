#include "skinimport.h"

#include "skinreader.h"
#include "skintokenizer.h"

#include "platform/readfile.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace SkinImport {

namespace {

const QByteArray kOlder = "Ne-Orb Skin";
constexpr int kMaxCopies = 100;

// Where the first field of the header line starts and ends, quotes included.
bool signatureSpan(const QByteArray &bytes, qsizetype &begin, qsizetype &end)
{
    qsizetype i = bytes.startsWith("\xEF\xBB\xBF") ? 3 : 0;
    // Only what the skin reader skips, so the header it finds is the one converted.
    while (i < bytes.size() && (SkinTokenizer::isBlank(QLatin1Char(bytes[i])) ||
                                SkinTokenizer::isLineEnd(QLatin1Char(bytes[i]))))
        ++i;
    begin = i;
    if (i < bytes.size() && bytes[i] == '"') {
        const qsizetype quote = bytes.indexOf('"', i + 1);
        const qsizetype lineEnd = [&] {
            const qsizetype lf = bytes.indexOf('\n', i), cr = bytes.indexOf('\r', i);
            if (lf < 0)
                return cr < 0 ? bytes.size() : cr;
            return cr < 0 ? lf : std::min(lf, cr);
        }();
        end = quote >= 0 && quote < lineEnd ? quote + 1 : lineEnd;
    } else {
        end = i;
        while (end < bytes.size() && bytes[end] != ',' && bytes[end] != '\n' && bytes[end] != '\r')
            ++end;
    }
    return end > begin;
}

QString copyName(const QFileInfo &original, int n)
{
    return original.dir().filePath(original.completeBaseName() + QStringLiteral("-velto") +
                                   (n > 1 ? QStringLiteral("-%1").arg(n) : QString()) +
                                   QStringLiteral(".skin"));
}

} // namespace

bool isOlderFormat(const QString &skinFile)
{
    QFile file;
    if (openRegularFile(file, skinFile, QIODevice::ReadOnly, kMaxSkinFileBytes) != FileFault::None)
        return false;
    return readSkinHeader(file).signature == QLatin1String(kOlder);
}

QByteArray convert(const QByteArray &olderSkin)
{
    qsizetype begin = 0, end = 0;
    if (!signatureSpan(olderSkin, begin, end))
        return {};
    const QString header = QString::fromLatin1(olderSkin.mid(begin, end - begin));
    QStringView field = SkinTokenizer::trimBlanks(header);
    if (field.startsWith(QLatin1Char('"')))
        field = field.mid(1, field.endsWith(QLatin1Char('"')) && field.size() > 1 ? field.size() - 2
                                                                                  : -1);
    const qsizetype slash = field.indexOf(QLatin1Char('/'));
    if (SkinTokenizer::trimBlanks(slash >= 0 ? field.left(slash) : field) != QLatin1String(kOlder))
        return {};
    QByteArray out = olderSkin;
    out.replace(begin, end - begin, "\"Velto Skin/PLAYER\"");
    return out;
}

Result importSkin(const QString &skinFile)
{
    Result result;
    const FileBytes in = readRegularFile(skinFile, kMaxSkinFileBytes);
    if (in.fault != FileFault::None) {
        result.message = QStringLiteral("Unable to import the skin: it cannot be read.");
        return result;
    }
    const QByteArray converted = convert(in.bytes);
    if (converted.isEmpty()) {
        result.message =
            QStringLiteral("Unable to import the skin: it is not in the older format.");
        return result;
    }
    const QFileInfo original(skinFile);
    for (int n = 1; n <= kMaxCopies; ++n) {
        const QString target = copyName(original, n);
        if (QFileInfo::exists(target) || QFileInfo(target).isSymLink()) {
            const FileBytes there = readRegularFile(target, kMaxSkinFileBytes);
            if (there.fault == FileFault::None && there.bytes == converted) {
                result.file = target;
                return result;
            }
            continue;
        }
        QSaveFile out(target);
        if (!out.open(QIODevice::WriteOnly) || out.write(converted) != converted.size() ||
            !out.commit()) {
            result.message = QStringLiteral("Unable to import the skin! Is the folder read-only?");
            return result;
        }
        result.file = target;
        return result;
    }
    result.message = QStringLiteral("Unable to import the skin: too many imported copies.");
    return result;
}

} // namespace SkinImport
