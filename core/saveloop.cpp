#include "saveloop.h"

#include "programfolder.h"
#include "settings.h"

#include "player/autolist.h"
#include "player/id3tag.h"
#include "player/playlist.h"

#include <cstdio>
#include <iostream>
#include <string>

namespace {

PlaylistState listVersion(int version)
{
    PlaylistState state;
    const int entries = version == 0 ? 3 : 400;
    for (int i = 0; i < entries; ++i) {
        state.PlPath << QStringLiteral("/music/v%1/track %2.mp3").arg(version).arg(i);
        state.PlNames << QStringLiteral("track %1").arg(i);
    }
    return state;
}

bool saveRound(SettingsStore &store, const ProgramFolder &folder, const QString &mp3, int version)
{
    Settings s;
    s.StartFile = version == 0 ? QStringLiteral("/a.mp3") : QString(4000, QLatin1Char('b'));
    ConfigStore config(store);
    bool ok = config.WriteAll(s);

    PlaylistState list = listVersion(version);
    ok = Playlist(list).WritePL(folder.file(QStringLiteral("playlist.m3u"))).isEmpty() && ok;

    QStringList schedule{QStringLiteral("M 07:00 08:00 1")};
    if (version == 1)
        for (int i = 0; i < 200; ++i)
            schedule << QStringLiteral("T 09:00 10:00 %1").arg(i);
    ok = SaveAutoList(folder.file(QStringLiteral("autolist.txt")), schedule) && ok;

    // The tag write is short: written many times, ending at this round's
    // version, it gets its share of the kills.
    for (int i = 19; i >= 0; --i) {
        const int written = (version + i) % 2;
        TagFields tag;
        tag.title = written == 0 ? QStringLiteral("Old title") : QStringLiteral("New title");
        tag.track = QStringLiteral("0%1").arg(written + 1);
        ok = writeTag(mp3, tag) != TagWrite::Failed && ok;
    }
    return ok;
}

} // namespace

void guardTagWrites(const ProgramFolder &folder)
{
    const QString backup = folder.file(QStringLiteral("tagwrite.bak"));
    restoreCutTagWrite(backup);
    setTagBackupFile(backup);
}

int runSaveLoop(SettingsStore &store, const ProgramFolder &folder, const QString &mp3, int rounds)
{
    std::printf("ready\n");
    std::fflush(stdout);
    std::string line;
    if (rounds < 0 && !std::getline(std::cin, line))
        return 1;
    for (int n = 0; rounds < 0 || n < rounds; ++n) {
        if (!saveRound(store, folder, mp3, n % 2))
            return 1;
        std::printf("saved %d\n", n + 1);
        std::fflush(stdout);
    }
    return 0;
}
