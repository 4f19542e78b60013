#include "skinlistarea.h"

#include "elementstyle.h"

SkinListArea::SkinListArea(int number, QWidget *parent) : QListWidget(parent), m_number(number)
{
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
    // Screen readers need a name even where the skin gives no tip.
    static const char *const kinds[] = {
        "",        "Playlist",          "", "", "Lyrics", "Conversions", "Radio presets",
        "Choices", "Web radio stations"};
    setAccessibleName(!list.toolTip.isEmpty() || m_number < 0 || m_number > 8
                          ? list.toolTip
                          : QString::fromLatin1(kinds[m_number]));
}
