#pragma once

#include <QByteArray>
#include <QString>

// Skins of the older format ("Ne-Orb Skin") load as they are; importing one
// writes a copy in the current format beside it and never touches the
// original. The copy differs only in its signature, so the file keeps its
// bytes (and their encoding) and names its pictures as before.
namespace SkinImport {

// Whether the skin file's header carries the older signature.
bool isOlderFormat(const QString &skinFile);

// The bytes with the older signature replaced by "Velto Skin/PLAYER"
// (older skins are player skins); empty when the bytes hold no older skin.
QByteArray convert(const QByteArray &olderSkin);

struct Result
{
    QString file;    // the imported skin; empty when nothing was written
    QString message; // what the user must see when the import failed
};

// Writes the converted copy beside the original as "<name>-velto.skin" (or
// "-velto-2" and so on when that name is taken by another file). A copy
// made by an earlier import is used again.
Result importSkin(const QString &skinFile);

} // namespace SkinImport
