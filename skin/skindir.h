#pragma once

#include <QByteArrayView>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

// The rules of the skin browser: which skins of a folder it lists under a
// type filter, and how a list entry names its file. Pure but for
// ReadSkinDir, which reads only the first line of each skin.

// The header line as the skin browser reads it.
struct SkinDirHeader
{
    QString signature; // before the first "/"
    QString type;      // after it; "PLAYER" for the older format
    bool predecessor = false;
    QString displayName;
};

SkinDirHeader parseSkinDirHeader(QByteArrayView firstLine);

// The filter word: the type list's entry upper-cased ("ALL", "PLAYER"...).
// A favourite is listed under "FAVORITE" whatever its type words.
bool skinListed(const SkinDirHeader &header, const QString &filter, bool favourite = false);

// "NAME > Display name": the file name upper-cased without ".skin".
QString skinEntry(const QString &fileName, const QString &displayName);
// The file an entry names: the text before its first " > ", plus ".skin".
QString skinFileOfEntry(const QString &entry);

struct SkinDirEntry
{
    QString text;
    QString file; // as found in the folder
};

// The type list offered, in its order; the filter is an entry upper-cased.
const QStringList &skinTypeFilters();

// The skins of folder that the filter lets through, in name order.
// favourites holds the cleaned absolute paths of the favourite skins.
QList<SkinDirEntry> ReadSkinDir(const QString &folder, const QString &filter,
                                const QSet<QString> &favourites = {});

// The same path form ReadSkinDir compares favourites in.
QString skinPathKey(const QString &path);
