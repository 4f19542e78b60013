#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

// Media for tests, made on the spot in a temporary folder: nothing is
// downloaded and nothing comes from another program.
class TestMedia
{
public:
    QString file(const QString &name) const { return m_dir.filePath(name); }

    // A sine tone as 16-bit mono PCM WAV, written by our own writer.
    QString sineWav(const QString &name, int ms, int frequency = 440) const;
    // Silence as 8-bit mono WAV: long items cost little disk.
    QString silentWav(const QString &name, int ms) const;
    // A sine tone encoded by the ffmpeg program, the format taken from the
    // name's extension (mp3, flac, ogg...); extraArgs go before the output
    // (e.g. "-b:a 128k"). Empty when ffmpeg is missing or fails.
    QString encoded(const QString &name, int ms, const QStringList &extraArgs = {}) const;
    // A moving 160x120 test picture with a sine tone, encoded by ffmpeg in the
    // format the name's extension says (avi, mp4...). Empty when ffmpeg fails.
    QString video(const QString &name, int ms) const;
    // A four-channel ProTracker module with one looped sample and a short
    // pattern, written byte by byte.
    QString module(const QString &name) const;
    // Bytes no decoder recognises.
    QString garbage(const QString &name, int bytes = 64 * 1024) const;
    QString write(const QString &name, const QByteArray &bytes) const;

private:
    QString runFfmpeg(const QString &name, const QStringList &inputArgs) const;

    QTemporaryDir m_dir;
};
