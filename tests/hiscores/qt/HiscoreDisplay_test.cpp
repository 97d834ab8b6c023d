// The hiscore table on the main window: bars, highlight, text colours and columns, read
// back from the picture it hands the label.
#include "hiscores/qt/HiscoreDisplay.h"

#include <QLabel>
#include <gtest/gtest.h>

using tolva::HiscoreDisplay;
using tolva::HiscoreEntry;
using tolva::Hiscores;

namespace {

const QRgb Bar = qRgb(23, 107, 105);
const QRgb Black = qRgb(0, 0, 0);
const QRgb White = qRgb(255, 255, 255);

Hiscores Table() {
    Hiscores table;
    table[0] = HiscoreEntry{"ZEN", 41, 12345};
    table[1] = HiscoreEntry{"MID", 7, 900};
    return table;
}

// Pixels in the rectangle that are neither `background` nor black: the text's.
int InkIn(const QImage& image, const QRect& area, QRgb background) {
    int n = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x) {
            const QRgb c = image.pixel(x, y) | 0xFF000000u;
            if (c != background && c != Black) ++n;
        }
    return n;
}

int Count(const QImage& image, const QRect& area, QRgb colour) {
    int n = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if ((image.pixel(x, y) | 0xFF000000u) == colour) ++n;
    return n;
}

// The band of row i (0-based) inside its bar.
QRect Band(int row, int left = 0, int right = 183) { return QRect(QPoint(left, 12 * row + 1), QPoint(right, 12 * row + 12)); }

} // namespace

TEST(HiscoreDisplay, DrawsBarsOnEverySecondRowTheHighlightAndColumnsInSevenPixelCells) {
    QLabel label;
    label.resize(184, 122);
    HiscoreDisplay display(&label, {});
    display.Print(Table(), 2, 0x0080FF, 0x000000);  // orange bar, black text
    const QImage& shown = display.Picture();
    ASSERT_EQ(shown.size(), QSize(184, 122));
    EXPECT_FALSE(label.pixmap().isNull());

    // Bars on the rows 1, 3, 5...; the highlight's colour comes as BGR.
    EXPECT_EQ(shown.pixel(1, 1) | 0xFF000000u, Bar);
    EXPECT_EQ(shown.pixel(183, 36) | 0xFF000000u, Bar);
    EXPECT_EQ(shown.pixel(1, 37) | 0xFF000000u, Black);
    EXPECT_EQ(shown.pixel(1, 13) | 0xFF000000u, qRgb(255, 128, 0));
    EXPECT_EQ(shown.pixel(183, 24) | 0xFF000000u, qRgb(255, 128, 0));
    // White text everywhere but on the highlighted row, whose text is black.
    EXPECT_GT(Count(shown, Band(0), White), 20);
    EXPECT_GT(Count(shown, Band(3), White), 20);
    EXPECT_EQ(Count(shown, Band(1), White), 0);
    EXPECT_GT(Count(shown, Band(1, 27, 47), Black), 20);

    // No highlight: the second row is plain black again, with white text.
    display.Print(Table(), -1, 0x0000FF, 0);
    EXPECT_EQ(display.Picture().pixel(1, 13) | 0xFF000000u, Black);
    EXPECT_GT(Count(display.Picture(), Band(1), White), 20);

    // Columns in seven-pixel cells. Row 1 (no bar): " 2" in 3..16, "MID" in 27..47, "7" in 63..69, "000.000.900"
    // in 95..171, and nothing between the columns or behind the score.
    const struct { int left, right; bool ink; } cells[] = {
        {0, 9, false},  {10, 16, true},  {18, 26, false}, {27, 33, true},   {34, 40, true},    {41, 47, true},
        {49, 62, false}, {63, 69, true}, {71, 94, false}, {95, 101, true}, {165, 171, true}, {173, 183, false},
    };
    for (const auto& c : cells) EXPECT_EQ(InkIn(shown, Band(1, c.left, c.right), Black) > 0, c.ink) << c.left << ".." << c.right;
    // Row 10 ("10") on its black band; the free places show "..." and level 0.
    EXPECT_GT(InkIn(shown, Band(9, 3, 9), Black), 0);
    EXPECT_GT(InkIn(shown, Band(9, 10, 16), Black), 0);
    EXPECT_EQ(InkIn(shown, QRect(0, 121, 184, 1), Black), 0);
}
