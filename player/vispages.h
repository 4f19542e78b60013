#pragma once

#include <QString>

// The pages of the visual playlist selector: sixteen pictures to a page.
namespace VisPages {

constexpr int kPerPage = 16;

// At least one page, so an empty folder still reads "Page 1 of 1".
int pageCount(int entries);
// The page, kept inside 0 to pageCount - 1.
int clampPage(int page, int entries);
// The entry shown in the first box of the page.
int firstIndex(int page);
// How many of the sixteen boxes the page fills.
int boxesShown(int page, int entries);
// "Page 2 of 3.  Total Playlists:40"
QString pageLabel(int page, int entries);

} // namespace VisPages
