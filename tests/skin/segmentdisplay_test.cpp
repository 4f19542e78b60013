#include "skin/daytext.h"
#include "skin/segmentdisplay.h"

#include "support/fakes.h"

#include <QPainter>
#include <gtest/gtest.h>
#include <optional>

namespace {

constexpr int W = 6, H = 8, N = 3;
const QRgb SheetBackground = qRgb(10, 10, 10);
const QRgb CanvasBackground = qRgb(20, 20, 20);

// Every pixel of every glyph cell tells its sheet, row, column and its offset
// in the cell, so a canvas pixel names the sheet pixel it was copied from.
QImage makeSheets(QImage::Format format = QImage::Format_RGB32)
{
    QImage img(300, 90, QImage::Format_RGB32);
    img.fill(SheetBackground);
    const int sheets[][4] = {{2, 1, 1, 14}, {2, 10, 6, 16}, {0, 60, 3, 31}}; // x, y, rows, cols
    for (int s = 0; s < 3; ++s)
        for (int r = 0; r < sheets[s][2]; ++r)
            for (int c = 0; c < sheets[s][3]; ++c)
                for (int dx = 0; dx < W; ++dx)
                    for (int dy = 0; dy < H; ++dy)
                        img.setPixel(sheets[s][0] + c * W + dx, sheets[s][1] + r * H + dy,
                                     qRgb(64 + s * 8 + r, 100 + c, dx * 16 + dy));
    return img.convertToFormat(format);
}

struct Seen
{
    int sheet, row, col, dx, dy;
};

std::optional<Seen> seenAt(const QImage &canvas, int x, int y)
{
    const QRgb p = canvas.pixel(x, y);
    if (qRed(p) < 64 || qRed(p) >= 88)
        return std::nullopt;
    return Seen{(qRed(p) - 64) / 8, (qRed(p) - 64) % 8, qGreen(p) - 100, qBlue(p) / 16,
                qBlue(p) % 16};
}

QChar glyphChar(const Seen &s)
{
    if (s.sheet == 0)
        return s.col < 10 ? QChar(u'0' + s.col) : QChar(u" .:-"[s.col - 10]);
    if (s.sheet == 1)
        return QChar((s.row + 2) * 16 + s.col);
    return QChar(u'?'); // letter-sheet cells are checked by row and column
}

// The glyphs along one canvas row: where each starts and how wide it landed.
struct Drawn
{
    QString text;
    std::vector<Seen> cells;
    std::vector<int> xs, widths;
};

Drawn readRow(const QImage &canvas, int y)
{
    Drawn d;
    if (y < 0 || y >= canvas.height())
        return d;
    for (int x = 0; x < canvas.width(); ++x) {
        const auto s = seenAt(canvas, x, y);
        if (!s || s->dx != 0)
            continue;
        int w = 1;
        while (x + w < canvas.width()) {
            const auto next = seenAt(canvas, x + w, y);
            if (!next || next->dx != w || next->col != s->col || next->row != s->row)
                break;
            ++w;
        }
        d.text += glyphChar(*s);
        d.cells.push_back(*s);
        d.xs.push_back(x);
        d.widths.push_back(w);
    }
    return d;
}

class SegmentDisplayTest : public ::testing::Test
{
protected:
    QImage canvas{200, 40, QImage::Format_ARGB32_Premultiplied};
    QImage sheets = makeSheets();
    FakeClock clock;
    std::vector<QRect> repaints;
    std::vector<std::pair<int, QString>> labels;
    SegmentDisplay display{canvas, sheets, clock, [this](const QRect &r) { repaints.push_back(r); },
                           [this](int n, const QString &t) { labels.emplace_back(n, t); }};

    static DigitGroup group(qint16 sheetType, qint16 mode, qint16 gap = 0)
    {
        const qint16 faceY = sheetType == 0 ? 1 : sheetType == 3 ? 60 : 10;
        return {qint16(sheetType == 3 ? 0 : 2), faceY, W, H, N, sheetType, gap, mode, 10, 5, true};
    }

