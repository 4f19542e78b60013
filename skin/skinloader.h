#pragma once

#include "skindescription.h"

#include <QImage>
#include <QRegion>

class Dialogs;
class QPainter;
class QWidget;

// The pictures a skin leaves the window with: the bitmaps loaded, the "Z" copies
// made, and the outline cut from the main picture as it stood at the "O" record,
// or from the polygon when the skin gives a complete one.
struct SkinPictures
{
    QImage main;
    QImage resource;
    QRegion shape; // in picture pixels; empty: the window stays rectangular
    QSize windowSize;
};

SkinPictures buildSkinPictures(const SkinDescription &skin);

// Loads skin files onto the main window: shows the reader's messages, keeps the
// old skin when the new one is refused, and shapes and paints the window.
class SkinLoader
{
public:
    SkinLoader(QWidget &window, Dialogs &dialogs) : m_window(window), m_dialogs(dialogs) {}

    // False when the file was refused and the old skin stays.
    bool LoadSkin(const QString &file);

    const SkinDescription &skin() const { return m_skin; }
    const SkinPictures &pictures() const { return m_pictures; }
    QString file() const { return m_file; }

    void paint(QPainter &painter, const QRect &dirty) const;

private:
    QWidget &m_window;
    Dialogs &m_dialogs;
    QString m_file;
    SkinDescription m_skin;
    SkinPictures m_pictures;
};
