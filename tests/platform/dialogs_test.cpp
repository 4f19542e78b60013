#include "platform/dialogs.h"
#include "support/printers.h"

#include <gtest/gtest.h>

TEST(QtDialogs, TurnsProgramFiltersIntoQtFilters)
{
    const std::pair<const char *, const char *> cases[] = {
        {"Skins (*.skin)|*.skin", "Skins (*.skin)"},
        {"MP3 Playlists (*.M3U)|*.M3U", "MP3 Playlists (*.M3U)"},
        {"Playlists|*.M3U;*.M3U8;*.PLS|All Files|*.*",
         "Playlists (*.M3U *.M3U8 *.PLS);;All Files (*)"},
        {"Music Modules|*.MOD;*FAR;;*.XM", "Music Modules (*.MOD *FAR *.XM)"},
        {"No patterns", ""},
    };
    for (const auto &[program, qt] : cases)
        EXPECT_EQ(QtDialogs::qtFilter(QString::fromUtf8(program)), QString::fromUtf8(qt))
            << program;
}
