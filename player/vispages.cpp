#include "vispages.h"

#include <algorithm>

namespace VisPages {

int pageCount(int entries)
{
    return std::max(1, (std::max(0, entries) + kPerPage - 1) / kPerPage);
}

int clampPage(int page, int entries)
{
    return std::clamp(page, 0, pageCount(entries) - 1);
}

int firstIndex(int page)
{
    return std::max(0, page) * kPerPage;
}

int boxesShown(int page, int entries)
{
    return std::clamp(entries - firstIndex(page), 0, kPerPage);
}

QString pageLabel(int page, int entries)
{
    return QStringLiteral("Page ") + QString::number(page + 1) + QStringLiteral(" of ") +
           QString::number(pageCount(entries)) + QStringLiteral(".  Total Playlists:") +
           QString::number(entries);
}

} // namespace VisPages
