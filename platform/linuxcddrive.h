#pragma once

#include "cddrive.h"

#include <QHash>
#include <QTemporaryDir>

#include <memory>

// CD drives and disc images through libcdio.
//
// libcdio 2.1 reads an image's sectors from the cue sheet's own name with
// ".bin" and ignores the file the sheet names. For a sheet whose image is
// named otherwise, the drive makes a view of it in a private temporary
// folder (a copy of the sheet and a link to the image under matching names)
// and plays the view. The views live as long as the drive.
class LinuxCdDrive : public CdDrive
{
public:
    LinuxCdDrive();
    ~LinuxCdDrive() override;

    Status status(const QString &source) override;
    QByteArray discStamp(const QString &source) override;
    CdDisc read(const QString &source) override;
    bool eject(const QString &source) override;

    // A source that is an image: a cue sheet's name, whether or not it exists.
    static bool isImage(const QString &source);

private:
    CdDisc readImage(const QString &cue);
    CdDisc readDrive(const QString &device);
    QString viewOf(const QString &cue, const QByteArray &cueBytes, const QString &image);

    // The image each cue sheet named when it was last read.
    QHash<QString, QString> m_images;
    std::unique_ptr<QTemporaryDir> m_views;
    int m_viewCount = 0;
};
