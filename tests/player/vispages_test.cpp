#include "player/vispages.h"

#include "support/printers.h"

#include <gtest/gtest.h>

TEST(VisPages, SixteenToAPageAndPagingStaysOnTheExistingPages)
{
    const struct
    {
        int entries, page;
        int pages, first, shown;
        QString label;
        int clamped; // the page paging may stay on
    } cases[] = {
        {17, -1, 2, 0, 16, "Page 0 of 2.  Total Playlists:17", 0}, // before the first
        {17, 0, 2, 0, 16, "Page 1 of 2.  Total Playlists:17", 0},
        {17, 1, 2, 16, 1, "Page 2 of 2.  Total Playlists:17", 1},
        {16, 0, 1, 0, 16, "Page 1 of 1.  Total Playlists:16", 0},
        {33, 2, 3, 32, 1, "Page 3 of 3.  Total Playlists:33", 2},
        {0, 0, 1, 0, 0, "Page 1 of 1.  Total Playlists:0", 0},
        {17, 2, 2, 32, 0, "Page 3 of 2.  Total Playlists:17", 1}, // past the end: nothing shown
    };
    for (const auto &c : cases) {
        EXPECT_EQ(VisPages::pageCount(c.entries), c.pages) << c.entries;
        EXPECT_EQ(VisPages::firstIndex(c.page), c.first) << c.page;
        EXPECT_EQ(VisPages::boxesShown(c.page, c.entries), c.shown) << c.entries << " " << c.page;
        EXPECT_EQ(VisPages::pageLabel(c.page, c.entries), c.label);
        EXPECT_EQ(VisPages::clampPage(c.page, c.entries), c.clamped) << c.page << " " << c.entries;
    }
}
