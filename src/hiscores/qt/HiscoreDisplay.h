#pragma once
// HiscoreDisplay: the hiscore table on the main window (PrintHiScore), and the way to
// frmHiscore when initials are asked for. It is the Qt side of HiscoreView.
//
// The table is drawn into a picture the size of `hiScoreDisplay` and handed to the
// label, so that it stays as drawn until the next Print, as the original picture box
// kept its drawing.
//
// Rows and columns. The original drew in Courier New 8.25 pt, whose cells at 11 pixels
// are 7 pixels wide and 14 high; the table's picture is cut to that height (122 = nine
// rows of 14 - 2 plus the last row of 14). Liberation Mono has the same advance widths,
// but Qt lays it out at fractional widths (6.6 pixels) and a line height of 12. So each
// character is placed in a cell of its own, 7 pixels wide, starting at the original
// column positions 3, 27, 63 and 95, and rows keep the original's cell height of 14
// with the 12-pixel line standing one pixel below the top of its bar. The columns then
// line up to the pixel as they did: "000.000.000" fills 77 pixels from 95 and ends
// 12 pixels short of the right edge.
#include "hiscores/HiscoreView.h"

#include <QFont>
#include <QImage>
#include <QRawFont>
#include <QPointer>
#include <QRect>

#include <functional>

class QLabel;

namespace tolva {

class HiscoreDisplay final : public HiscoreView {
public:
    static constexpr int CellWidth = 7;
    static constexpr int CellHeight = 14;
    // Where the four columns start: place, name, level, score.
    static constexpr int Columns[4] = {3, 27, 63, 95};

    // `boardOnScreen` gives the board's rectangle in screen coordinates, over which
    // frmHiscore centres itself.
    HiscoreDisplay(QLabel* hiScoreDisplay, std::function<QRect()> boardOnScreen);

    void Print(const Hiscores& table, std::int16_t highlightPlace, std::int32_t highlightColor,
               std::int32_t highlightTextColor) override;
    std::string AskInitials() override;

    // The last drawing, as it shows.
    const QImage& Picture() const { return picture_; }

    // A 0xBBGGRR colour of the game as a Qt colour.
    static QColor FromBgr(std::int32_t colour);

private:
    void DrawCells(class QPainter& painter, int x, int y, const std::string& text) const;

    QPointer<QLabel> target_;
    std::function<QRect()> boardOnScreen_;
    QFont font_;
    mutable QRawFont glyphs_;   // font_'s glyphs, set into cells without any text layout
    QImage picture_;
};

} // namespace tolva