    // Draws into a clean canvas, and checks that nothing changed outside what
    // the display asked to repaint.
    Drawn show(const DigitGroup &g, const QVariant &value, int index = 0)
    {
        canvas.fill(CanvasBackground);
        repaints.clear();
        labels.clear();
        display.setGroup(index, g);
        const QImage before = canvas.copy();
        display.SetDD(index, value);
        QRect repainted, changed;
        for (const QRect &r : repaints)
            repainted |= r;
        for (int y = 0; y < canvas.height(); ++y)
            for (int x = 0; x < canvas.width(); ++x)
                if (before.pixel(x, y) != canvas.pixel(x, y))
                    changed |= QRect(x, y, 1, 1);
        EXPECT_TRUE(changed.isEmpty() || repainted.contains(changed))
            << "changed outside the repaint request";
        return readRow(canvas, g.y + 2);
    }
};

} // namespace

// Digit sheets blank leading zeros; character sheets cut or pad the text to their cells.
TEST_F(SegmentDisplayTest, EachSheetShowsEachModeAsItShould)
{
    // clang-format off
    const struct { int sheet, mode; QVariant value; const char *shown; } cases[] = {
        {0, -3, 7, " 07"},         {0, -3, 1234, "234"},        {0, -2, 0, " 0"},
        {0, -3, "ab-", "  -"},     {0, -4, qint64(-9), " 009"}, {0, 3, 0.5, "   .5"},
        {0, 3, 0, "   . "},        {0, 3, -2.5, "-  2.5"},      {0, 3, 99.96, "100.0"},
        {0, 3, 1234.56, "1234.6"}, {0, 4, 1.0005, "  1.001"},   {0, 5, 3909, " 1:05:09"},
        {0, 5, 360000, "100:00:00"}, {0, 5, -65, " 0:-01:-05"}, {0, 0, 0, " "},
        {0, 0, 100, "100"},        {0, 0, "Mute", "    "},      {0, 7, "12-3", "12-3"},
        {0, -16, 5, "5"},          {1, 4, "Hello", "Hell"},     {1, 4, "Hi", "Hi  "},
        {2, 6, "Mute", "MUTE  "},  {1, -4, "Hello", "ello"},    {1, -3, 7, "007"},
        {1, 3, 0.5, "000"},        {1, 0, "Hello", ""},
        {1, -16, "0123456789abcdefXY", "0123456789abcdef"},
    };
    // clang-format on
    for (const auto &c : cases) {
        EXPECT_EQ(show(group(qint16(c.sheet), qint16(c.mode)), c.value).text,
                  QString::fromLatin1(c.shown))
            << "sheet " << c.sheet << " mode " << c.mode << " value "
            << c.value.toString().toStdString();
    }
}

TEST_F(SegmentDisplayTest, ClockModesDrawHoursAndMinutesAndPutTheRestOnLabel9)
{
    const std::tuple<int, QTime, bool, const char *, const char *> cases[] = {
        {2, QTime(14, 5, 9), true, "14:05", "09"}, {2, QTime(14, 5, 9), false, " 2:05", "09"},
        {1, QTime(9, 5, 0), true, "09:05", "  "},  {1, QTime(21, 30), false, " 9:30", "PM"},
        {1, QTime(0, 10), false, "12:10", "AM"},   {1, QTime(12, 0), false, "12:00", "PM"},
    };
    for (const auto &[mode, time, twentyFour, shown, label9] : cases) {
        clock.time.setTime(time);
        display.setTimeFmt(twentyFour ? 1 : 0);
        // The value is ignored: these modes always show the clock.
        EXPECT_EQ(show(group(0, qint16(mode)), 4711).text, QString::fromLatin1(shown))
            << time.toString().toStdString() << " mode " << mode;
        EXPECT_EQ(labels, (std::vector<std::pair<int, QString>>{{9, QString::fromLatin1(label9)}}));
    }
}

