#include "skinlistarea.h"

#include "elementstyle.h"

namespace {

// Screen readers need a name even where the skin gives no tip.
QString defaultName(int number)
{
    static const char *const kinds[] = {
        "",        "Playlist",          "", "", "Lyrics", "Conversions", "Radio presets",
        "Choices", "Web radio stations"};
    return number >= 0 && number <= 8 ? QString::fromLatin1(kinds[number]) : QString();
}

} // namespace

SkinListArea::SkinListArea(int number, QWidget *parent) : QListWidget(parent), m_number(number)
{
    setAccessibleName(defaultName(number));
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setUniformItemSizes(true); // playlists run to thousands of entries
    hide();
}

void SkinListArea::configure(const SkinList &list, int scale)
{
    setGeometry(scaledRect(list.rect, scale));
    applyAreaStyle(*this, list.foreColour, list.backColour, listFont(list, scale, logicalDpiY()));
    setToolTip(list.toolTip);
    setAccessibleName(list.toolTip.isEmpty() ? defaultName(m_number) : list.toolTip);
}
