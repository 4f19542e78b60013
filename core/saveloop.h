#pragma once

#include <QString>

class ProgramFolder;
class SettingsStore;

// Undoes a tag write cut by a crash or power loss, before anything reads the
// file, and has every later one keep its backup in the folder.
void guardTagWrites(const ProgramFolder &folder);

// Every file Velto saves, saved again and again between two versions that
// differ in content and length, for the test that kills the program while
// it saves (VELTO_SAVE_LOOP names the MP3 whose tag is written). Prints
// "ready" once start-up has put back a cut tag write, waits for a line on
// standard input, then saves until killed, printing "saved <n>" after each
// round; a given count of rounds ends it instead.
int runSaveLoop(SettingsStore &store, const ProgramFolder &folder, const QString &mp3,
                int rounds = -1);
