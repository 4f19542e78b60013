#include "skinloader.h"

#include "skinreader.h"
#include "windowshape.h"

#include "platform/dialogs.h"

#include <QPainter>
#include <QWidget>

namespace {

QImage loadPicture(const QString &path)
{
    QImage image;
    if (!path.isEmpty())
        image.load(path);
    return image.isNull() ? QImage() : image.convertToFormat(QImage::Format_RGB32);
}

} // namespace

SkinPictures buildSkinPictures(const SkinDescription &skin)
{
    SkinPictures out;
    out.main = loadPicture(skin.mainBitmapPath);
    out.resource = loadPicture(skin.resourceBitmapPath);
    for (const SkinPictureStep &step : skin.pictureSteps) {
        switch (step.kind) {
        case SkinPictureStep::LoadMain:
            if (step.loaded) {
                const QImage picture = loadPicture(step.path);
                if (!picture.isNull())
                    out.main = picture;
            }
            break;
        case SkinPictureStep::Copy:
            if (!out.main.isNull()) {
                const QImage piece = out.main.copy(QRect(step.source, step.target.size()));
                QPainter(&out.main).drawImage(step.target.topLeft(), piece);
            }
            break;
        case SkinPictureStep::Commit:
            break; // copies land in the picture at once; nothing is pending
        case SkinPictureStep::TransparentColour:
            out.shape = RegionFromBitmap(out.main, quint32(step.colour));
            break;
        }
    }
    if (skin.outline.complete()) {
        out.shape = skin.outline.multiPolygon
                        ? multiPolygonRegion(skin.outline.points, skin.outline.polygonPointCounts)
                        : polygonRegion(skin.outline.points);
    }
    out.windowSize = skin.pictureSize.value_or(out.main.size());
    if (out.windowSize.isEmpty())
        out.windowSize = QSize(400, 160); // no picture at all: still a window to grab
    return out;
}

bool SkinLoader::LoadSkin(const QString &file)
{
    SkinDescription skin = readSkinFile(file);
    for (const QString &message : skin.messages)
        m_dialogs.message(message);
    if (!skin.accepted)
        return false;

    clearShape(m_window);
    m_file = file;
    m_skin = std::move(skin);
    m_pictures = buildSkinPictures(m_skin);
    m_window.setFixedSize(m_pictures.windowSize);
    setWindowShape(m_window, m_pictures.shape);
    m_window.update();
    return true;
}

void SkinLoader::paint(QPainter &painter, const QRect &dirty) const
{
    painter.fillRect(dirty, skinColourToQColor(m_skin.backgroundColour));
    if (!m_pictures.main.isNull())
        painter.drawImage(dirty.topLeft(), m_pictures.main, dirty);
}
