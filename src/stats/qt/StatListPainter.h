#pragma once
// The statistics list as the window shows it, drawn once into a picture that the list
// surface then shows and scrolls (it keeps its drawing by itself, so scrolling and
// uncovering never draw the rows again).
//
// A line of the list is the font's line height H, in whole pixels. Rows are banded black
// and teal, row 1 black; white text; a green bar at the left edge from the top to the
// last row of the player's run of levels without a gap; a white rule half a line under
// the last row, and the totals half a line under that.
//
// The layout measures 102 lines (100 rows and two blank ones) while the totals begin at
// line 101.5, so their lower half would lie beyond a surface of 102 lines. The surface is
// made as high as the bottom of the totals row instead, and the scroll range grows with
// it: at the end of the scroll the totals are whole, with nothing cut off.
#include <QFont>
#include <QImage>

namespace tolva {

class StatTable;

struct StatList {
    QImage Surface;        // the whole list, to be shown in the clipping frame
    int LineHeight = 0;    // H
    int MeasuredHeight = 0;  // 102 lines: the height the layout measures
    int RowCount = 0;      // the levels counted as played, shown under the level numbers
};

// The width of the list surface in pixels.
inline constexpr int StatListWidth = 602;

// The list's font: the window's small sans-serif text.
QFont StatListFont();

// Draws the list of `table` and sets its totals row to the sums of all 100 levels.
StatList PaintStatList(StatTable& table, const QFont& font = StatListFont(), int width = StatListWidth);

} // namespace tolva
