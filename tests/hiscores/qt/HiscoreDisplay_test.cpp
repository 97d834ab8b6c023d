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

TEST(HiscoreDisplay, DrawsBarsOnEverySecondRowAndTheHighlight) {
    QLabel label;
    label.resize(184, 122);
    HiscoreDisplay display(&label, {});
    display.Print(Table(), 2, 0x0000FF, 0x000000);  // red bar, black text
    const QImage& shown = display.Picture();
    ASSERT_EQ(shown.size(), QSize(184, 122));
    EXPECT_FALSE(label.pixmap().isNull());

    // Bars on the rows 1, 3, 5...; the highlight's colour comes as BGR.
    EXPECT_EQ(shown.pixel(1, 1) | 0xFF000000u, Bar);
    EXPECT_EQ(shown.pixel(183, 36) | 0xFF000000u, Bar);
    EXPECT_EQ(shown.pixel(1, 37) | 0xFF000000u, Black);
    EXPECT_EQ(shown.pixel(1, 13) | 0xFF000000u, qRgb(255, 0, 0));
    EXPECT_EQ(shown.pixel(183, 24) | 0xFF000000u, qRgb(255, 0, 0));
    // White text everywhere but on the highlighted row, whose text is black.
    EXPECT_GT(Count(shown, Band(0), White), 20);
    EXPECT_GT(Count(shown, Band(3), White), 20);
    EXPECT_EQ(Count(shown, Band(1), White), 0);
    EXPECT_GT(Count(shown, Band(1, 27, 47), Black), 20);

    // No highlight: the second row is plain black again, with white text.
    display.Print(Table(), -1, 0x0000FF, 0);
    EXPECT_EQ(display.Picture().pixel(1, 13) | 0xFF000000u, Black);
    EXPECT_GT(Count(display.Picture(), Band(1), White), 20);
    EXPECT_EQ(HiscoreDisplay::FromBgr(0x009600), QColor(0, 150, 0));
}

TEST(HiscoreDisplay, ColumnsStandInSevenPixelCells) {
    QLabel label;
    label.resize(184, 122);
    HiscoreDisplay display(&label, {});
    display.Print(Table(), -1, 0, 0);
    const QImage& shown = display.Picture();
    // Row 1 (no bar): " 2" in 3..16, "MID" in 27..47, "7" in 63..69, "000.000.900"
    // in 95..171, and nothing between the columns or behind the score.
    EXPECT_EQ(InkIn(shown, Band(1, 0, 9), Black), 0);   // the blank before the 2
    EXPECT_GT(InkIn(shown, Band(1, 10, 16), Black), 0);
    EXPECT_EQ(InkIn(shown, Band(1, 18, 26), Black), 0);
    for (int cell = 0; cell < 3; ++cell) EXPECT_GT(InkIn(shown, Band(1, 27 + 7 * cell, 33 + 7 * cell), Black), 0) << cell;
    EXPECT_EQ(InkIn(shown, Band(1, 49, 62), Black), 0);
    EXPECT_GT(InkIn(shown, Band(1, 63, 69), Black), 0);
    EXPECT_EQ(InkIn(shown, Band(1, 71, 94), Black), 0);
    EXPECT_GT(InkIn(shown, Band(1, 95, 101), Black), 0);    // first digit
    EXPECT_GT(InkIn(shown, Band(1, 165, 171), Black), 0);   // eleventh character, the last 0
    EXPECT_EQ(InkIn(shown, Band(1, 173, 183), Black), 0);
    // Row 10 ("10") on its black band; the free places show "..." and level 0.
    EXPECT_GT(InkIn(shown, Band(9, 3, 9), Black), 0);
    EXPECT_GT(InkIn(shown, Band(9, 10, 16), Black), 0);
    EXPECT_EQ(InkIn(shown, QRect(0, 121, 184, 1), Black), 0);
}
