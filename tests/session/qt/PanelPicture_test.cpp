// The main window's picture is kept without the part under the board; whatever a paint
// asks for must still look exactly like the whole picture, and a board that uncovers the
// hole brings the whole picture back.
#include "board/BmpWriter.h"
#include "session/qt/PanelPicture.h"
#include "support/TempFolder.h"

#include <QImageReader>
#include <QPainter>
#include <QRegion>
#include <gtest/gtest.h>

#include <filesystem>

using namespace tolva;
using tolva::testing::MakeBmp;
using tolva::testing::TempFolder;

namespace {

std::uint32_t Colour(int x, int y) { return static_cast<std::uint32_t>((x * 7) & 0xFF) << 16 | static_cast<std::uint32_t>((y * 5) & 0xFF) << 8 | 0x40u; }

const QColor Missing(14, 38, 40);

// What the picture paints into a window of 75 x 56 for `region`, on grey.
QImage Painted(PanelPicture& panel, const QRegion& region) {
    QImage out(75, 56, QImage::Format_RGB32);
    out.fill(Qt::gray);
    QPainter painter(&out);
    painter.setClipRegion(region);
    panel.Paint(painter, region, Missing);
    return out;
}

} // namespace

TEST(PanelPicture, AroundTheBoardItIsTheWholePictureAndAnUncoveredHoleBringsItBack) {
    TempFolder dir;
    dir.Write("0.bmp", MakeBmp(75, 56, 24, Colour));
    const std::string path = dir.Path() + "/0.bmp";
    const QImage whole = QImageReader(QString::fromStdString(path)).read().convertToFormat(QImage::Format_RGB32);
    const QRect board(2, 4, 50, 50);

    PanelPicture panel;
    ASSERT_TRUE(panel.Load(path, board));
    EXPECT_FALSE(panel.HoldsAll());
    // Everything but the board, as a paint of the window with the board on it asks.
    const QRegion around = QRegion(0, 0, 75, 56).subtracted(board);
    QImage painted = Painted(panel, around);
    for (const QRect& r : around)
        EXPECT_EQ(painted.copy(r), whole.copy(r));
    EXPECT_FALSE(panel.HoldsAll());

    // A smaller board shows part of the hole: the picture is read whole again.
    painted = Painted(panel, QRegion(0, 0, 75, 56).subtracted(QRect(2, 4, 30, 30)));
    EXPECT_TRUE(panel.HoldsAll());
    EXPECT_EQ(painted.pixel(40, 40), whole.pixel(40, 40));
    EXPECT_EQ(painted.copy(0, 0, 75, 4), whole.copy(0, 0, 75, 4));

    // If the file went since, the hole shows the colour of a missing picture, and the
    // rest is still the picture.
    PanelPicture gone;
    ASSERT_TRUE(gone.Load(path, board));
    std::filesystem::remove(dir / "0.bmp");
    painted = Painted(gone, QRegion(0, 0, 75, 56));
    EXPECT_EQ(QColor(painted.pixel(30, 30)), Missing);
    EXPECT_EQ(painted.pixel(60, 10), whole.pixel(60, 10));
    EXPECT_EQ(painted.pixel(1, 30), whole.pixel(1, 30));

    // A missing file loads nothing and leaves the picture as it was.
    EXPECT_FALSE(gone.Load(path, board));
    EXPECT_EQ(Painted(gone, QRegion(0, 0, 75, 56)).pixel(60, 10), whole.pixel(60, 10));
    PanelPicture none;
    EXPECT_FALSE(none.Load(path, board));
    EXPECT_EQ(QColor(Painted(none, QRegion(0, 0, 75, 56)).pixel(60, 10)), Missing);
}
