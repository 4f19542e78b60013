#pragma once

#include <QString>
#include <QtGlobal>

// What start-up and shut-down ask of the player: what to open and play, and
// the cover and output level a run ends with and the next one starts from.
class StartFiles
{
public:
    virtual ~StartFiles() = default;
    // What the command line or the start settings name, added like a drop.
    virtual void addOpened(const QString &path) = 0;
    // Plays the current entry once the folder scans asked for have ended.
    virtual void playWhenScanned() = 0;
    virtual void setStartCover(const QString &file) = 0;
    virtual QString currentCover() const = 0;
    // Velto's output level as one word, kept between runs as a sound card
    // keeps its level.
    virtual quint32 outputLevel() const = 0;
    virtual void restoreOutputLevel(quint32 word) = 0;
};
