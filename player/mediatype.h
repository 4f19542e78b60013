#pragma once

#include <QString>

// How the engine treats a playlist entry, decided by its extension alone.
struct MediaType
{
    enum class Kind {
        Mpeg,        // MP2, MP3, MPA: the tag and frame header are read first
        Module,      // tracker modules
        Animation,   // FLI, FLC
        Animation1,  // AWA, AWM
        MMMovie,     // MMM
        CdTrack,     // CDA: a track of the audio CD
        DiscImage,   // CUE: a CD image, played as a disc in CD mode
        Picture,     // shown for five seconds as a "Delay" item
        Placeholder, // documents and programs: nothing plays, playback halts
        Other,       // everything else, on the device the "MCIDevice" setting names
    };

    Kind kind = Kind::Other;
    // The media device to open it on; "cdaudio" or "Delay" for the two kinds
    // that open none.
    QString device;
    int cdTrack = 0; // CdTrack only
};

// The text after the last "." upper-cased, or the whole path when it has none.
QString mediaExtension(const QString &path);

// "0" gives "MPEGVideo", "1" "MPEGVideo2", any other text "ActiveMovie".
QString deviceForSetting(const QString &mciDevice);

MediaType classifyMedia(const QString &path, const QString &mciDevice);
