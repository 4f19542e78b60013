#pragma once

#include "skindescription.h"

#include <QString>

class QIODevice;

// A skin is a few kilobytes of text; a file of megabytes is no skin, and is
// neither read nor imported.
constexpr qint64 kMaxSkinFileBytes = 16 * 1024 * 1024;

// Reads a skin from its bytes. Bitmap names are looked up below skinFolder
// (letter case ignored); nothing else touches the disk, and nothing is shown:
// the messages the user must see come back in the description. Total: any
// bytes give a description, never a crash or an endless loop.
SkinDescription readSkin(QIODevice &in, const QString &skinFolder);

// The same for a file; "Skin not found!" when it cannot be opened or is no
// regular file, "Invalid Skin!" when it is far too big for a skin.
SkinDescription readSkinFile(const QString &path);

// Only the header line, for lists of skins: signature, type list and display
// name; accepted tells whether the signature is one Velto loads.
SkinDescription readSkinHeader(QIODevice &in);