// What a screen reader hears: the glyphs drawn, without the blank cells
// around them or the colon of blanked hours.
TEST_F(SegmentDisplayTest, TextReadsWhatTheGroupShows)
{
    clock.time.setTime(QTime(21, 30));
    display.setTimeFmt(0);
    // clang-format off
    const struct { qint16 sheet, mode; QVariant value; const char *read; } cases[] = {
        {0, -3, 7, "07"},    {0, 5, 0, "0:00:00"}, {0, 3, 0, ""},      {0, 0, "Mute", ""},
        {0, 1, 0, "9:30"},   {1, 6, " ab ", "ab"}, {2, 4, "abcdef", "ABCD"}, {3, 3, "a?", "A?"},
    };
    // clang-format on
    for (const auto &c : cases) {
        show(group(c.sheet, c.mode), c.value);
        EXPECT_EQ(display.text(0), QString::fromLatin1(c.read))
            << "sheet " << c.sheet << " mode " << c.mode;
    }
    display.setGroupVisible(0, false);
    EXPECT_EQ(display.text(0), QString());
}

TEST_F(SegmentDisplayTest, GlyphsLandWholeAtTheirWidthAndTheGapSeparatesThem)
{
    const Drawn d = show(group(0, 5, 2), 3909);
    ASSERT_EQ(d.text, QStringLiteral(" 1:05:09"));
    EXPECT_EQ(d.widths, (std::vector<int>{W, W, N, W, W, N, W, W}));
    std::vector<int> xs{10};
    for (size_t k = 1; k < d.widths.size(); ++k)
        xs.push_back(xs.back() + d.widths[k - 1] + 2);
    EXPECT_EQ(d.xs, xs);
    EXPECT_TRUE(readRow(canvas, 4).xs.empty() && readRow(canvas, 5 + H).xs.empty());
}

TEST_F(SegmentDisplayTest, CharacterAndLetterSheetsPickTheirCells)
{
    // clang-format off
    const struct { int sheetType; char32_t ch; int row, col; } cases[] = {
        {1, U'a', 4, 1},  {1, 127, 5, 15}, {1, 31, 0, 0},   {2, U'a', 2, 1},  {2, U'{', 5, 11},
        {3, U'Z', 0, 25}, {3, U'7', 1, 7},  {3, U'@', 0, 8},  {3, U':', 1, 12}, {3, U'.', 1, 27},
        {3, U' ', 0, 29}, {3, U'?', 2, 3},
    };
    // clang-format on
    for (const auto &c : cases) {
        const QString text = QString::fromUcs4(&c.ch, 1);
        const Drawn d = show(group(qint16(c.sheetType), -1), text);
        ASSERT_EQ(d.cells.size(), 1u) << "type " << c.sheetType << " char " << uint(c.ch);
        EXPECT_EQ(std::tuple(d.cells[0].sheet, d.cells[0].row, d.cells[0].col),
                  std::tuple(c.sheetType == 3 ? 2 : 1, c.row, c.col))
            << "type " << c.sheetType << " char " << uint(c.ch);
    }
}

TEST_F(SegmentDisplayTest, SheetInAnotherPixelFormatIsReadAndEditsAreSeen)
{
    sheets = makeSheets(QImage::Format_RGB888);
    EXPECT_EQ(show(group(0, -3), 7).text, QStringLiteral(" 07"));
    // A skin that paints onto its resource picture changes the glyphs.
    QPainter(&sheets).fillRect(2 + 7 * W, 1, W, H, QColor(200, 1, 1));
    show(group(0, -3), 7);
    EXPECT_EQ(canvas.pixel(10 + 2 * W, 6), qRgb(200, 1, 1));
}

TEST(MakeDayStr, NamesEachWeekdayWithItsLetterAndTheDate)
{
    const DayText sunday = MakeDayStr(QDate(2026, 11, 22));
    EXPECT_EQ(std::tuple(sunday.day, sunday.todayLetter, sunday.date),
              std::tuple(QStringLiteral("Sun"), QChar(u'U'), QStringLiteral("Nov 22")));
    const DayText thursday = MakeDayStr(QDate(2026, 11, 26));
    EXPECT_EQ(std::tuple(thursday.day, thursday.todayLetter),
              std::tuple(QStringLiteral("Thu"), QChar(u'R')));
    EXPECT_EQ(MakeDayStr(QDate(2027, 1, 5)).date, QStringLiteral("Jan 05"));
}
